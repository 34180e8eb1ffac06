#include "practice/journal.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/practice/spoken_lines.h"

namespace spellwick::practice {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

KeyPress Plain(const std::string& key, const std::string& text = {}) {
    return {{}, key, text};
}

TEST(SpeechLine, MacroKey_IsKeyAndSpell) {
    SpeechLine line;
    EXPECT_THAT(Written(line, {{{.alt = true}, "1", "1"}, Plain("Enter")}),
                ElementsAre("key Alt+1", "cast Clumsy", "key Enter"));
}

TEST(SpeechLine, ChordWithoutSpell_IsKeyAlone) {
    SpeechLine line;
    EXPECT_THAT(Written(line, {{{.ctrl = true, .shift = true}, "F5", ""}, Plain("F1")}),
                ElementsAre("key Ctrl+Shift+F5", "key F1"));
}

TEST(SpeechLine, TypedText_IsSpokenAtEnter) {
    SpeechLine line;
    EXPECT_THAT(Written(line, {{{.shift = true}, "A", "A"}, Plain("Space", " "), Plain("X", "x")}),
                IsEmpty());
    EXPECT_EQ(line.Text(), "A x");
    EXPECT_THAT(Written(line, {Plain("Enter"), Plain("Enter")}),
                ElementsAre("say A x", "key Enter"));
}

TEST(SpeechLine, EnterWithModifier_IsAKeyAndKeepsTheLine) {
    SpeechLine line;
    EXPECT_THAT(
        Written(line, {Plain("X", "x"), {{.ctrl = true, .alt = true, .shift = true}, "Enter", ""}}),
        ElementsAre("key Ctrl+Alt+Shift+Enter"));
    EXPECT_EQ(line.Text(), "x");
}

TEST(SpeechLine, Backspace_RemovesOneWholeCharacter) {
    SpeechLine line;
    EXPECT_THAT(Written(line, {Plain("A", "a"), Plain("Ä", "ä"), Plain("Backspace")}), IsEmpty());
    EXPECT_EQ(line.Text(), "a");
    EXPECT_THAT(Written(line, {Plain("Backspace"), Plain("Backspace")}),
                ElementsAre("key Backspace"));
}

TEST(SpeechLine, ModifierAlone_IsNothing) {
    SpeechLine line;
    EXPECT_THAT(Written(line, {{{.alt = true}, "", ""}}), IsEmpty());
}

TEST(SpeechLine, Clear_DropsTheLine) {
    SpeechLine line;
    Written(line, {Plain("X", "x")});
    line.Clear();
    EXPECT_THAT(Written(line, {Plain("Enter")}), ElementsAre("key Enter"));
}

TEST(WrittenEntry, EachKind_HasItsWord) {
    EXPECT_EQ(WrittenEntry({JournalEntry::Kind::kKey, "F1"}), "key F1");
    EXPECT_EQ(WrittenEntry({JournalEntry::Kind::kCast, "Heal"}), "cast Heal");
    EXPECT_EQ(WrittenEntry({JournalEntry::Kind::kSay, "... a"}), "say ... a");
    EXPECT_EQ(WrittenEntry({JournalEntry::Kind::kTitle, "x (y)"}), "title x (y)");
}

}  // namespace
}  // namespace spellwick::practice
