#include "link/keystroke_string.h"

#include <limits>

#include <gtest/gtest.h>

#include "link/keystroke_parse.h"

namespace spellwick {
namespace {

struct SpellRow {
    const char* name;
    MacroStrokes macro;
    SpokenText spoken;
    const char* keys;
};

void PrintTo(const SpellRow& row, std::ostream* out) {
    *out << row.name;
}

class SpellKeystrokesTable : public testing::TestWithParam<SpellRow> {};

TEST_P(SpellKeystrokesTable, IsBuiltInOrder) {
    EXPECT_EQ(SpellKeystrokes(GetParam().macro, GetParam().spoken), GetParam().keys);
}

constexpr MacroStrokes kAltF1{"%", "", "", "{F1}"};
constexpr i16 kLowest = std::numeric_limits<i16>::min();

INSTANTIATE_TEST_SUITE_P(
    Spells, SpellKeystrokesTable,
    testing::Values(
        SpellRow{"KeyAlone", {"", "", "", "q"}, {}, "q{ENTER}"},
        SpellRow{"AltF1", kAltF1, {}, "%{f1}{ENTER}"},
        SpellRow{"AltF1WithSuffix",
                 kAltF1,
                 {0, "", 1, "... Alakazam ..."},
                 "%{f1}{ENTER}... Alakazam ...{ENTER}"},
        SpellRow{"AllMarksInTheirOrder", {"%", "^", "+", "q"}, {}, "%^+q{ENTER}"},
        SpellRow{"CtrlAlone", {"", "^", "", "q"}, {}, "^q{ENTER}"},
        SpellRow{"ShiftAlone", {"", "", "+", "q"}, {}, "+q{ENTER}"},
        SpellRow{"UpperCaseKeyIsLowered", {"", "", "", "A"}, {}, "a{ENTER}"},
        SpellRow{"FunctionKeyIsLowered", {"", "", "", "{F5}"}, {}, "{f5}{ENTER}"},
        SpellRow{"UmlautKeyIsLowered", {"", "", "", "\u00c4"}, {}, "\u00e4{ENTER}"},
        SpellRow{"EmptyKeyLeavesTheMarksToEnter", {"%", "^", "+", ""}, {}, "%^+{ENTER}"},
        SpellRow{"EmptyRowTypesTwoLetters", {"", "", "", "AA"}, {}, "aa{ENTER}"},
        SpellRow{"BlankKey", {"", "", "", " "}, {}, " {ENTER}"},
        SpellRow{"SpellText", kAltF1, {1, "In Lor", 0, "x"}, "%{f1}In Lor{ENTER}"},
        SpellRow{"SpellTextKeepsItsCase", {"", "", "", "Q"}, {1, "ABC", 0, ""}, "qABC{ENTER}"},
        SpellRow{"EmptySpellTextIsAsWithout", kAltF1, {1, "", 0, ""}, "%{f1}{ENTER}"},
        SpellRow{"SpellTextMinusOneSendsNone", kAltF1, {-1, "In Lor", 0, ""}, "%{f1}{ENTER}"},
        SpellRow{"SpellTextTwoSendsNone", kAltF1, {2, "In Lor", 0, ""}, "%{f1}{ENTER}"},
        SpellRow{"SpellTextLowestSendsNone", kAltF1, {kLowest, "In Lor", 0, ""}, "%{f1}{ENTER}"},
        SpellRow{"SuffixMinusOneSendsNone", kAltF1, {0, "", -1, "Ha"}, "%{f1}{ENTER}"},
        SpellRow{"SuffixTwoSendsNone", kAltF1, {0, "", 2, "Ha"}, "%{f1}{ENTER}"},
        SpellRow{"EmptySuffixIsAnEmptyLine", kAltF1, {0, "", 1, ""}, "%{f1}{ENTER}{ENTER}"},
        SpellRow{"BothAreTwoLinesOfSpeech",
                 kAltF1,
                 {1, "In Lor", 1, "Ha!"},
                 "%{f1}In Lor{ENTER}Ha!{ENTER}"},
        SpellRow{"NotationInTheTextsIsNotEscaped",
                 kAltF1,
                 {1, "a+b", 1, "50% {F2}"},
                 "%{f1}a+b{ENTER}50% {F2}{ENTER}"}),
    [](const testing::TestParamInfo<SpellRow>& row) { return row.param.name; });

TEST(MeditationKeystrokes, DefaultKey_TypesABlankAndEnter) {
    EXPECT_EQ(MeditationKeystrokes({"", "", "", " "}), " {ENTER}");
}

TEST(SpellKeystrokes, ClientWithoutEnterBehindMacros_GetsItWithATextAlone) {
    const auto built = [](const SpokenText& spoken, bool opensChat) {
        return SpellKeystrokes(kAltF1, spoken, {.behindKey = false, .opensChat = opensChat});
    };
    const SpokenText nothing{0, "In Lor", 0, "Ha!"};
    const SpokenText text{1, "In Lor", 0, "Ha!"};
    const SpokenText noText{1, "", 0, ""};
    const SpokenText suffix{0, "In Lor", 1, "Ha!"};
    const SpokenText both{1, "In Lor", 1, "Ha!"};
    const SpokenText noSuffix{0, "", 1, ""};
    EXPECT_EQ(built(nothing, false), "%{f1}");
    EXPECT_EQ(built(text, false), "%{f1}In Lor{ENTER}");
    EXPECT_EQ(built(noText, false), "%{f1}");
    EXPECT_EQ(built(suffix, false), "%{f1}Ha!{ENTER}");
    EXPECT_EQ(built(both, false), "%{f1}In Lor{ENTER}Ha!{ENTER}");
    EXPECT_EQ(built(noSuffix, false), "%{f1}");
    EXPECT_EQ(built(nothing, true), "%{f1}");
    EXPECT_EQ(built(text, true), "%{f1}{ENTER}In Lor{ENTER}");
    EXPECT_EQ(built(noText, true), "%{f1}");
    EXPECT_EQ(built(suffix, true), "%{f1}{ENTER}Ha!{ENTER}");
    EXPECT_EQ(built(both, true), "%{f1}{ENTER}In Lor{ENTER}{ENTER}Ha!{ENTER}");
    EXPECT_EQ(built(noSuffix, true), "%{f1}");
}

TEST(SpellKeystrokes, ClientWithEnterBehindMacros_NeedsNoneToOpenItsChat) {
    EXPECT_EQ(SpellKeystrokes(kAltF1, {1, "In Lor", 1, "Ha!"}, {.opensChat = true}),
              "%{f1}In Lor{ENTER}Ha!{ENTER}");
}

TEST(MeditationKeystrokes, ClientWithoutEnterBehindMacros_GetsTheKeyAlone) {
    for (const bool opensChat : {false, true}) {
        EXPECT_EQ(MeditationKeystrokes(kAltF1, {.behindKey = false, .opensChat = opensChat}),
                  "%{F1}");
    }
}

// covers ODDITY(marks-without-key)
TEST(SpellKeystrokes, NoKey_Oddity_MarksActOnEnter) {
    const auto typed = ParseKeystrokes(SpellKeystrokes({"%", "^", "+", ""}, {}));
    ASSERT_EQ(typed.size(), 1U);
    EXPECT_EQ(typed[0], (Keystroke{{true, true, true}, Symbol::kEnter}));
}

// covers ODDITY(notation-in-texts)
TEST(SpellKeystrokes, NotationInASuffix_Oddity_KeepsItsMeaning) {
    const auto typed = ParseKeystrokes(SpellKeystrokes({"", "", "", "q"}, {0, "", 1, "a%b{F2}"}));
    ASSERT_EQ(typed.size(), 6U);
    EXPECT_EQ(typed[3], (Keystroke{{true, false, false}, CharacterSymbol(U'b')}));
    EXPECT_EQ(typed[4].symbol, static_cast<Symbol>(static_cast<std::uint32_t>(Symbol::kF1) + 1));
}

// covers ODDITY(meditation-capital)
TEST(MeditationKeystrokes, UpperCaseKey_Oddity_StaysAsStored) {
    EXPECT_EQ(MeditationKeystrokes({"", "", "", "A"}), "A{ENTER}");
    EXPECT_EQ(MeditationKeystrokes({"%", "^", "+", "{F5}"}), "%^+{F5}{ENTER}");
}

}  // namespace
}  // namespace spellwick
