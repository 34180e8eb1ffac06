#include "model/chances.h"

#include <cmath>
#include <cstdlib>

#include <gtest/gtest.h>

#include "tests/support/failures.h"

namespace spellwick {
namespace {

struct ChanceRow {
    const char* name;
    i16 skill;
    i16 minimum;
    i16 maximum;
    i16 chance;
};

TEST(BaseChance, Table_LineBetweenTheEnds) {
    const ChanceRow rows[] = {
        {"at the lower end", 30, 30, 70, 0},
        {"below the lower end", 29, 30, 70, 0},
        {"first step, 2.475", 31, 30, 70, 2},
        {"middle, 49.5 to even", 50, 30, 70, 50},
        {"last step below the top", 69, 30, 70, 97},
        {"at the upper end", 70, 30, 70, 99},
        {"above the upper end", 71, 30, 70, 99},
        {"49.5 goes to 50", 1, 0, 2, 50},
        {"16.5 goes to 16", 1, 0, 6, 16},
        {"ends crossed, skill above the lower", 51, 50, 40, 99},
        {"ends crossed, skill at the lower", 50, 50, 40, 0},
        {"ends crossed, skill between", 45, 50, 40, 0},
        {"ends equal, skill above", 51, 50, 50, 99},
        {"ends equal, skill at both", 50, 50, 50, 0},
        {"negative band", -5, -10, 0, 50},
        {"greatest band that fits", 100, 0, 32767, 0},
    };
    for (const ChanceRow& row : rows) {
        EXPECT_EQ(BaseChance(row.skill, row.minimum, row.maximum), row.chance) << row.name;
    }
}

// 99 * reached / band, rounded, exact halves to even.
i32 ExactChance(i32 reached, i32 band) {
    const i32 twice = 2 * 99 * reached;
    i32 whole = twice / (2 * band);
    const i32 rest = twice - whole * 2 * band;
    if (rest > band || (rest == band && whole % 2 != 0)) {
        ++whole;
    }
    return whole;
}

// 99 / band is inexact. At an exact half that can tip the result, so the order of the two steps
// counts.
TEST(BaseChance, AllBandsOfTheGame_AgreeWithExactArithmetic) {
    int halves = 0;
    for (i16 minimum = 0; minimum <= 120; ++minimum) {
        for (i16 maximum = static_cast<i16>(minimum + 1); maximum <= 120; ++maximum) {
            for (i16 skill = static_cast<i16>(minimum + 1); skill <= maximum; ++skill) {
                const i32 band = maximum - minimum;
                const i32 reached = skill - minimum;
                const i32 chance = BaseChance(skill, minimum, maximum);
                const bool isHalf = (2 * 99 * reached) % (2 * band) == band;
                if (isHalf) {
                    ++halves;
                    ASSERT_LE(std::abs(2 * chance * band - 2 * 99 * reached), band);
                } else {
                    ASSERT_EQ(chance, ExactChance(reached, band))
                        << minimum << ' ' << skill << ' ' << maximum;
                }
            }
        }
    }
    EXPECT_GT(halves, 1000);
}

TEST(BaseChance, DivisionComesFirst) {
    int tipped = 0;
    for (i32 band = 1; band <= 400; ++band) {
        for (i32 reached = 1; reached <= band; ++reached) {
            const double first = 99.0 / band * reached;
            const double whole = std::floor(first);
            const double part = first - whole;
            i32 expected = static_cast<i32>(whole) + (part > 0.5 ? 1 : 0);
            if (part == 0.5 && expected % 2 != 0) {
                ++expected;
            }
            ASSERT_EQ(BaseChance(static_cast<i16>(reached), 0, static_cast<i16>(band)), expected);
            tipped += expected != ExactChance(reached, band) ? 1 : 0;
        }
    }
    EXPECT_GT(tipped, 0) << "multiplying first would give the same in every case";
}

TEST(BaseChance, DifferencesBeyondAnI16_Overflow) {
    EXPECT_EQ(FailureOf([] { BaseChance(0, -1, 32767); }), FailureKind::kOverflow);
    EXPECT_EQ(FailureOf([] { BaseChance(32767, -32768, 32767); }), FailureKind::kOverflow);
    EXPECT_EQ(BaseChance(32767, -32768, 32766), 99) << "above the top nothing is subtracted";
    EXPECT_EQ(BaseChance(-32768, -32768, 32767), 0);
}

// Row 5 is a Magery spell, 30 to 70, 40 mana; the caster is a master.
SharedState Caster() {
    SharedState state;
    state.Spells.GrowTo(104);
    SpellRecord& spell = state.Spells(5);
    spell.School = kMagery;
    spell.Mana = 40;
    spell.MinimumSkill = 30;
    spell.MaximumSkill = 70;
    state.Magery = 100;
    state.Intelligence = 80;
    state.CurrentMana = 80;
    return state;
}

TEST(CalculateChances, IntelligenceBelowTheMana_GivesZeroInBothTables) {
    SharedState state = Caster();
    state.Intelligence = 39;
    CalculateChances(state);
    EXPECT_EQ(state.Chance(5), 0);
    EXPECT_EQ(state.SkillChance(5), 0);
    state.Intelligence = 40;
    CalculateChances(state);
    EXPECT_EQ(state.Chance(5), 99);
    EXPECT_EQ(state.SkillChance(5), 99);
}

TEST(CalculateChances, CurrentManaTooLow_CountsOnlyWithTheLink) {
    SharedState state = Caster();
    state.CurrentMana = 39;
    state.AssistLinked = true;
    CalculateChances(state);
    EXPECT_EQ(state.Chance(5), 0);
    EXPECT_EQ(state.SkillChance(5), 99);
    state.AssistLinked = false;
    CalculateChances(state);
    EXPECT_EQ(state.Chance(5), 99);
    EXPECT_EQ(state.SkillChance(5), 99);
    state.AssistLinked = true;
    state.CurrentMana = 40;
    CalculateChances(state);
    EXPECT_EQ(state.Chance(5), 99);
}

TEST(CalculateChances, Schools_UseTheirSkill) {
    SharedState state = Caster();
    state.Magery = 31;
    state.Necro = 50;
    state.Chivalry = 70;
    const struct {
        const char* name;
        i32 school;
        i16 chance;
    } rows[] = {{"Magery", 1, 2}, {"Necromancer", 2, 50}, {"Chivalry", 3, 99}, {"none", 0, 2}};
    for (const auto& row : rows) {
        state.Spells(5).School = row.school;
        CalculateChances(state);
        EXPECT_EQ(state.Chance(5), row.chance) << row.name;
    }
}

TEST(CalculateChances, Row96_IsLeftAlone) {
    SharedState state = Caster();
    state.Spells(96) = state.Spells(5);
    state.Spells(95) = state.Spells(5);
    state.Spells(0) = state.Spells(5);
    state.Chance(96) = 17;
    state.SkillChance(96) = 18;
    CalculateChances(state);
    EXPECT_EQ(state.Chance(96), 17);
    EXPECT_EQ(state.SkillChance(96), 18);
    EXPECT_EQ(state.Chance(95), 99);
    EXPECT_EQ(state.Chance(0), 99);
}

TEST(CalculateChances, EveryRow_KeepsItsOwnChance) {
    SharedState state = Caster();
    state.Magery = 50;
    for (i32 row = 0; row <= 95; ++row) {
        state.Spells(row).MinimumSkill = static_cast<i16>(row);
        state.Spells(row).MaximumSkill = static_cast<i16>(row + 40);
    }
    CalculateChances(state);
    for (i32 row = 0; row <= 95; ++row) {
        const i32 expected = row >= 50 ? 0 : row <= 10 ? 99 : ExactChance(50 - row, 40);
        EXPECT_EQ(state.Chance(row), row == 5 ? 99 : expected) << row;
    }
}

TEST(ChanceGround, InTown_DecidesAndNotTheChance) {
    SpellRecord spell;
    spell.InTown = 1;
    EXPECT_EQ(ChanceGround(spell), 0xFFFF80);
    spell.InTown = 0;
    EXPECT_EQ(ChanceGround(spell), 0x8080FF);
    spell.InTown = 2;
    EXPECT_EQ(ChanceGround(spell), 0x8080FF);
}

TEST(SkillTab, Rows_AreCirclesOrPages) {
    const i32 magery[] = {0, 8, 16, 24, 32, 40, 48, 56};
    for (i32 line = 0; line < 8; ++line) {
        EXPECT_EQ(SkillTabRow(0, line), magery[line]);
        EXPECT_EQ(SkillTabRow(1, line), 64 + line);
        EXPECT_EQ(SkillTabRow(2, line), 72 + line);
        EXPECT_EQ(SkillTabRow(3, line), 80 + line);
        EXPECT_EQ(SkillTabRow(4, line), 88 + line);
    }
}

TEST(SkillTab, Table_GroundsOfALine) {
    SpellRecord spell;
    spell.Mana = 40;
    spell.MinimumSkill = 30;
    spell.MaximumSkill = 70;
    constexpr Colour kPlain = kWindowBackground;
    const struct {
        const char* name = "";
        i16 intelligence = 0;
        i16 skill = 0;
        i16 chance = 0;
        SkillTabGrounds grounds;
    } rows[] = {
        {"all well", 40, 70, 99, {kPlain, kPlain, kPlain, kPlain}},
        {"intelligence one short", 39, 70, 0, {kRed, kPlain, kPlain, kRed}},
        {"skill one short of the lower end", 40, 29, 0, {kPlain, kRed, kYellow, kRed}},
        {"skill at the lower end", 40, 30, 0, {kPlain, kPlain, kYellow, kRed}},
        {"skill one short of the upper end", 40, 69, 97, {kPlain, kPlain, kYellow, kPlain}},
        {"chance below zero is not 0", 40, 70, -1, {kPlain, kPlain, kPlain, kPlain}},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(GroundsOfSkillLine(spell, row.intelligence, row.skill, row.chance), row.grounds)
            << row.name;
    }
}

}  // namespace
}  // namespace spellwick
