#include "store/digit_string.h"

#include <gtest/gtest.h>

#include "tests/support/failures.h"

namespace spellwick {
namespace {

ReagentAmounts Amounts(std::initializer_list<int> values) {
    ReagentAmounts amounts;
    i32 reagent = 1;
    for (const int value : values) {
        amounts(reagent++) = static_cast<unsigned char>(value);
    }
    return amounts;
}

ReagentAmounts Tithes(int value) {
    ReagentAmounts amounts;
    amounts(kTithes) = static_cast<unsigned char>(value);
    return amounts;
}

ReagentAmounts Reread(const std::string& text) {
    ReagentAmounts amounts;
    ReadDigitString(text, amounts);
    return amounts;
}

TEST(DigitString, EachAmountStandsAtItsPlace) {
    EXPECT_EQ(DigitString(Amounts({})), "000000000000000");
    EXPECT_EQ(DigitString(Amounts({1, 2, 3, 4, 5, 6, 7, 8, 9, 1, 2, 3, 4, 56})), "123456789123456");
    EXPECT_EQ(DigitString(Tithes(99)), "000000000000099");
}

// covers ODDITY(one-digit-amounts)
TEST(DigitString, Oddity_AmountOf10OrMore_LosesItsSecondDigitToTheNextCell) {
    EXPECT_EQ(DigitString(Amounts({12, 3})), "130000000000000");
    EXPECT_EQ(Reread(DigitString(Amounts({12, 3}))), Amounts({1, 3}));
    EXPECT_EQ(DigitString(Amounts({255})), "200000000000000");
}

TEST(DigitString, ThreeDigitTithes_KeepTwo) {
    EXPECT_EQ(DigitString(Tithes(255)), "000000000000025");
}

TEST(DigitString, SavedAmountsTo9AndTithesTo99_ComeBack) {
    for (int value = 0; value <= 9; ++value) {
        const ReagentAmounts amounts = Amounts({value, 9 - value, value, value, 0, value, 9, value,
                                                value, 1, value, 2, value, 90 + value});
        EXPECT_EQ(Reread(DigitString(amounts)), amounts);
    }
    for (int tithes = 10; tithes <= 99; ++tithes) {
        EXPECT_EQ(Reread(DigitString(Tithes(tithes))), Tithes(tithes));
    }
    EXPECT_EQ(Reread(DigitString(Tithes(0))), Tithes(0));
}

// covers ODDITY(one-digit-tithes)
TEST(DigitString, Oddity_OneDigitTithesComeBackTenfold) {
    EXPECT_EQ(DigitString(Tithes(5)), "000000000000050");
    EXPECT_EQ(Reread(DigitString(Tithes(5))), Tithes(50));
    EXPECT_EQ(Reread(DigitString(Tithes(1))), Tithes(10));
}

TEST(DigitString, SulphurousAshAndBloodmoss_NoTithes) {
    const ReagentAmounts amounts = Reread("011000000000000");
    EXPECT_EQ(amounts, Amounts({0, 1, 1}));
    EXPECT_EQ(amounts(kTithes), 0);
}

// covers ODDITY(first-start-tithes)
TEST(DigitString, Oddity_FirstStartTithesKeepOneDigitOfTwo) {
    struct Row {
        int cost;
        const char* pair;
        int read;
    };
    for (const Row& row : {Row{15, "10", 10},
                           {5, "50", 50},
                           {20, "20", 20},
                           {10, "10", 10},
                           {0, "00", 0},
                           {99, "90", 90},
                           {255, "20", 20}}) {
        const std::string text = UnsavedDigitString(Tithes(row.cost));
        EXPECT_EQ(text, "0000000000000" + std::string(row.pair) + "0") << row.cost;
        EXPECT_EQ(Reread(text), Tithes(row.read)) << row.cost;
    }
}

TEST(DigitString, UnsavedAmounts_KeepTheirFirstDigit) {
    EXPECT_EQ(UnsavedDigitString(Amounts({12, 3, 0, 7})), "1307000000000000");
}

TEST(DigitString, TithesOfOnePlace_AreOneDigit) {
    EXPECT_EQ(Reread("00000000000007"), Tithes(7));
    EXPECT_EQ(Reread("00000000000007 and more"), Tithes(7));
}

TEST(DigitString, BadPlace_FailsThereAndKeepsWhatWasBefore) {
    struct Row {
        const char* name = nullptr;
        const char* text = nullptr;
        ReagentAmounts before;
    };
    for (const Row& row : {Row{"empty", "", Amounts({})},
                           {"short", "12", Amounts({1, 2})},
                           {"letter", "12x000000000000", Amounts({1, 2})},
                           {"umlaut", "1\xC3\xA4", Amounts({1})},
                           {"no tithes", "1230000000000", Amounts({1, 2, 3})},
                           {"tithes of letters", "4000000000000ab", Amounts({4})}}) {
        ReagentAmounts amounts;
        EXPECT_EQ(FailureOf([&] { ReadDigitString(row.text, amounts); }),
                  FailureKind::kTypeMismatch)
            << row.name;
        EXPECT_EQ(amounts, row.before) << row.name;
    }
}

}  // namespace
}  // namespace spellwick
