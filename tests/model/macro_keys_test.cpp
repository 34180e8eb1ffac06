#include "model/macro_keys.h"

#include <gtest/gtest.h>

namespace spellwick {
namespace {

struct KeyRow {
    const char* name;
    const char* entry;
    const char* key;  // null: refused
};

TEST(MacroKeyEntry, Table_OneCharacterOrAFunctionKey) {
    const KeyRow rows[] = {
        {"small letter stays small", "q", "q"},
        {"capital stays capital", "Q", "Q"},
        {"digit", "7", "7"},
        {"blank", " ", " "},
        {"comma", ",", ","},
        {"brace", "{", "{"},
        {"letter F", "F", "F"},
        {"letter f", "f", "f"},
        {"letter of two bytes", "\u00e9", "\u00e9"},
        {"sign of three bytes", "\u20ac", "\u20ac"},
        {"F1", "F1", "{F1}"},
        {"F2", "F2", "{F2}"},
        {"F3", "F3", "{F3}"},
        {"F4", "F4", "{F4}"},
        {"F5", "F5", "{F5}"},
        {"F6", "F6", "{F6}"},
        {"F7", "F7", "{F7}"},
        {"F8", "F8", "{F8}"},
        {"F9", "F9", "{F9}"},
        {"F10", "F10", "{F10}"},
        {"F11", "F11", "{F11}"},
        {"F12", "F12", "{F12}"},
        {"f1", "f1", "{F1}"},
        {"f2", "f2", "{F2}"},
        {"f3", "f3", "{F3}"},
        {"f4", "f4", "{F4}"},
        {"f5", "f5", "{F5}"},
        {"f6", "f6", "{F6}"},
        {"f7", "f7", "{F7}"},
        {"f8", "f8", "{F8}"},
        {"f9", "f9", "{F9}"},
        {"f10", "f10", "{F10}"},
        {"f11", "f11", "{F11}"},
        {"f12", "f12", "{F12}"},
        {"{F1}", "{F1}", "{F1}"},
        {"{F2}", "{F2}", "{F2}"},
        {"{F3}", "{F3}", "{F3}"},
        {"{F4}", "{F4}", "{F4}"},
        {"{F5}", "{F5}", "{F5}"},
        {"{F6}", "{F6}", "{F6}"},
        {"{F7}", "{F7}", "{F7}"},
        {"{F8}", "{F8}", "{F8}"},
        {"{F9}", "{F9}", "{F9}"},
        {"{F10}", "{F10}", "{F10}"},
        {"{F11}", "{F11}", "{F11}"},
        {"{F12}", "{F12}", "{F12}"},
        {"nothing", "", nullptr},
        {"small f in braces", "{f1}", nullptr},
        {"F13", "F13", nullptr},
        {"F0", "F0", nullptr},
        {"F01", "F01", nullptr},
        {"F1 with a blank", "F1 ", nullptr},
        {"two letters", "ab", nullptr},
        {"two blanks", "  ", nullptr},
        {"AA", "AA", nullptr},
        {"half a brace", "{F1", nullptr},
        {"braces twice", "{{F1}}", nullptr},
        {"ten digits", "1234567890", nullptr},
        {"negative number", "-5", nullptr},
    };
    for (const KeyRow& row : rows) {
        const auto key = MacroKeyOfEntry(row.entry);
        EXPECT_EQ(key.has_value(), row.key != nullptr) << row.name;
        EXPECT_EQ(key.value_or("refused"), row.key != nullptr ? row.key : "refused") << row.name;
    }
    EXPECT_FALSE(MacroKeyOfEntry(std::string(1'000'000, 'F')));
}

TEST(MacroKeyEntry, Texts_AreTheKnownOnes) {
    EXPECT_EQ(kKeyLeftBlank, "This field cannot be left blank");
    EXPECT_EQ(kKeyNotValid, "This entry is not valid");
}

TEST(MacroOfLine, EveryPage_LinesAndTheTwoSpecialOnes) {
    i32 macro = 1;
    for (i32 page = 0; page < 12; ++page) {
        for (i32 line = 0; line < 8; ++line) {
            EXPECT_EQ(MacroOfLine(page, line), macro++);
        }
        EXPECT_EQ(MacroOfLine(page, 8), 0);
        EXPECT_EQ(MacroOfLine(page, 9), -1);
    }
    EXPECT_EQ(macro, 97);
}

TEST(ShownMacroKey, Key_IsNamedAsInTheGame) {
    struct Row {
        const char* alt;
        const char* ctrl;
        const char* shift;
        const char* key;
        const char* shown;
    };
    for (const Row& row :
         {Row{"", "^", "", "4", "Ctrl+4"}, Row{"%", "^", "+", "{F12}", "Ctrl+Alt+Shift+F12"},
          Row{"%", "", "", "q", "Alt+Q"}, Row{"", "", "", "Q", "Q"},
          Row{"", "", "+", "{", "Shift+{"}, Row{"", "", "", "\xC3\xA4", "\xC3\xA4"},
          Row{"%", "^", "", " ", ""}, Row{"", "", "", "", ""}}) {
        MacroTables macros;
        macros.MacroAlt(5) = row.alt;
        macros.MacroCtrl(5) = row.ctrl;
        macros.MacroShift(5) = row.shift;
        macros.MacroKey(5) = row.key;
        EXPECT_EQ(ShownMacroKey(macros, 5), row.shown);
    }
}

}  // namespace
}  // namespace spellwick
