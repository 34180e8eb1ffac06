#include "link/keystroke_names.h"

#include <gtest/gtest.h>

namespace spellwick {
namespace {

TEST(KeystrokeNamesTest, KeysAreNamedAsPeopleNameThem) {
    const struct {
        const char* keystrokes;
        const char* names;
    } rows[] = {
        {"", ""},
        {"%1{ENTER}", "Alt+1, Enter"},
        {"%^+q", "Ctrl+Alt+Shift+q"},
        {"{F5}", "F5"},
        {"^{F16}\n", "Ctrl+F16, Enter"},
        {"{PGUP} ", "Page Up, Space"},
        {"\xC3\xA9", "\xC3\xA9"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(KeystrokeNames(row.keystrokes), row.names) << row.keystrokes;
    }
}

}  // namespace
}  // namespace spellwick
