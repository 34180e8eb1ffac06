// How long spells last: every rule at its bounds, and every shipped spell.
#include "model/spell_duration.h"

#include <limits>
#include <map>

#include <gtest/gtest.h>

#include "model/spell_data.h"
#include "tests/support/failures.h"

namespace spellwick {
namespace {

struct RuleRow {
    i16 rule = 0;
    CasterValues values;
    i16 seconds = 0;
};

TEST(SpellDuration, Rules_AtEachBound_AreCutToWholeSeconds) {
    const RuleRow kRows[] = {
        {0, {.magery = 100}, 0},
        {1, {.magery = 0}, 0},
        {1, {.magery = 1}, 1},     // 1.2
        {1, {.magery = 99}, 118},  // 118.8
        {1, {.magery = 100}, 120},
        {2, {.magery = 119}, 142},  // 142.8
        {2, {.magery = 120}, 144},
        {2, {.magery = 121}, 144},
        {3, {.magery = 7}, 15},
        {3, {.magery = 8}, 16},
        {3, {.magery = 120}, 240},
        {3, {.magery = 121}, 240},
        {3, {.magery = -50}, 15},
        {4, {.magery = 0}, 0},
        {4, {.magery = 119}, 119},
        {4, {.magery = 120}, 120},
        {4, {.magery = 121}, 120},
        {5, {.magery = 100, .intelligence = 90}, 380},
        {6, {.magery = 0}, 4},
        {6, {.magery = 1}, 4},
        {6, {.magery = 2}, 5},
        {7, {.magery = 4}, 7},
        {7, {.magery = 5}, 8},
        {8, {.magery = 2}, 3},
        {8, {.magery = 3}, 4},  // 4.2
        {9, {.magery = 2}, 3},
        {9, {.magery = 3}, 4},
        {10, {.magery = 3}, 2},  // 2.84
        {10, {.magery = 4}, 3},  // 3.12
        {10, {.magery = 25}, 9},
        {11, {}, 10},
        {12, {}, 30},
        {13, {}, 90},
        {14, {}, 120},
        {15, {}, 900},
        {16, {.spiritSpeak = 0}, 1},
        {16, {.spiritSpeak = 3}, 1},
        {16, {.spiritSpeak = 4}, 2},   // 2.18
        {16, {.spiritSpeak = 17}, 6},  // 5 exactly, and 1
        {16, {.spiritSpeak = -1}, 0},
        {17, {.spiritSpeak = 100, .targetResist = 0}, 80},
        {17, {.spiritSpeak = 0, .targetResist = 100}, 0},
        {17, {.spiritSpeak = 0, .targetResist = 97}, 1},  // 1.2
        {17, {.spiritSpeak = 0, .targetResist = 98}, 0},  // 0.8
        {18, {.spiritSpeak = 56, .targetResist = 0}, 15},
        {18, {.spiritSpeak = 0, .targetResist = 56}, 1},
        {18, {.spiritSpeak = 0, .targetResist = 57}, 0},  // 0.875
        {18, {.spiritSpeak = 0, .targetResist = 100}, 0},
        {19, {.spiritSpeak = 100, .targetResist = 0}, 40},
        {19, {.spiritSpeak = 0, .targetResist = 95}, 1},
        {19, {.spiritSpeak = 0, .targetResist = 96}, 0},
        {20, {.spiritSpeak = 0}, 8},
        {20, {.spiritSpeak = 49}, 8},
        {20, {.spiritSpeak = 50}, 10},
        {20, {.spiritSpeak = 100}, 20},
        {20, {.spiritSpeak = -100}, 8},
        {21, {.spiritSpeak = 0}, 10},
        {21, {.spiritSpeak = 1}, 10},
        {21, {.spiritSpeak = 2}, 11},
        {21, {.spiritSpeak = 100}, 76},
        {22, {}, 11},
        {23, {}, 20},
        {24, {}, 200},
        {25, {.magery = 100}, 0},
        {-1, {.magery = 100}, 0},
        {32767, {.magery = 100}, 0},
    };
    for (const RuleRow& row : kRows) {
        EXPECT_EQ(SpellDuration(row.rule, row.values), row.seconds)
            << "rule " << row.rule << ", Magery " << row.values.magery << ", Spirit Speak "
            << row.values.spiritSpeak << ", resist " << row.values.targetResist;
    }
}

TEST(SpellDuration, ExtremeValues_GiveSecondsOrOverflow) {
    constexpr i16 kLeast = std::numeric_limits<i16>::min();
    constexpr i16 kMost = std::numeric_limits<i16>::max();
    for (i16 rule = -1; rule <= 25; ++rule) {
        for (const i16 value : {kLeast, kMost}) {
            for (const i16 resist : {kLeast, kMost}) {
                const CasterValues values{value, value, value, value, resist};
                const auto failure = FailureOf([&] { ASSERT_GE(SpellDuration(rule, values), 0); });
                EXPECT_TRUE(!failure || failure == FailureKind::kOverflow) << rule;
            }
        }
    }
    EXPECT_EQ(FailureOf([] { SpellDuration(5, {.magery = kMost, .intelligence = kMost}); }),
              FailureKind::kOverflow);
    EXPECT_EQ(SpellDuration(5, {.magery = kLeast, .intelligence = kLeast}), 0);
}

TEST(SpellDuration, DeliveredSpells_LastAsTheTableSays) {
    // By row, with Magery, Intelligence and Spirit Speak at 100 and resist at 0. No other spell
    // lasts.
    const std::map<i32, i16> kSeconds{
        {0, 120},  {2, 120},  {5, 900},  {7, 120},  {8, 120},  {9, 120},  {14, 200}, {15, 120},
        {16, 120}, {23, 10},  {25, 120}, {26, 120}, {27, 54},  {32, 120}, {34, 120}, {37, 27},
        {38, 43},  {39, 400}, {43, 120}, {45, 120}, {46, 36},  {49, 30},  {51, 30},  {55, 100},
        {57, 90},  {59, 400}, {60, 400}, {61, 400}, {62, 400}, {63, 400}, {64, 30},  {65, 10},
        {66, 80},  {68, 20},  {70, 40},  {74, 20},  {78, 76},  {83, 11},  {85, 20},  {87, 200},
    };
    SharedState state;
    ASSERT_TRUE(LoadSpellData(state, SPELLWICK_SPELL_DATA));
    for (i32 row = 0; row <= kLastRow; ++row) {
        const auto found = kSeconds.find(row);
        EXPECT_EQ(SpellDuration(state.Spells(row).File5,
                                {.magery = 100, .intelligence = 100, .spiritSpeak = 100}),
                  found == kSeconds.end() ? 0 : found->second)
            << "row " << row << " " << state.Spells(row).Name;
    }
}

}  // namespace
}  // namespace spellwick
