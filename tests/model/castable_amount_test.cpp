#include "model/castable_amount.h"

#include <gtest/gtest.h>

#include "model/spell_lookup.h"
#include "tests/support/failures.h"

namespace spellwick {
namespace {

constexpr Colour kWarn = 0x0080FF;

// A spell that takes `needs`: pairs of reagent number and amount.
SpellRecord SpellOf(std::initializer_list<std::pair<i32, int>> needs) {
    SpellRecord spell;
    for (const auto& [reagent, need] : needs) {
        spell.Reagents(reagent) = static_cast<unsigned char>(need);
    }
    return spell;
}

CounterTexts CountersOf(std::initializer_list<std::pair<i32, const char*>> texts) {
    CounterTexts counters;
    for (const auto& [reagent, text] : texts) {
        counters(reagent) = text;
    }
    return counters;
}

TEST(CastableByTithes, Table_CountsWholeCasts) {
    const struct {
        const char* name;
        int need;
        i32 tithing;
        i16 amount;
    } rows[] = {
        {"one short", 20, 19, 0},
        {"exactly one", 20, 20, 1},
        {"one and a rest", 20, 39, 1},
        {"exactly two", 20, 40, 2},
        {"nothing there", 20, 0, 0},
        {"below zero", 20, -40, 0},
        {"need of one", 1, 7, 7},
        {"largest need", 255, 10000, 39},
        {"most that fits", 1, 32767, 32767},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(CastableByTithes(SpellOf({{14, row.need}}), row.tithing), row.amount) << row.name;
    }
}

TEST(CastableByTithes, QuotientAbove32767_Overflows) {
    EXPECT_EQ(FailureOf([] {
                  CastableByTithes(SpellOf({{14, 1}}), 32768);
              }),
              FailureKind::kOverflow);
    EXPECT_EQ(CastableByTithes(SpellOf({{14, 2}}), 65535), 32767);
    EXPECT_EQ(FailureOf([] {
                  CastableByTithes(SpellOf({{14, 2}}), 65536);
              }),
              FailureKind::kOverflow);
}

TEST(CastableByReagents, ScarcestReagent_SetsTheAmount) {
    const SpellRecord spell = SpellOf({{1, 1}, {5, 2}, {13, 1}});
    EXPECT_EQ(CastableByReagents(spell, CountersOf({{1, "9"}, {5, "20"}, {13, "7"}})), 7);
    EXPECT_EQ(CastableByReagents(spell, CountersOf({{1, "9"}, {5, "9"}, {13, "7"}})), 4);
    EXPECT_EQ(CastableByReagents(spell, CountersOf({{1, "3"}, {5, "9"}, {13, "7"}})), 3);
}

TEST(CastableByReagents, EveryReagent_IsLookedAt) {
    for (i32 reagent = 1; reagent <= 13; ++reagent) {
        CounterTexts counters;
        counters.Fill("50");
        counters(reagent) = "6";
        EXPECT_EQ(CastableByReagents(SpellOf({{reagent, 2}}), counters), 3) << reagent;
    }
}

TEST(CastableByReagents, StockBelowOne_EndsTheLoopWithZero) {
    const SpellRecord spell = SpellOf({{1, 1}, {2, 1}, {3, 1}});
    EXPECT_EQ(CastableByReagents(spell, CountersOf({{1, "5"}, {2, "0"}, {3, "9"}})), 0);
    // Counters after the empty one are not read, even if they would overflow.
    EXPECT_EQ(CastableByReagents(spell, CountersOf({{1, "5"}, {2, "0"}, {3, "1e300"}})), 0);
}

TEST(CastableByReagents, CounterTexts_ReadAsNumbers) {
    const SpellRecord spell = SpellOf({{4, 1}});
    const struct {
        const char* name;
        const char* text;
        i16 amount;
    } rows[] = {
        {"empty", "", 0},
        {"letters", "abc", 0},
        {"negative", "-3", 0},
        {"below one", "0.9", 0},
        {"half to even", "2.5", 2},
        {"rounded up", "1.6", 2},
        {"entry of a sum", "12+3", 12},
        {"blank before", " 12", 12},
        {"plus sign", "+5", 5},
        {"typed and not yet stored", "12345", 12345},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(CastableByReagents(spell, CountersOf({{4, row.text}})), row.amount) << row.name;
    }
}

TEST(CastableByReagents, EmptyCounterAmongOthers_EndsTheLoop) {
    const SpellRecord spell = SpellOf({{1, 1}, {2, 1}});
    EXPECT_EQ(CastableByReagents(spell, CountersOf({{1, ""}, {2, "9"}})), 0);
    EXPECT_EQ(CastableByReagents(spell, CountersOf({{1, "9"}, {2, ""}})), 0);
}

TEST(CastableByReagents, QuotientOrCounterTooLarge_Overflows) {
    const SpellRecord spell = SpellOf({{1, 1}});
    EXPECT_EQ(CastableByReagents(spell, CountersOf({{1, "32767"}})), 32767);
    for (const char* text : {"32768", "99999999999", "1e400"}) {
        EXPECT_EQ(FailureOf([&] {
                      CastableByReagents(spell, CountersOf({{1, text}}));
                  }),
                  FailureKind::kOverflow)
            << text;
    }
    EXPECT_EQ(CastableByReagents(SpellOf({{1, 2}}), CountersOf({{1, "40000"}})), 20000);
}

// covers ODDITY(scarce-reagent)
TEST(CastableByReagents, Oddity_StockBelowTheNeedIsPassedOver) {
    const SpellRecord twoOfFirst = SpellOf({{1, 2}, {2, 1}});
    EXPECT_EQ(CastableByReagents(twoOfFirst, CountersOf({{1, "1"}, {2, "10"}})), 10);
    EXPECT_EQ(CastableByReagents(twoOfFirst, CountersOf({{1, "0"}, {2, "10"}})), 0);
    const SpellRecord twoOfSecond = SpellOf({{1, 1}, {2, 2}});
    EXPECT_EQ(CastableByReagents(twoOfSecond, CountersOf({{1, "10"}, {2, "1"}})), 0);
}

// covers ODDITY(free-spell)
TEST(CastableAmounts, Oddity_FreeSpellShowsNoCasts) {
    CounterTexts counters;
    counters.Fill("50");
    EXPECT_EQ(CastableByReagents(SpellOf({}), counters), 0);
    EXPECT_EQ(CastableByTithes(SpellOf({}), 5000), 0);
    EXPECT_EQ(AmountColour(0, 10, kWarn), kRed);
}

TEST(CountsInTithes, Table_CirclesAndSlots) {
    for (i32 circle = 1; circle <= 13; ++circle) {
        for (i32 slot = 0; slot < 8; ++slot) {
            const bool expected = circle == 11 || circle == 13 || (circle == 12 && slot <= 6);
            EXPECT_EQ(CountsInTithes(circle, slot), expected) << circle << " slot " << slot;
        }
    }
}

// A state in which each row's amount shows how it was counted: 3 by tithes, 8 by reagents.
SharedState StateOfTwoCosts() {
    SharedState state;
    state.Spells.GrowTo(104);
    state.CurrentTithing = 30;
    for (i32 row = 0; row <= 104; ++row) {
        state.Spells(row).Reagents(14) = 10;
        state.Spells(row).Reagents(1) = 1;
    }
    return state;
}

TEST(CastableAmount, CirclePages_CountByTheirKind) {
    const SharedState state = StateOfTwoCosts();
    const CounterTexts counters = CountersOf({{1, "8"}});
    for (i32 button = 2; button <= 13; ++button) {
        for (i32 slot = 0; slot < 8; ++slot) {
            const i32 row = (button - 2) * 8 + slot;
            const bool byTithes = row >= 80 && row <= 94;
            EXPECT_EQ(CastableAmount(state, button, slot, counters), byTithes ? 3 : 8) << row;
        }
    }
}

TEST(CastableAmount, LastPaladinPage_Row95ByReagentsRows88To94ByTithes) {
    const SharedState state = StateOfTwoCosts();
    const CounterTexts counters = CountersOf({{1, "8"}});
    EXPECT_EQ(CastableAmount(state, 13, 7, counters), 8);
    for (i32 slot = 0; slot <= 6; ++slot) {
        EXPECT_EQ(CastableAmount(state, 13, slot, counters), 3) << slot;
    }
}

// covers ODDITY(reagent-slot)
TEST(CastableAmount, Oddity_LastSlotOfAUserPageCountsByReagents) {
    SharedState state = StateOfTwoCosts();
    const CounterTexts counters = CountersOf({{1, "8"}});
    for (i32 cell = 0; cell <= 16; ++cell) {
        state.UserSpells(cell) = 88;
    }
    for (const i32 button : {kUserPage1, kUserPage2}) {
        EXPECT_EQ(CastableAmount(state, button, 7, counters), 8) << "last slot";
        EXPECT_EQ(CastableAmount(state, button, 6, counters), 3) << "any other slot";
    }
    // Row 95 costs reagents, but outside the last slot it is counted by tithes.
    state.UserSpells(2) = 95;
    EXPECT_EQ(CastableAmount(state, kUserPage1, 2, counters), 3);
    // The first Paladin page is counted by tithes in the last slot too.
    state.UserSpells(7) = 80;
    EXPECT_EQ(CastableAmount(state, kUserPage1, 7, counters), 3);
}

TEST(CastableAmount, UserPages_ReadTheirOwnCells) {
    SharedState state = StateOfTwoCosts();
    state.UserSpells(0) = 5;
    state.UserSpells(8) = 6;
    state.Spells(5).Reagents(1) = 2;
    state.Spells(6).Reagents(1) = 4;
    const CounterTexts counters = CountersOf({{1, "8"}});
    EXPECT_EQ(CastableAmount(state, kUserPage1, 0, counters), 4);
    EXPECT_EQ(CastableAmount(state, kUserPage2, 0, counters), 2);
}

TEST(CastableAmount, UserCellOutsideTheRows_FailsAsSubscript) {
    SharedState state = StateOfTwoCosts();
    CounterTexts counters;
    for (const i32 row : {-1, 97, 104, 32767}) {
        state.UserSpells(3) = static_cast<i16>(row);
        EXPECT_EQ(FailureOf([&] { CastableAmount(state, kUserPage1, 3, counters); }),
                  FailureKind::kSubscript)
            << row;
    }
    state.UserSpells(3) = 96;
    EXPECT_EQ(FailureOf([&] { CastableAmount(state, kUserPage1, 3, counters); }), std::nullopt);
}

struct ColourRow {
    const char* name;
    i16 amount;
    i16 regYellow;
    Colour colour;
};

TEST(AmountColour, Table_GreenWarningAndRed) {
    const ColourRow rows[] = {
        {"above the limit", 11, 10, kGreen}, {"at the limit", 10, 10, kWarn},
        {"one cast left", 1, 10, kWarn},     {"none left", 0, 10, kRed},
        {"limit 0, one", 1, 0, kGreen},      {"limit 0, none", 0, 0, kRed},
        {"greatest", 32767, 32766, kGreen},  {"greatest limit", 32767, 32767, kWarn},
    };
    for (const ColourRow& row : rows) {
        EXPECT_EQ(AmountColour(row.amount, row.regYellow, kWarn), row.colour) << row.name;
    }
}

// covers ODDITY(negative-limit)
TEST(AmountColour, Oddity_NegativeLimitShowsZeroInGreen) {
    EXPECT_EQ(AmountColour(0, -1, kWarn), kGreen);
    EXPECT_EQ(AmountColour(0, 0, kWarn), kRed);
}

TEST(CounterHighlight, Table_ByTheCounter) {
    const struct {
        const char* name;
        i32 need;
        const char* text;
        Colour colour;
    } rows[] = {
        {"not needed", 0, "0", kWindowBackground},
        {"not needed, letters", 0, "1e300", kWindowBackground},
        {"four", 1, "4", kGreen},
        {"three", 1, "3", kWarn},
        {"one", 1, "1", kWarn},
        {"none", 1, "0", kRed},
        {"empty", 1, "", kRed},
        {"negative", 1, "-1", kRed},
        {"half rounds to even 4", 1, "3.5", kGreen},
        {"half rounds to even 0", 1, "0.5", kRed},
        {"rounds to 1", 1, "0.6", kWarn},
        {"plenty", 1, "999", kGreen},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(CounterHighlight(row.need, row.text, kWarn), row.colour) << row.name;
    }
    EXPECT_EQ(FailureOf([] { CounterHighlight(1, "99999999999", kWarn); }), FailureKind::kOverflow);
}

// covers ODDITY(hover-limit)
TEST(CounterHighlight, Oddity_FourIsGreenWhateverTheNeed) {
    EXPECT_EQ(CounterHighlight(40, "4", kWarn), kGreen);
    EXPECT_EQ(CounterHighlight(40, "3", kWarn), kWarn);
    // The figure above the icon follows the warning limit and the need instead.
    EXPECT_EQ(
        AmountColour(CastableByReagents(SpellOf({{1, 40}}), CountersOf({{1, "4"}})), 10, kWarn),
        kRed);
}

TEST(TithesHighlight, Table_ByThePointsAndTheNeed) {
    const struct {
        const char* name;
        i32 need;
        const char* text;
        Colour colour;
    } rows[] = {
        {"not needed", 0, "0", kButtonFace},
        {"plenty", 10, "31", kButtonFace},
        {"at the limit", 10, "30", kWarn},
        {"one point for one", 1, "1", kWarn},
        {"exactly the need", 30, "30", kWarn},
        {"less than the need", 10, "9", kRed},
        {"more than 30 and less than the need", 40, "31", kRed},
        {"more than 30 and exactly the need", 40, "40", kButtonFace},
        {"none", 10, "0", kRed},
        {"below zero", 10, "-5", kRed},
        {"empty", 10, "", kRed},
        {"standard form", 10, " 25", kWarn},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(TithesHighlight(row.need, row.text, kWarn), row.colour) << row.name;
    }
}

}  // namespace
}  // namespace spellwick
