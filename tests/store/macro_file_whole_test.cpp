// The macro file on disk: writing, round trips, and bad input.
#include <array>
#include <ctime>
#include <fstream>
#include <random>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "model/spell_data.h"
#include "store/macro_file.h"
#include "tests/store/macro_table_tools.h"
#include "tests/support/failures.h"
#include "tests/support/file_bytes.h"
#include "tests/support/pace.h"
#include "tests/support/temporary_folder.h"

namespace spellwick {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

constexpr int kRounds = 1000;

class MacroFileTest : public testing::Test {
  protected:
    void Write(const std::string& bytes) const { std::ofstream(m_file, std::ios::binary) << bytes; }
    // The text of the failure that ends the writing.
    std::string Written(const SharedState& state) const {
        try {
            WriteMacroFile(m_file, state);
        } catch (const RuntimeFailure& failure) {
            return std::string(FailureName(failure.Kind())) + ": " + failure.what();
        }
        return "no failure";
    }
    std::optional<FailureKind> Read(SharedState& state) const {
        return FailureOf([&] { MergeMacroFile(m_file, state); });
    }

    TemporaryFolder m_temporary;
    fs::path m_folder = m_temporary.Path();
    fs::path m_file = m_folder / "NewMacros.txt";
};

void ExpectSameMacros(const SharedState& one, const SharedState& other) {
    for (i32 number = kMeditationMacro; number <= kLastMacro; ++number) {
        ASSERT_EQ(MacroOf(one, number), MacroOf(other, number)) << number;
    }
}

// covers ODDITY(macro-save-ends)
TEST_F(MacroFileTest, Oddity_Write_EndsWithAFailureAndACompleteFile) {
    SharedState state = MacroState();
    SetMacro(state, 1, {.alt = true, .key = "1"});
    SetMacro(state, 96, {.ctrl = true, .shift = true, .key = "{F12}"});
    Write(std::string(100000, 'x'));
    const std::string failure = Written(state);
    EXPECT_THAT(failure, HasSubstr(FailureName(FailureKind::kSubscript)));
    EXPECT_THAT(failure, HasSubstr(m_file.string()));

    std::string expected = "1 0 1 0\r\nCastSpell Spell 0\r\n########\r\n";
    for (int row = 1; row < 95; ++row) {
        expected += "- 0 0 0\r\nCastSpell Spell " + std::to_string(row) + "\r\n########\r\n";
    }
    expected += "F12 1 0 1\r\nCastSpell Spell 95\r\n########\r\n";
    EXPECT_EQ(BytesOf(m_file), expected);
}

TEST_F(MacroFileTest, Block_OfEveryMarkAndKey) {
    const struct {
        const char* name = "";
        Macro macro;
        const char* line = "";
    } rows[] = {
        {"Ctrl", {.ctrl = true, .key = "Q"}, "Q 1 0 0"},
        {"Alt", {.alt = true, .key = "Q"}, "Q 0 1 0"},
        {"Shift", {.shift = true, .key = "Q"}, "Q 0 0 1"},
        {"all", {.alt = true, .ctrl = true, .shift = true, .key = "{F1}"}, "F1 1 1 1"},
        {"F10", {.key = "{F10}"}, "F10 0 0 0"},
        {"blank", {.key = " "}, "  0 0 0"},
        {"no key", {.key = ""}, " 0 0 0"},
        {"AA", {.key = "AA"}, "AA 0 0 0"},
        {"accented letter", {.key = "\u00e9"}, "\xc9 0 0 0"},
        {"sign of the code page", {.key = "\u20ac"}, "\x80 0 0 0"},
        {"letter beyond the code page", {.key = "\u0416"}, "? 0 0 0"},
        {"closing brace", {.key = "}"}, "} 0 0 0"},
    };
    for (const auto& row : rows) {
        SharedState state = MacroState();
        SetMacro(state, 6, row.macro);
        EXPECT_EQ(MacroBlock(state, 5),
                  std::string(row.line) + "\r\nCastSpell Spell 5\r\n########\r\n")
            << row.name;
    }
    SharedState state = MacroState();
    state.Spells(5).Name = "";
    EXPECT_EQ(MacroBlock(state, 5), "- 0 0 0\r\nCastSpell \r\n########\r\n");
    EXPECT_EQ(FailureOf([&] { MacroBlock(state, 96); }), FailureKind::kSubscript);
}

// covers ODDITY(macro-brace)
TEST_F(MacroFileTest, Oddity_KeyBrace_ComesBackAsABlank) {
    SharedState state = MacroState();
    SetMacro(state, 6, {.alt = true, .key = "{"});
    EXPECT_EQ(MacroBlock(state, 5), " 0 1 0\r\nCastSpell Spell 5\r\n########\r\n");
    MergeMacroText(MacroBlock(state, 5), state);
    EXPECT_EQ(MacroOf(state, 6), (Macro{.key = " "}));
}

// covers ODDITY(macro-capitals)
TEST_F(MacroFileTest, Oddity_SmallLetter_ComesBackAsItsCapital) {
    SharedState state = MacroState();
    SetMacro(state, 6, {.key = "q"});
    MergeMacroText(MacroBlock(state, 5), state);
    EXPECT_EQ(MacroOf(state, 6), (Macro{.key = "Q"}));
}

TEST_F(MacroFileTest, RoundTrip_OfAThousandRandomTables_Long) {
    std::mt19937 random(20240917);
    for (int round = 0; round < kRounds; ++round) {
        SharedState state = MacroState();
        FillAtRandom(state, random);
        Written(state);
        const SharedState before = state;
        ASSERT_EQ(Read(state), std::nullopt);
        ASSERT_NO_FATAL_FAILURE(ExpectSameMacros(state, before)) << "round " << round;
        SharedState empty = MacroState();
        SetMacro(empty, -1, MacroOf(state, -1));
        ASSERT_EQ(Read(empty), std::nullopt);
        ASSERT_NO_FATAL_FAILURE(ExpectSameMacros(empty, before)) << "round " << round;
    }
}

// The shipped table has five rows without a spell, which get no key, and Exorcism after them.
TEST_F(MacroFileTest, ShippedTable_RoundTripOfEverySpell) {
    std::mt19937 random(7);
    SharedState state;
    ASSERT_TRUE(LoadSpellData(state, fs::path(SPELLWICK_SPELL_DATA)));
    for (int round = 0; round < 50; ++round) {
        FillAtRandom(state, random);
        for (i32 number = 91; number <= 95; ++number) {
            SetMacro(state, number, {.key = "AA"});
        }
        Written(state);
        const SharedState before = state;
        ASSERT_EQ(Read(state), FailureKind::kSubscript);
        for (i32 number = kMeditationMacro; number <= kLastMacro; ++number) {
            const bool nameless = number >= 91 && number <= 95;
            ASSERT_EQ(MacroOf(state, number),
                      nameless ? (Macro{.key = "A"}) : MacroOf(before, number))
                << number;
        }
    }
}

TEST_F(MacroFileTest, ClientsOwnFile_OtherLinesBetween) {
    Write(
        "H 0 1 0\r\nSay Hail and well met\r\n########\r\n"
        "F1 1 0 0\r\nCastSpell Spell 28\r\nWaitForTarget\r\nTargetSelf\r\n########\r\n"
        "1 0 0 1\r\nUseSkill Hiding\r\nDelay 10\r\nUseSkill Stealth\r\n########\r\n"
        "q 0 1 1\r\nCastSpell Flame Strike\r\nLastTarget\r\n########\r\n"
        "F12 0 0 0\r\nOpen Paperdoll\r\n########\r\n"
        "PageUp 0 0 0\r\nCircleTrans\r\n########\r\n"
        "W 1 1 0\r\nWarPeace\r\nCastSpell Spell 41\r\nCastSpell Spell 50\r\n########\r\n");
    SharedState state = MacroState();
    ASSERT_EQ(Read(state), std::nullopt);
    EXPECT_EQ(MacroOfRow(state, 28), (Macro{.ctrl = true, .key = "{F1}"}));
    EXPECT_EQ(MacroOfRow(state, 41), (Macro{.alt = true, .ctrl = true, .key = "W"}));
    EXPECT_EQ(MacroOfRow(state, 50), (Macro{.alt = true, .ctrl = true, .key = "W"}));
    int changed = 0;
    for (i32 row = 0; row < kLastRow; ++row) {
        changed += MacroOfRow(state, row) == Macro{.key = "-"} ? 0 : 1;
    }
    EXPECT_EQ(changed, 3);
}

TEST_F(MacroFileTest, CutOffAnywhere_KeepsWhatStandsBeforeTheCut) {
    SharedState full = MacroState();
    SetMacro(full, 1, {.alt = true, .key = "{F10}"});
    SetMacro(full, 2, {.ctrl = true, .key = "\u00c9"});
    const std::string text = MacroBlock(full, 0) + MacroBlock(full, 1);
    const std::size_t first = text.find("Spell 0") + 7;
    const std::size_t second = text.find("Spell 1") + 7;
    for (std::size_t length = 0; length <= text.size(); ++length) {
        SharedState state = MacroState();
        MergeMacroText(std::string_view(text).substr(0, length), state);
        EXPECT_EQ(MacroOfRow(state, 0), length >= first ? MacroOfRow(full, 0) : Macro{.key = "-"})
            << length;
        EXPECT_EQ(MacroOfRow(state, 1), length >= second ? MacroOfRow(full, 1) : Macro{.key = "-"})
            << length;
    }
}

TEST_F(MacroFileTest, BadInput_ChangesNothing) {
    std::mt19937 random(3);
    std::string binary(100000, '\0');
    for (char& byte : binary) {
        byte = static_cast<char>(random());
    }
    const struct {
        const char* name;
        std::string bytes;
    } rows[] = {
        {"empty", ""},
        {"one line of a million characters", std::string(1'000'000, 'C')},
        {"a spell name of a million characters", "CastSpell " + std::string(1'000'000, 'S')},
        {"a million line ends", std::string(1'000'000, '\n')},
        {"a million ends of blocks", std::string(8'000'000, '#')},
        {"zeros", std::string(1000, '\0')},
        {"binary", binary},
        {"a page of another language", "<html><body>CastSpell</body></html>"},
    };
    for (const auto& row : rows) {
        Write(row.bytes);
        SharedState state = MacroState();
        EXPECT_EQ(Read(state), std::nullopt) << row.name;
        ASSERT_NO_FATAL_FAILURE(ExpectSameMacros(state, MacroState())) << row.name;
    }
}

TEST_F(MacroFileTest, NoFileToRead_FailsAsFile) {
    SharedState state = MacroState();
    EXPECT_EQ(Read(state), FailureKind::kFile) << "missing";
    m_file = m_folder;
    EXPECT_EQ(Read(state), FailureKind::kFile) << "folder";
    m_file = "";
    EXPECT_EQ(Read(state), FailureKind::kFile) << "no name";
    ASSERT_NO_FATAL_FAILURE(ExpectSameMacros(state, MacroState()));
}

TEST_F(MacroFileTest, NoFileToWrite_FailsAsFile) {
    const SharedState state = MacroState();
    const std::string fileFailure = FailureName(FailureKind::kFile);
    for (const fs::path& target : {m_folder, m_folder / "missing" / "a.txt", fs::path()}) {
        m_file = target;
        EXPECT_THAT(Written(state), testing::StartsWith(fileFailure)) << target;
    }
}

// Ten megabytes of spell lines alone, and a hundred with the lines of a real file.
TEST_F(MacroFileTest, LargeFiles_AreMergedInTime_Long) {
    std::string spells;
    while (spells.size() < 10'000'000) {
        spells += "F1 0 1 0\r\nCastSpell Spell " + std::to_string(spells.size() % 96) +
                  "\r\n########\r\n";
    }
    std::string talk;
    while (talk.size() < 100'000'000) {
        talk += "H 0 1 0\r\nSay Hail and well met, traveller\r\n########\r\n";
    }
    const struct {
        const char* name;
        const std::string& bytes;
        double seconds;
    } rows[] = {{"10 MB", spells, 1.0}, {"100 MB", talk, 5.0}};
    for (const auto& row : rows) {
        Write(row.bytes);
        SharedState state = MacroState();
        const std::clock_t start = std::clock();
        EXPECT_EQ(Read(state), std::nullopt);
        const double seconds = static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
        EXPECT_LT(seconds, row.seconds * testing_support::kPace) << row.name;
        RecordProperty(row.name, std::to_string(seconds));
    }
}

}  // namespace
}  // namespace spellwick
