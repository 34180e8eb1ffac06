#include "model/spell_lookup.h"

#include <gtest/gtest.h>

#include "tests/support/failures.h"

namespace spellwick {
namespace {

SharedState StateWithEmptyRows() {
    SharedState state;
    state.Spells.GrowTo(104);
    return state;
}

struct PageRow {
    const char* name;
    i32 button;
    i32 circle;
    i32 firstRow;
    i32 lastRow;
};

constexpr PageRow kPages[] = {
    {"Magery 1", 2, 1, 0, 7},         {"Magery 2", 3, 2, 8, 15},
    {"Magery 3", 4, 3, 16, 23},       {"Magery 4", 5, 4, 24, 31},
    {"Magery 5", 6, 5, 32, 39},       {"Magery 6", 7, 6, 40, 47},
    {"Magery 7", 8, 7, 48, 55},       {"Magery 8", 9, 8, 56, 63},
    {"Necromancer 1", 10, 9, 64, 71}, {"Necromancer 2", 11, 10, 72, 79},
    {"Paladin 1", 12, 11, 80, 87},    {"Paladin 2", 13, 12, 88, 95},
};

TEST(Pages, Table_ButtonsStandForCirclesAndRows) {
    const FixedTable<i16, 0, 16> userSpells;
    for (const PageRow& page : kPages) {
        EXPECT_EQ(CurrentCircle(page.button), page.circle) << page.name;
        for (i32 slot = 0; slot < 8; ++slot) {
            const i32 row = SpellAtSlot(page.button, userSpells, slot);
            EXPECT_EQ(row, page.firstRow + slot) << page.name;
            EXPECT_EQ(CircleOf(row), page.circle) << page.name;
            EXPECT_EQ(CircleAtSlot(page.button, row), page.circle) << page.name;
        }
        EXPECT_EQ(SpellAtSlot(page.button, userSpells, 7), page.lastRow) << page.name;
    }
    EXPECT_EQ(std::size(kPages), 12U);
}

TEST(Pages, NoCircleButton_GivesCircleZero) {
    for (const i32 button : {-1, 0, 1, 14}) {
        EXPECT_EQ(CurrentCircle(button), 0) << button;
    }
}

TEST(Pages, CircleOf_IsTheEighthOfTheRowPlusOne) {
    for (i32 row = 0; row <= 95; ++row) {
        EXPECT_EQ(CircleOf(row), 1 + (row - row % 8) / 8);
    }
    EXPECT_EQ(CircleOf(96), 13) << "row 96 belongs to no page";
}

TEST(Pages, UserPages_ShowTheirOwnCells) {
    FixedTable<i16, 0, 16> userSpells;
    for (i32 cell = 0; cell <= 16; ++cell) {
        userSpells(cell) = static_cast<i16>(95 - cell * 5);
    }
    for (i32 slot = 0; slot < 8; ++slot) {
        EXPECT_EQ(SpellAtSlot(0, userSpells, slot), 95 - slot * 5);
        EXPECT_EQ(SpellAtSlot(1, userSpells, slot), 95 - (slot + 8) * 5);
        const i32 row = SpellAtSlot(0, userSpells, slot);
        EXPECT_EQ(CircleAtSlot(0, row), CircleOf(row)) << "the row tells the circle";
        EXPECT_EQ(CircleAtSlot(1, row), CircleOf(row));
    }
}

TEST(Pages, SlotThatAUserPageLacks_FailsAsSubscript) {
    const FixedTable<i16, 0, 16> userSpells;
    EXPECT_EQ(FailureOf([&] { SpellAtSlot(0, userSpells, -1); }), FailureKind::kSubscript);
    EXPECT_EQ(FailureOf([&] { SpellAtSlot(1, userSpells, 9); }), FailureKind::kSubscript);
}

TEST(GetSkill, Schools_ReadTheirOwnSkill) {
    SharedState state = StateWithEmptyRows();
    state.Magery = 11;
    state.Necro = 22;
    state.Chivalry = 33;
    state.EvalInt = 44;
    state.SpiritSpeak = 55;
    const struct {
        const char* name;
        i32 school;
        i16 skill;
    } rows[] = {{"no school", 0, 11}, {"Magery", 1, 11},   {"Necromancer", 2, 22},
                {"Chivalry", 3, 33},  {"a fourth", 4, 11}, {"negative", -1, 11}};
    for (const auto& row : rows) {
        state.Spells(5).School = row.school;
        EXPECT_EQ(GetSkill(state, 5), row.skill) << row.name;
    }
    EXPECT_EQ(FailureOf([&] { GetSkill(state, 105); }), FailureKind::kSubscript);
}

TEST(RecalculateCosts, EveryReagent_CountsWithItsPrice) {
    SharedState state = StateWithEmptyRows();
    for (i32 reagent = 1; reagent <= 13; ++reagent) {
        state.RegPrice(reagent) = static_cast<i16>(100 + reagent);
    }
    for (i32 reagent = 1; reagent <= 14; ++reagent) {
        state.Spells(reagent).Reagents(reagent) = 2;
    }
    RecalculateCosts(state);
    for (i32 reagent = 1; reagent <= 13; ++reagent) {
        EXPECT_EQ(state.Spells(reagent).Cost, 2 * (100 + reagent));
    }
    EXPECT_EQ(state.Spells(14).Cost, 2) << "a tithing point counts one gold";
    EXPECT_EQ(state.RegPrice(14), 1);
    EXPECT_EQ(state.Spells(0).Cost, 0);
}

TEST(RecalculateCosts, DefaultPrices_GiveTheCostOfAMix) {
    SharedState state = StateWithEmptyRows();
    for (i32 reagent = 1; reagent <= 14; ++reagent) {
        state.RegPrice(reagent) = FactsOfReagent(reagent).defaultPrice;
        state.Spells(7).Reagents(reagent) = 1;
    }
    RecalculateCosts(state);
    EXPECT_EQ(state.Spells(7).Cost, 3 + 3 + 6 + 3 + 3 + 6 + 3 + 3 + 3 + 3 + 6 + 6 + 5 + 1);
}

TEST(RecalculateCosts, Row96_IsPricedLikeAnyOther) {
    SharedState state = StateWithEmptyRows();
    state.RegPrice(1) = 3;
    state.Spells(96).Reagents(1) = 4;
    state.Spells(96).Cost = 99;
    state.Spells(97).Reagents(1) = 4;
    RecalculateCosts(state);
    EXPECT_EQ(state.Spells(96).Cost, 12);
    EXPECT_EQ(state.Spells(97).Cost, 0) << "rows end at 96";
}

TEST(RecalculateCosts, TithingCostAboveNine_IsKept) {
    SharedState state = StateWithEmptyRows();
    state.Spells(89).Reagents(14) = 255;
    RecalculateCosts(state);
    EXPECT_EQ(state.Spells(89).Cost, 255);
}

TEST(RecalculateCosts, ProductOrSumAbove32767_Overflows) {
    SharedState state = StateWithEmptyRows();
    state.Spells(3).Reagents(1) = 1;
    state.RegPrice(1) = 32767;
    EXPECT_EQ(FailureOf([&] { RecalculateCosts(state); }), std::nullopt);
    EXPECT_EQ(state.Spells(3).Cost, 32767);
    state.Spells(3).Reagents(14) = 1;
    EXPECT_EQ(FailureOf([&] { RecalculateCosts(state); }), FailureKind::kOverflow) << "the sum";
    state.Spells(3).Reagents(14) = 0;
    state.Spells(3).Reagents(1) = 2;
    state.RegPrice(1) = 16384;
    EXPECT_EQ(FailureOf([&] { RecalculateCosts(state); }), FailureKind::kOverflow) << "the product";
    state.RegPrice(1) = -16384;
    RecalculateCosts(state);
    EXPECT_EQ(state.Spells(3).Cost, -32768);
}

}  // namespace
}  // namespace spellwick
