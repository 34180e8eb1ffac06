// Reading the text of the client's macro file.
#include "store/macro_file.h"

#include <gtest/gtest.h>

#include "tests/store/macro_table_tools.h"
#include "tests/support/failures.h"

namespace spellwick {
namespace {

// The macros of a fresh table after merging a text; a failure ends the merge.
SharedState Merged(std::string_view text) {
    SharedState state = MacroState();
    EXPECT_EQ(FailureOf([&] { MergeMacroText(text, state); }), std::nullopt);
    return state;
}

const Macro kUntouched{.key = "-"};

TEST(MacroFileRead, Block_BindsItsKeyToItsSpell) {
    SharedState state = MacroState();
    state.Spells(59).Name = "Summon Water Elemental";
    MergeMacroText("F1 0 1 0\r\nCastSpell Summon Water Elemental\r\n########\r\n", state);
    EXPECT_EQ(MacroOfRow(state, 59), (Macro{.alt = true, .key = "{F1}"}));
    for (i32 row = 0; row < kLastRow; ++row) {
        EXPECT_TRUE(row == 59 || MacroOfRow(state, row) == kUntouched) << row;
    }
    EXPECT_EQ(MacroOf(state, -1), kUntouched);
    EXPECT_EQ(MacroOf(state, 0), kUntouched);
}

struct KeyLineRow {
    const char* name;
    const char* line;
    Macro macro;
};

void ExpectKeyLines(const std::vector<KeyLineRow>& rows) {
    for (const KeyLineRow& row : rows) {
        const SharedState state = Merged(std::string(row.line) + "\r\nCastSpell Spell 3\r\n");
        EXPECT_EQ(MacroOfRow(state, 3), row.macro) << row.name;
    }
}

TEST(MacroFileRead, KeyLineTable_KeysAndFlags) {
    ExpectKeyLines({
        {"F1", "F1 0 0 0", {.key = "{F1}"}},
        {"F2", "F2 0 0 0", {.key = "{F2}"}},
        {"F3", "F3 0 0 0", {.key = "{F3}"}},
        {"F4", "F4 0 0 0", {.key = "{F4}"}},
        {"F5", "F5 0 0 0", {.key = "{F5}"}},
        {"F6", "F6 0 0 0", {.key = "{F6}"}},
        {"F7", "F7 0 0 0", {.key = "{F7}"}},
        {"F8", "F8 0 0 0", {.key = "{F8}"}},
        {"F9", "F9 1 1 1", {.alt = true, .ctrl = true, .shift = true, .key = "{F9}"}},
        {"F10", "F10 1 0 0", {.ctrl = true, .key = "{F10}"}},
        {"F11", "F11 0 1 0", {.alt = true, .key = "{F11}"}},
        {"F12", "F12 0 0 1", {.shift = true, .key = "{F12}"}},
        {"small letter stays small", "q 0 0 0", {.key = "q"}},
        {"capital", "Q 1 0 1", {.ctrl = true, .shift = true, .key = "Q"}},
        {"digit", "7 0 1 0", {.alt = true, .key = "7"}},
        {"letter F", "F 0 1 0", {.alt = true, .key = "F"}},
        {"blank", "  1 0 0", {.ctrl = true, .key = " "}},
        {"accented letter", "\xc9 1 0 0", {.ctrl = true, .key = "\u00c9"}},
        {"byte without a meaning", "\x81 1 0 0", {.ctrl = true, .key = "\u0081"}},
        {"no flags", "q", {.key = "q"}},
        {"one flag", "q 1", {.ctrl = true, .key = "q"}},
        {"flags that are no digits", "q x y z", {.key = "q"}},
        {"flag of two", "q 2 1 0", {.alt = true, .key = "q"}},
        {"flags without blanks", "q 101", {.alt = true, .ctrl = true, .key = "q"}},
        {"function key alone", "F1", {.key = "F"}},
        {"F0", "F0 0 1 0", {.key = "F"}},
        {"F13", "F13 0 0 0", {.key = "F"}},
    });
}

// covers ODDITY(macro-key-name)
TEST(MacroFileRead, Oddity_KeyNames_AreTakenApartByPosition) {
    ExpectKeyLines({
        {"Tab with Alt", "Tab 0 1 0", {.shift = true, .key = "T"}},
        {"small function key", "f1 0 0 0", {.key = "f"}},
        {"Page Up", "Page Up 0 0 0", {.key = "P"}},
    });
}

// covers ODDITY(macro-block-without-key)
TEST(MacroFileRead, Oddity_BlockWithoutKeyLine_IsC_EmptyKeyLineIsNoKey) {
    SharedState state = MacroState();
    SetMacro(state, 4, {.alt = true, .key = "x"});
    SetMacro(state, 5, {.alt = true, .key = "x"});
    MergeMacroText("CastSpell Spell 3\r\n########\r\n\r\nCastSpell Spell 4\r\n########\r\n", state);
    EXPECT_EQ(MacroOfRow(state, 3), (Macro{.key = "C"}));
    EXPECT_EQ(MacroOfRow(state, 4), (Macro{.key = ""}));
}

TEST(MacroFileRead, EmptyKeyLine_TheNextLineIsNoKeyLine) {
    SharedState state = MacroState();
    MergeMacroText("\r\nq 1 1 1\r\nCastSpell Spell 4\r\n", state);
    EXPECT_EQ(MacroOfRow(state, 4), (Macro{.key = ""}));
}

TEST(MacroFileRead, ActionLines_OnlyCastSpellCounts) {
    const SharedState state = Merged(
        "F5 1 0 0\r\nSay Hail\r\nWarPeace\r\nCastSpell Spell 1\r\nDelay 5\r\nCastSpell Spell 2\r\n"
        " CastSpell Spell 3\r\ncastspell Spell 4\r\nCastSpel Spell 5\r\n########\r\n"
        "########x\r\nz 0 0 0\r\nCastSpell Spell 6\r\n########\r\n"
        "w 0 0 1\r\nUseSkill Meditation\r\n########\r\n");
    EXPECT_EQ(MacroOfRow(state, 1), (Macro{.ctrl = true, .key = "{F5}"}));
    EXPECT_EQ(MacroOfRow(state, 2), (Macro{.ctrl = true, .key = "{F5}"}));
    for (const i32 row : {3, 4, 5}) {
        EXPECT_EQ(MacroOfRow(state, row), kUntouched) << row;
    }
    EXPECT_EQ(MacroOfRow(state, 6), (Macro{.key = "#"}));
}

TEST(MacroFileRead, PositionTen_IsSkippedWithoutALook) {
    const SharedState state =
        Merged("q 0 0 0\r\nCastSpell_Spell 1\r\nCastSpell\tSpell 2\r\nCastSpellSpell 3\r\n");
    EXPECT_EQ(MacroOfRow(state, 1).key, "q");
    EXPECT_EQ(MacroOfRow(state, 2).key, "q");
    EXPECT_EQ(MacroOfRow(state, 3), kUntouched);
}

// covers ODDITY(macro-exact-name)
TEST(MacroFileRead, Oddity_NameMustBeExact) {
    for (const char* name :
         {"Spell 3 ", " Spell 3", "spell 3", "SPELL 3", "Spell  3", "Spell", "Spell 97"}) {
        const SharedState state = Merged("q 0 0 0\r\nCastSpell " + std::string(name) + "\r\n");
        for (i32 row = 0; row < kLastRow; ++row) {
            EXPECT_EQ(MacroOfRow(state, row), kUntouched) << name;
        }
    }
}

TEST(MacroFileRead, NameInTheCodePage_Matches) {
    SharedState state = MacroState();
    state.Spells(7).Name = "Fl\u00e8che d\u2019Or";
    MergeMacroText(
        "q 0 0 0\r\nCastSpell Fl\xe8"
        "che d\x92Or\r\n",
        state);
    EXPECT_EQ(MacroOfRow(state, 7).key, "q");
}

TEST(MacroFileRead, SameName_EveryRowOfItTakesTheKey) {
    SharedState state = MacroState();
    state.Spells(20).Name = state.Spells(80).Name = "Twice";
    MergeMacroText("q 0 0 0\r\nCastSpell Twice\r\n", state);
    EXPECT_EQ(MacroOfRow(state, 20).key, "q");
    EXPECT_EQ(MacroOfRow(state, 80).key, "q");
}

TEST(MacroFileRead, LaterBlock_OverwritesAnEarlierOne) {
    const SharedState state =
        Merged("q 1 1 1\r\nCastSpell Spell 3\r\n########\r\nw 0 0 0\r\nCastSpell Spell 3\r\n");
    EXPECT_EQ(MacroOfRow(state, 3), (Macro{.key = "w"}));
}

// covers ODDITY(macro-nameless-spell)
TEST(MacroFileRead, Oddity_CastSpellWithoutAName_GivesToTheNamelessAndEndsTheLoad) {
    for (const char* line : {"CastSpell", "CastSpell "}) {
        SharedState state = MacroState();
        state.Spells(40).Name = state.Spells(90).Name = state.Spells(kLastRow).Name = "";
        const std::string text =
            "q 1 0 0\r\n" + std::string(line) + "\r\n########\r\nw 0 0 0\r\nCastSpell Spell 3\r\n";
        EXPECT_EQ(FailureOf([&] { MergeMacroText(text, state); }), FailureKind::kSubscript);
        EXPECT_EQ(MacroOfRow(state, 40), (Macro{.ctrl = true, .key = "q"})) << line;
        EXPECT_EQ(MacroOfRow(state, 90), (Macro{.ctrl = true, .key = "q"})) << line;
        EXPECT_EQ(MacroOfRow(state, 3), kUntouched) << line;
    }
}

TEST(MacroFileRead, Row96_FailsAndStoresNothing) {
    SharedState state = MacroState();
    EXPECT_EQ(FailureOf([&] {
                  MergeMacroText(
                      "q 0 0 0\r\nCastSpell Spell 1\r\nCastSpell Spell 96\r\n"
                      "CastSpell Spell 2\r\n",
                      state);
              }),
              FailureKind::kSubscript);
    EXPECT_EQ(MacroOfRow(state, 1).key, "q");
    EXPECT_EQ(MacroOfRow(state, 2), kUntouched);
    EXPECT_EQ(MacroOfRow(state, 95), kUntouched);
}

TEST(MacroFileRead, ShorterSpellTable_TheFirstSpellLineEndsTheLoad) {
    SharedState state = MacroState();
    state.Spells.Clear();
    state.Spells.GrowTo(50);
    state.Spells(1).Name = state.Spells(2).Name = "Here";
    EXPECT_EQ(FailureOf([&] {
                  MergeMacroText("q 0 0 0\r\nSay a\r\nCastSpell Here\r\nw 0 0 0\r\n", state);
              }),
              FailureKind::kSubscript);
    EXPECT_EQ(MacroOfRow(state, 1).key, "q");
    EXPECT_EQ(MacroOfRow(state, 2).key, "q");
    EXPECT_EQ(FailureOf([&] { MergeMacroText("q 0 0 0\r\nSay a\r\n", state); }), std::nullopt);
}

TEST(MacroFileRead, LineEnds_OfEverySystem) {
    const std::string text =
        "q 1 0 0|Say a|CastSpell Spell 1|########|w 0 1 0|CastSpell Spell 2|########|"
        "|CastSpell Spell 3|########|e 0 0 1|CastSpell Spell 4";
    for (const char* end : {"\r\n", "\n", "\r"}) {
        std::string file;
        for (const char sign : text) {
            file += sign == '|' ? std::string(end) : std::string(1, sign);
        }
        for (const std::string& last : {std::string(), std::string(end)}) {
            const SharedState state = Merged(file + last);
            EXPECT_EQ(MacroOfRow(state, 1), (Macro{.ctrl = true, .key = "q"}));
            EXPECT_EQ(MacroOfRow(state, 2), (Macro{.alt = true, .key = "w"}));
            EXPECT_EQ(MacroOfRow(state, 3), (Macro{.key = ""}));
            EXPECT_EQ(MacroOfRow(state, 4), (Macro{.shift = true, .key = "e"}));
        }
    }
}

TEST(MacroFileRead, SameTextTwice_ChangesNothing) {
    const std::string text =
        "q 1 0 0\r\nCastSpell Spell 1\r\n########\r\nF3 0 0 0\r\nCastSpell Spell 1\r\n"
        "CastSpell Spell 9\r\n########\r\n";
    SharedState state = Merged(text);
    const auto keys = state.MacroKey;
    const auto ctrl = state.MacroCtrl;
    MergeMacroText(text, state);
    EXPECT_EQ(state.MacroKey, keys);
    EXPECT_EQ(state.MacroCtrl, ctrl);
}

TEST(MacroFileRead, Marks_AreTheOnesOfTheTables) {
    const SharedState state = Merged("q 1 1 1\r\nCastSpell Spell 1\r\n");
    EXPECT_EQ(state.MacroCtrl(2), "^");
    EXPECT_EQ(state.MacroAlt(2), "%");
    EXPECT_EQ(state.MacroShift(2), "+");
}

}  // namespace
}  // namespace spellwick
