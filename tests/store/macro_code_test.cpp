#include "store/macro_code.h"

#include <array>

#include <gtest/gtest.h>

#include "tests/support/failures.h"

namespace spellwick {
namespace {

// clang-format off
constexpr std::array<const char*, 96> kDefaults{
    "A--1", "A--2", "A--3", "A--4", "A--5", "A--6", "A--7", "A--8",
    "-C-1", "-C-2", "-C-3", "-C-4", "-C-5", "-C-6", "-C-7", "-C-8",
    "AC-1", "AC-2", "AC-3", "AC-4", "AC-5", "AC-6", "AC-7", "AC-8",
    "A-S1", "A-S2", "A-S3", "A-S4", "A-S5", "A-S6", "A-S7", "A-S8",
    "-CS1", "-CS2", "-CS3", "-CS4", "-CS5", "-CS6", "-CS7", "-CS8",
    "ACS1", "ACS2", "ACS3", "ACS4", "ACS5", "ACS6", "ACS7", "ACS8",
    "ACSQ", "ACSW", "ACSE", "ACSR", "ACST", "ACSY", "ACSU", "ACSI",
    "ACSA", "ACSS", "ACSD", "ACSF", "ACSG", "ACSH", "ACSJ", "ACSK",
    "ACSZ", "ACSX", "ACSC", "ACSV", "ACSB", "ACSN", "ACSM", "ACS,",
    "AC-Q", "AC-W", "AC-E", "AC-R", "AC-T", "AC-Y", "AC-U", "AC-I",
    "AC-A", "AC-S", "AC-D", "AC-F", "AC-G", "AC-H", "AC-J", "AC-K",
    "AC-L", "AC-;", "", "", "", "", "", "AC-O"};
// clang-format on

TEST(MacroCode, DefaultTable_IsAsWritten) {
    for (i32 number = 1; number <= 96; ++number) {
        EXPECT_EQ(DefaultMacroCode(number), kDefaults[static_cast<std::size_t>(number - 1)])
            << "macro " << number;
    }
}

TEST(MacroCode, DefaultOutsideTheTable_FailsAsSubscript) {
    for (const i32 number : {-1, 0, 97}) {
        EXPECT_EQ(FailureOf([&] { DefaultMacroCode(number); }), FailureKind::kSubscript) << number;
    }
}

TEST(MacroCode, Writer_PutsDashesForFlagsThatAreOff) {
    EXPECT_EQ(MacroCode({true, true, true, "Q"}), "ACSQ");
    EXPECT_EQ(MacroCode({false, false, false, "{F1}"}), "---{F1}");
    EXPECT_EQ(MacroCode({false, true, false, " "}), "-C- ");
    EXPECT_EQ(MacroCode({}), "---");
}

TEST(MacroCode, Reader_TakesFlagsByPlace) {
    struct Row {
        const char* code = nullptr;
        Macro macro;
    };
    for (const Row& row : {
             Row{"AC-X", {true, true, false, "X"}},
             {"ACSX", {true, true, true, "X"}},
             {"---X", {false, false, false, "X"}},
             {"CASX", {false, false, true, "X"}},   // letters in the wrong places
             {"acsx", {false, false, false, "x"}},  // lower-case letters are not flags
             {"AAAA", {true, false, false, "A"}},
             {"    ", {false, false, false, " "}},
             {"A--{F12}", {true, false, false, "{F12}"}},
             {"\xC3\xA4-S\xC3\xB6", {false, false, true, "\xC3\xB6"}},
         }) {
        EXPECT_EQ(ReadMacroCode(row.code), row.macro) << row.code;
    }
}

TEST(MacroCode, FewerThanFourCharacters_AreABlankKey) {
    const Macro blank{false, false, false, " "};
    for (const char* code : {"", "A", "AB", "ACS", "\xC3\xA4\xC3\xB6\xC3\xBC"}) {
        EXPECT_EQ(ReadMacroCode(code), blank) << code;
        EXPECT_EQ(SavedOrDefaultMacro(5, code), blank) << code;
    }
}

TEST(MacroCode, SavedAsTheMarkOfNothing_IsTheDefault) {
    EXPECT_EQ(SavedOrDefaultMacro(5, "---AA"), (Macro{true, false, false, "5"}));
    EXPECT_EQ(SavedOrDefaultMacro(90, "---AA"), (Macro{true, true, false, ";"}));
    EXPECT_EQ(SavedOrDefaultMacro(5, "---AB"), (Macro{false, false, false, "AB"}));
}

TEST(MacroCode, DefaultOfASlotWithoutSpell_HasNoKey) {
    for (i32 number = 91; number <= 95; ++number) {
        EXPECT_EQ(SavedOrDefaultMacro(number, "---AA"), Macro{}) << number;
    }
}

TEST(MacroCode, State_HoldsTheMarksOfTheKeystrokes) {
    SharedState state;
    SetMacro(state, -1, {true, true, true, "X"});
    EXPECT_EQ(state.MacroAlt(-1), "%");
    EXPECT_EQ(state.MacroCtrl(-1), "^");
    EXPECT_EQ(state.MacroShift(-1), "+");
    EXPECT_EQ(state.MacroKey(-1), "X");
    EXPECT_EQ(MacroOf(state, -1), (Macro{true, true, true, "X"}));
    SetMacro(state, -1, {});
    EXPECT_EQ(state.MacroAlt(-1) + state.MacroCtrl(-1) + state.MacroShift(-1) + state.MacroKey(-1),
              "");
}

TEST(MacroCode, EveryMacro_ComesBackFromItsCode) {
    for (int flags = 0; flags < 8; ++flags) {
        for (const char* key : {"a", "{F7}", " ", "\xF0\x9F\x94\xA5", "A--B"}) {
            const Macro macro{(flags & 1) != 0, (flags & 2) != 0, (flags & 4) != 0, key};
            EXPECT_EQ(ReadMacroCode(MacroCode(macro)), macro);
        }
    }
}

// covers ODDITY(last-macros)
TEST(MacroCode, Oddity_DialogsDefaults_TheLastSixHaveTheKeyAA) {
    for (i32 number = 1; number <= 96; ++number) {
        const Macro macro = MacroOfDialog(number, kUnsavedMacro);
        const std::string code =
            number <= 90 ? kDefaults[static_cast<std::size_t>(number - 1)] : "---AA";
        EXPECT_EQ(MacroCode(macro), code) << "macro " << number;
    }
}

TEST(MacroCode, DialogsSavedCodes_AreReadAsEver) {
    for (const i32 number : {1, 90, 91, 96}) {
        EXPECT_EQ(MacroOfDialog(number, "AC-x"), (Macro{.alt = true, .ctrl = true, .key = "x"}));
        EXPECT_EQ(MacroOfDialog(number, "AB"), (Macro{.key = " "}));
        EXPECT_EQ(MacroOfDialog(number, ""), (Macro{.key = " "}));
        EXPECT_EQ(MacroOfDialog(number, "--S{F7}"), (Macro{.shift = true, .key = "{F7}"}));
    }
}

}  // namespace
}  // namespace spellwick
