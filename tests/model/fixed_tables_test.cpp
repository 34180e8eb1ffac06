#include <gtest/gtest.h>

#include "model/colours.h"
#include "model/fixed_table.h"
#include "model/reagents.h"
#include "model/shared_state.h"
#include "tests/support/failures.h"
#include "tests/support/table_bounds.h"

namespace spellwick {
namespace {

constexpr auto kSubscript = FailureKind::kSubscript;

struct ReagentRow {
    i32 number;
    const char* name;
    const char* code;
    const char* stockCode;
    const char* priceKey;
    i16 price;
};

constexpr ReagentRow kReagentRows[] = {
    {1, "Mandrake Root", "MR", "MR", "MR price", 3},
    {2, "Sulphurous Ash", "SA", "SA", "SA price", 3},
    {3, "Bloodmoss", "BM", "BM", "BM price", 6},
    {4, "Spider Silk", "SS", "SS", "SS price", 3},
    {5, "Garlic", "GL", "GA", "GA price", 3},
    {6, "Black Pearl", "BP", "BP", "BP price", 6},
    {7, "Nightshade", "NI", "NI", "NI price", 3},
    {8, "Ginseng", "GS", "GI", "GI price", 3},
    {9, "Bat Wing", "BW", "BW", "BW price", 3},
    {10, "Grave Dust", "GD", "DB", "GD price", 3},
    {11, "Daemon Blood", "DB", "GD", "DB price", 6},
    {12, "Nox Crystal", "NC", "NC", "NC price", 6},
    {13, "Pig Iron", "PI", "PI", "PI price", 5},
    {14, "Tithes", "TI", "", "", 1},
};

TEST(Reagents, Table_HoldsNamesCodesKeysAndPrices) {
    for (const ReagentRow& row : kReagentRows) {
        const ReagentFacts& facts = FactsOfReagent(row.number);
        EXPECT_EQ(facts.name, row.name);
        EXPECT_EQ(facts.code, row.code) << row.name;
        EXPECT_EQ(facts.stockCode, row.stockCode) << row.name;
        EXPECT_EQ(facts.priceKey, row.priceKey) << row.name;
        EXPECT_EQ(facts.defaultPrice, row.price) << row.name;
    }
    EXPECT_EQ(std::size(kReagentRows), 14U);
    EXPECT_EQ(FailureOf([] { FactsOfReagent(0); }), kSubscript);
    EXPECT_EQ(FailureOf([] { FactsOfReagent(15); }), kSubscript);
}

TEST(Reagents, InitReagentTables_WritesFourteenNamesAndCodes) {
    SharedState state;
    InitReagentTables(state);
    for (const ReagentRow& row : kReagentRows) {
        EXPECT_EQ(state.ReagentName(row.number), row.name);
        EXPECT_EQ(state.ReagentCode(row.number), row.code);
    }
}

TEST(Bags, Table_HoldsTheDefaultNames) {
    const char* names[] = {"Red Backpack",    "Blue Backpack", "Green Backpack", "Yellow Backpack",
                           "Purple Backpack", "Crate",         "Chest",          "Pouch",
                           "Wooden box",      "Bank Box"};
    for (i32 bag = 0; bag < 10; ++bag) {
        EXPECT_EQ(DefaultBagName(bag), names[bag]);
    }
    EXPECT_EQ(FailureOf([] { DefaultBagName(-1); }), kSubscript);
    EXPECT_EQ(FailureOf([] { DefaultBagName(10); }), kSubscript);
}

TEST(Colours, Table_HoldsTheFixedValues) {
    EXPECT_EQ(kRed, 0x0000FF);
    EXPECT_EQ(kGreen, 0x00FF00);
    EXPECT_EQ(kYellow, 0x00FFFF);
    EXPECT_EQ(kBlue, 0xFF0000);
    EXPECT_EQ(kAllowedInTown, 0xFFFF80);
    EXPECT_EQ(kNotInTown, 0x8080FF);
    EXPECT_EQ(static_cast<std::uint32_t>(kWindowBackground), 0x80000005U);
    EXPECT_EQ(static_cast<std::uint32_t>(kButtonFace), 0x8000000FU);
}

TEST(Constants, Version_NamesTheStoreAndTheDataFile) {
    EXPECT_STREQ(kVersion, "7.5");
    EXPECT_STREQ(kApplicationName, "Spellwick");
    EXPECT_STREQ(kSpellDataFile, "SpellData.txt");
}

TEST(SharedState, Tables_HaveTheirRealBounds) {
    SharedState state;
    ExpectBounds("Spellbook", state.Spellbook, 0, 96);
    ExpectBounds("UserSpells", state.UserSpells, 0, 16);
    ExpectBounds("Chance", state.Chance, 0, 96);
    ExpectBounds("SkillChance", state.SkillChance, 0, 96);
    ExpectBounds("MacroAlt", state.MacroAlt, -1, 96);
    ExpectBounds("MacroCtrl", state.MacroCtrl, -1, 96);
    ExpectBounds("MacroShift", state.MacroShift, -1, 96);
    ExpectBounds("MacroKey", state.MacroKey, -1, 96);
    ExpectBounds("ReagentName", state.ReagentName, 1, 14);
    ExpectBounds("ReagentCode", state.ReagentCode, 1, 14);
    ExpectBounds("RegPrice", state.RegPrice, 1, 14);
    ExpectBounds("BagName", state.BagName, 0, 9);
    SpellRecord spell;
    ExpectBounds("Reagents", spell.Reagents, 1, 14);
    ExpectBounds("ReagentInput", spell.ReagentInput, 1, 14);
}

TEST(SharedState, MacroTables_HoldACellForEachNumber) {
    SharedState state;
    for (i32 macro = -1; macro <= 96; ++macro) {
        state.MacroKey(macro) = "key " + std::to_string(macro);
    }
    for (i32 macro = -1; macro <= 96; ++macro) {
        EXPECT_EQ(state.MacroKey(macro), "key " + std::to_string(macro));
    }
}

TEST(StockTable, ThirteenReagentsInTenBags_HaveCellsOfTheirOwn) {
    StockTable stock;
    for (i32 reagent = 1; reagent <= 13; ++reagent) {
        for (i32 bag = 0; bag <= 9; ++bag) {
            stock(reagent, bag) = static_cast<i16>((reagent - 1) * 10 + bag);
        }
    }
    const StockTable& readOnly = stock;
    for (i32 reagent = 1; reagent <= 13; ++reagent) {
        for (i32 bag = 0; bag <= 9; ++bag) {
            EXPECT_EQ(readOnly(reagent, bag), (reagent - 1) * 10 + bag);
        }
    }
}

TEST(StockTable, SubscriptOutside_Fails) {
    StockTable stock;
    EXPECT_EQ(FailureOf([&] { stock(0, 0); }), kSubscript);
    EXPECT_EQ(FailureOf([&] { stock(14, 0); }), kSubscript);
    EXPECT_EQ(FailureOf([&] { stock(1, -1); }), kSubscript);
    EXPECT_EQ(FailureOf([&] { stock(1, 10); }), kSubscript);
}

TEST(SpellTable, GrowTo_AddsEmptyRowsAndKeepsTheOthers) {
    SpellTable table;
    EXPECT_EQ(table.Last(), -1);
    EXPECT_EQ(FailureOf([&] { table(0); }), kSubscript);
    table.GrowTo(3);
    table(3).Name = "Ward";
    table.GrowTo(96);
    EXPECT_EQ(table.Last(), 96);
    EXPECT_EQ(table(3).Name, "Ward");
    EXPECT_EQ(table(96).Name, "");
    table.GrowTo(5);
    EXPECT_EQ(table.Last(), 96) << "a table never shrinks by growing";
    EXPECT_EQ(FailureOf([&] { table(97); }), kSubscript);
    EXPECT_EQ(FailureOf([&] { table(-1); }), kSubscript);
    table.Clear();
    EXPECT_EQ(table.Last(), -1);
}

TEST(FixedTable, Fill_WritesEveryCell) {
    FixedTable<i16, -1, 3> table;
    EXPECT_EQ(table(-1), 0);
    table.Fill(7);
    for (i32 index = -1; index <= 3; ++index) {
        EXPECT_EQ(table(index), 7);
    }
    FixedTable<i16, -1, 3> other = table;
    EXPECT_EQ(other, table);
    other(3) = 8;
    EXPECT_FALSE(other == table);
}

}  // namespace
}  // namespace spellwick
