#include "model/purse_entries.h"

#include <gtest/gtest.h>

#include "tests/support/failures.h"

namespace spellwick {
namespace {

struct CounterRow {
    const char* name;
    const char* text;
    i16 before;
    i16 after;
    bool rewrites;
    bool refused;
};

TEST(CounterEntry, Table_SignsAddAndTakeNumbersSet) {
    const CounterRow rows[] = {
        {"add ten", "+10", 5, 15, true, false},
        {"take three", "-3", 5, 2, true, false},
        {"take six of five", "-6", 5, 5, true, true},
        {"take all", "-5", 5, 0, true, false},
        {"add five digits", "+12345", 5, 1239, true, false},
        {"take five digits of plenty", "-12345", 2000, 766, true, false},
        {"take five digits of few", "-12345", 1233, 1233, true, true},
        {"plus alone", "+", 5, 5, true, false},
        {"minus alone", "-", 5, 5, true, false},
        {"minus alone of nothing", "-", 0, 0, true, false},
        {"minus alone below zero", "-", -1, -1, true, true},
        {"plus and letters", "+abc", 5, 5, true, false},
        {"plus and minus", "+-3", 5, 2, true, false},
        {"minus and minus", "--3", 5, 8, true, false},
        {"plus and plus", "++3", 5, 8, true, false},
        {"plus, number, sign", "+1+2", 5, 6, true, false},
        {"number", "12", 5, 12, false, false},
        {"number of a sum", "12+3", 5, 12, false, false},
        {"number of a difference", "12-3", 5, 12, false, false},
        {"zero", "0", 5, 0, false, false},
        {"leading zeros", "0012345", 5, 1234, false, false},
        {"empty", "", 5, 0, false, false},
        {"letters", "abc", 5, 0, false, false},
        {"four digits", "9999", 5, 9999, false, false},
        {"number below zero that a paste brought", " -12", 5, -12, false, false},
        {"fraction, half to even", "2.5", 5, 2, false, false},
        {"too long for any cell", "99999999999999999999", 5, 1000, false, false},
    };
    for (const CounterRow& row : rows) {
        const CounterEntry entry = CommitCounterEntry(row.text, row.before);
        EXPECT_EQ(entry.stock, row.after) << row.name;
        EXPECT_EQ(entry.rewrites, row.rewrites) << row.name;
        EXPECT_EQ(entry.refused, row.refused) << row.name;
    }
    EXPECT_EQ(kNotThatManyReagents, "You do not have that amount of reagents");
}

TEST(CounterEntry, SumBeyondAnI16_Overflows) {
    EXPECT_EQ(CommitCounterEntry("+2767", 30000).stock, 32767);
    EXPECT_EQ(FailureOf([] { CommitCounterEntry("+2768", 30000); }), FailureKind::kOverflow);
    EXPECT_EQ(FailureOf([] { CommitCounterEntry("--999", 32000); }), FailureKind::kOverflow);
    EXPECT_EQ(FailureOf([] { CommitCounterEntry("+-999", -32000); }), FailureKind::kOverflow);
}

// covers ODDITY(four-characters-added)
TEST(CounterEntry, Oddity_OnlyFourCharactersBehindASign) {
    EXPECT_EQ(CommitCounterEntry("+12345", 0).stock, 1234);
    EXPECT_EQ(CommitCounterEntry("-12345", 1234).stock, 0);
    EXPECT_EQ(CommitCounterEntry("+00012", 5).stock, 6) << "0001 counts";
}

// covers ODDITY(four-digits-stored)
TEST(CounterEntry, Oddity_FiveDigitsStoreFourAndStayInTheBox) {
    const CounterEntry entry = CommitCounterEntry("12345", 5);
    EXPECT_EQ(entry.stock, 1234);
    EXPECT_FALSE(entry.rewrites);
}

struct TithesRow {
    const char* name;
    const char* text;
    i32 before;
    i32 after;
};

TEST(TithesEntry, Table_SignsAddAndTakeNumbersSet) {
    const TithesRow rows[] = {
        {"set", "500", 3, 500},
        {"set zero", "0", 3, 0},
        {"empty", "", 3, 0},
        {"letters", "abc", 3, 0},
        {"add", "+500", 3, 503},
        {"take", "-2", 3, 1},
        {"take all", "-3", 3, 0},
        {"take more than all", "-5", 3, 0},
        {"add up to the ceiling", "+1000", 9000, 10000},
        {"add past the ceiling", "+5000", 9000, 10000},
        {"set past the ceiling", "10001", 3, 10000},
        {"nine digits", "999999999", 3, 10000},
        {"eleven digits lose two", "99999999999", 3, 10000},
        {"eleven digits of which nine are small", "99000000077", 3, 77},
        {"sign and eight digits stay, seven are read", "+00001234", 10, 133},
        {"minus and eight digits", "-00000019", 10, 9},
        {"plus alone", "+", 7, 7},
        {"minus alone", "-", 7, 7},
        {"plus and minus", "+-3", 7, 4},
        {"minus and minus", "--3", 7, 10},
        {"number of a sum", "12+3", 7, 12},
        {"above the ceiling already, plus alone", "+", 12000, 10000},
        {"above the ceiling already, take", "-1000", 12000, 10000},
        {"above the ceiling already, take more", "-3000", 12000, 9000},
        {"below zero already", "+", -5, 0},
        {"greatest points and more", "+9999999", 2147483647, 10000},
        {"infinite", "1e999", 7, 10000},
        {"infinitely many taken", "-1e999", 7, 0},
    };
    for (const TithesRow& row : rows) {
        EXPECT_EQ(CommitTithesEntry(row.text, row.before), row.after) << row.name;
    }
}

// covers ODDITY(last-nine)
TEST(TithesEntry, Oddity_LongEntryLosesItsSign) {
    EXPECT_EQ(CommitTithesEntry("-00000005", 100), 100) << "nine characters: 0000000 is taken";
    EXPECT_EQ(CommitTithesEntry("-000000005", 100), 5) << "ten characters: the sign is gone";
}

// covers ODDITY(tithes-cut-down)
TEST(TithesEntry, Oddity_CutDownWhereACounterRefuses) {
    EXPECT_EQ(CommitTithesEntry("-5", 3), 0);
    EXPECT_TRUE(CommitCounterEntry("-5", 3).refused);
    EXPECT_EQ(CommitTithesEntry("+5000", 9000), 10000);
}

TEST(CounterTakes, Keys_DigitsSignsAndBackspacePass) {
    const std::u32string passing = U"0123456789+-\b";
    for (char32_t character = 0; character < 0x300; ++character) {
        EXPECT_EQ(CounterTakes(character), passing.find(character) != std::u32string::npos)
            << static_cast<std::uint32_t>(character);
    }
    EXPECT_FALSE(CounterTakes(U'\u0665')) << "a digit of another script";
}

}  // namespace
}  // namespace spellwick
