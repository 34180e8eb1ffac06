// The figures in the spell texts, each against values calculated by hand.
#include "model/formulas.h"

#include <limits>

#include <gtest/gtest.h>

#include "tests/support/failures.h"

namespace spellwick {
namespace {

std::string Figure(i32 number, const CasterValues& values, i32 circle = 1) {
    return BuildFormulaTexts(values, circle)(number);
}

struct TierRow {
    i16 magery;
    double tier;
    const char* texts[5];  // for figures 1, 4, 7, 10 and 13
};

TEST(Formulas, MageryTier_AtEachBound_StepsByHalvesToEven) {
    constexpr TierRow kRows[] = {
        {-100, 0, {" 0", " 0", " 0", " 0", " 0"}},       // -0.5 to the even 0
        {-101, -1, {"-6", "-6", "-12", "-29", "-46"}},   // -0.51
        {0, 0, {" 0", " 0", " 0", " 0", " 0"}},          // 0.5 to the even 0
        {1, 1, {" 6", " 6", " 12", " 29", " 46"}},       // 0.51
        {99, 1, {" 6", " 6", " 12", " 29", " 46"}},      // 1.49
        {100, 2, {" 12", " 12", " 24", " 58", " 92"}},   // 1.5 to the even 2
        {200, 2, {" 12", " 12", " 24", " 58", " 92"}},   // 2.5 to the even 2
        {201, 3, {" 18", " 18", " 36", " 87", " 138"}},  // 2.51
    };
    for (const TierRow& row : kRows) {
        SCOPED_TRACE(row.magery);
        EXPECT_EQ(MageryTier(row.magery), row.tier);
        const FormulaTexts texts = BuildFormulaTexts({.magery = row.magery}, 1);
        int at = 0;
        for (const i32 number : {1, 4, 7, 10, 13}) {
            EXPECT_EQ(texts(number), row.texts[at]) << number;
            ++at;
        }
    }
}

struct DamageRow {
    const char* name;
    i16 evalInt;
    i16 targetResist;
    float factor;
    const char* texts[12];  // for figures 2, 3, 5, 6, 8, 9, 11, 12, 14, 15, 16 and 17
};

TEST(Formulas, Damage_AtEachBound_IsFactorTimesPointsCutDown) {
    constexpr DamageRow kRows[] = {
        {"equal",
         70,
         70,
         1.0F,
         {" 4", " 6", " 5", " 12", " 8", " 20", " 8", " 29", " 14", " 56", " 17", " 66"}},
        {"caster one ahead",
         71,
         70,
         1.002F,
         {" 4", " 6", " 5", " 12", " 8", " 20", " 8", " 29", " 14", " 56", " 17", " 66"}},
        {"target one ahead",
         70,
         71,
         0.995F,
         {" 3", " 5", " 4", " 11", " 7", " 19", " 7", " 28", " 13", " 55", " 16", " 65"}},
        {"caster far ahead",
         100,
         0,
         1.2F,
         {" 4", " 7", " 6", " 14", " 9", " 24", " 9", " 34", " 16", " 67", " 20", " 79"}},
        {"target far ahead",
         0,
         100,
         0.5F,
         {" 2", " 3", " 2", " 6", " 4", " 10", " 4", " 14", " 7", " 28", " 8", " 33"}},
        {"no damage",
         0,
         200,
         0.0F,
         {" 0", " 0", " 0", " 0", " 0", " 0", " 0", " 0", " 0", " 0", " 0", " 0"}},
        {"below none",
         0,
         250,
         -0.25F,
         {"-1", "-2", "-2", "-3", "-2", "-5", "-2", "-8", "-4", "-14", "-5", "-17"}},
    };
    for (const DamageRow& row : kRows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(DamageFactor(row.evalInt, row.targetResist), row.factor);
        const FormulaTexts texts =
            BuildFormulaTexts({.evalInt = row.evalInt, .targetResist = row.targetResist}, 1);
        int at = 0;
        for (const i32 number : {2, 3, 5, 6, 8, 9, 11, 12, 14, 15, 16, 17}) {
            EXPECT_EQ(texts(number), row.texts[at]) << number;
            ++at;
        }
    }
}

// covers ODDITY(damage-short)
TEST(Formulas, Damage_Oddity_RoundFactorFallsOnePointShort) {
    // 0.9 * 20 is 18, but the single-precision 0.9 is a little less.
    EXPECT_EQ(Figure(9, {.evalInt = 0, .targetResist = 20}), " 17");
    EXPECT_EQ(Figure(3, {.evalInt = 0, .targetResist = 20}), " 5");
}

struct FigureRow {
    i32 number = 0;
    CasterValues values;
    const char* text = "";
};

TEST(Formulas, OtherFigures_AtEachBound_AreAsWorkedOutByHand) {
    const FigureRow kRows[] = {
        {18, {.magery = 0}, " 0"},
        {18, {.magery = 100}, " 100"},
        {18, {.magery = -1}, "-1"},
        {19, {.intelligence = 0}, " 0"},
        {19, {.intelligence = 100}, " 100"},
        {20, {.magery = 9}, " 0"},
        {20, {.magery = 10}, " 1"},
        {20, {.magery = 99}, " 9"},
        {20, {.magery = 100}, " 10"},
        {20, {.magery = -9}, " 0"},
        {20, {.magery = -10}, "-1"},
        {21, {.intelligence = 1}, " 0"},
        {21, {.intelligence = 2}, " 1"},
        {21, {.intelligence = 99}, " 49"},
        {21, {.intelligence = -3}, "-1"},
        {22, {.magery = 6}, " 0"},
        {22, {.magery = 7}, " 1"},
        {22, {.magery = 97}, " 13"},
        {22, {.magery = 98}, " 14"},
        {22, {.magery = -13}, "-1"},
        {23, {.magery = 0, .intelligence = 0}, " 0"},
        {23, {.magery = 100, .intelligence = 90}, " 380"},
        {23, {.magery = 32767, .intelligence = 32767}, " 131068"},
        {24, {.magery = 0}, " 0"},
        {24, {.magery = 100}, " 100"},
        {25, {.spiritSpeak = 0}, " 1"},
        {25, {.spiritSpeak = 75}, " 2"},
        {25, {.spiritSpeak = 70}, " 1.93333333333333"},
        {25, {.spiritSpeak = -75}, " 0"},
        {26, {.spiritSpeak = 100, .targetResist = 0}, " 44"},
        {26, {.spiritSpeak = 0, .targetResist = 100}, " 36"},
        {26, {.spiritSpeak = 70, .targetResist = 67}, " 40.12"},
        {27, {.spiritSpeak = 100, .targetResist = 0}, " 9.25"},
        {27, {.spiritSpeak = 0, .targetResist = 100}, " 6.75"},
        {27, {.spiritSpeak = 80, .targetResist = 80}, " 8"},
        {28, {.spiritSpeak = 100, .targetResist = 0}, " 22"},
        {28, {.spiritSpeak = 0, .targetResist = 100}, " 18"},
        {28, {.spiritSpeak = 51, .targetResist = 50}, " 20.02"},
        {29, {.spiritSpeak = 70}, "Base damage= 5 to  8"},
        {29, {.spiritSpeak = 20}, "Base damage= 0 to  3"},
        {29, {.spiritSpeak = 19}, "Base damage=-0.1 to  2.9"},
        {29, {.spiritSpeak = 0}, "Base damage=-2 to  1"},
        {30, {.spiritSpeak = 0}, " 10"},
        {30, {.spiritSpeak = 15}, " 11"},
        {30, {.spiritSpeak = 70}, " 14.6666666666667"},
        {30, {.spiritSpeak = 409}, " 37.2666666666667"},
        {30, {.spiritSpeak = -409}, "-17.2666666666667"},
        {32, {.spiritSpeak = 100, .targetResist = 0}, " 31"},
        {32, {.spiritSpeak = 0, .targetResist = 100}, " 29"},
        {32, {.spiritSpeak = 1, .targetResist = 0}, " 30.01"},
        {33, {.spiritSpeak = -409}, "4 rounds"},
        {33, {.spiritSpeak = 40}, "4 rounds"},
        {33, {.spiritSpeak = 41}, " 4 rounds"},
        {33, {.spiritSpeak = 49}, " 4 rounds"},
        {33, {.spiritSpeak = 50}, " 5 rounds"},
        {33, {.spiritSpeak = 100}, " 10 rounds"},
    };
    for (const FigureRow& row : kRows) {
        EXPECT_EQ(Figure(row.number, row.values), row.text) << "figure " << row.number;
    }
}

struct ResistRow {
    const char* name;
    i16 magery;
    i16 targetResist;
    i32 circle;
    const char* text;
};

TEST(Formulas, ResistText_EachSideOfEachBound_IsTheGreaterChance) {
    constexpr ResistRow kRows[] = {
        {"strong caster, strong target: 100 - (16 + 40)", 100, 100, 8, " 44% chance"},
        {"by resist, 50 / 5", 100, 50, 8, " 10% chance"},
        {"both 10", 20, 50, 8, " 10% chance"},
        {"by circle 11, by resist 10.2", 20, 51, 8, " 11% chance"},
        {"by circle 9, by resist 9.8", 20, 49, 8, " 9.8% chance"},
        {"a fraction", 100, 67, 8, " 13.4% chance"},
        {"rounded down: 50 - 5.2", 21, 50, 1, " 45% chance"},
        {"rounded up: 50 - 5.6", 23, 50, 1, " 44% chance"},
        {"no resistance", 100, 0, 1, " 0% chance"},
        {"no Magery lifts a weak target", 0, 0, 1, " 0% chance"},
        {"no Magery, first circle: 20 - (-4 + 5)", 0, 20, 1, " 19% chance"},
        {"below nothing", 100, -50, 1, "-10% chance"},
    };
    for (const ResistRow& row : kRows) {
        EXPECT_EQ(Figure(31, {.magery = row.magery, .targetResist = row.targetResist}, row.circle),
                  row.text)
            << row.name;
    }
}

TEST(Formulas, CellsBehindTheLast_AreEmpty) {
    const FormulaTexts texts = BuildFormulaTexts({.magery = 100}, 1);
    for (i32 number = 34; number <= 40; ++number) {
        EXPECT_EQ(texts(number), "");
    }
    EXPECT_EQ(FailureOf([&] { texts(0); }), FailureKind::kSubscript);
    EXPECT_EQ(FailureOf([&] { texts(41); }), FailureKind::kSubscript);
}

// covers ODDITY(spirit-speak-limit)
TEST(Formulas, SpiritSpeak_Oddity_ProductIn16BitsFails) {
    EXPECT_EQ(FailureOf([] { Figure(1, {.spiritSpeak = 409}); }), std::nullopt);
    EXPECT_EQ(FailureOf([] { Figure(1, {.spiritSpeak = 410}); }), FailureKind::kOverflow);
    EXPECT_EQ(FailureOf([] { Figure(1, {.spiritSpeak = -409}); }), std::nullopt);
    EXPECT_EQ(FailureOf([] { Figure(1, {.spiritSpeak = -410}); }), FailureKind::kOverflow);
}

TEST(Formulas, ExtremeValues_GiveNumbersOrOverflow) {
    constexpr i16 kExtremes[] = {std::numeric_limits<i16>::min(), -1, 0, 1, 100,
                                 std::numeric_limits<i16>::max()};
    int whole = 0;
    int failed = 0;
    for (const i16 magery : kExtremes) {
        for (const i16 evalInt : kExtremes) {
            for (const i16 intelligence : kExtremes) {
                for (const i16 spirit : kExtremes) {
                    for (const i16 resist : kExtremes) {
                        const auto failure = FailureOf([&] {
                            const FormulaTexts texts = BuildFormulaTexts(
                                {magery, evalInt, intelligence, spirit, resist}, 13);
                            for (i32 number = 1; number <= kFormulaCount; ++number) {
                                ASSERT_FALSE(texts(number).empty());
                            }
                        });
                        ASSERT_TRUE(!failure || failure == FailureKind::kOverflow);
                        ++(failure ? failed : whole);
                    }
                }
            }
        }
    }
    EXPECT_GT(whole, 0);
    EXPECT_GT(failed, 0);
}

}  // namespace
}  // namespace spellwick
