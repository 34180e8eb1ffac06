// The shipped spell table, fact by fact.
#include <algorithm>
#include <map>
#include <set>

#include <gtest/gtest.h>

#include "model/spell_data.h"
#include "model/spell_lookup.h"
#include "tests/model/shipped_spell_rows.h"
#include "tests/support/file_bytes.h"

namespace spellwick {
namespace {

const SharedState& Shipped() {
    static const SharedState kState = [] {
        SharedState state;
        EXPECT_TRUE(LoadSpellData(state, std::filesystem::path(SPELLWICK_SPELL_DATA)));
        return state;
    }();
    return kState;
}

std::string ReagentsOf(const SpellRecord& spell) {
    std::string codes;
    for (i32 reagent = 1; reagent <= 13; ++reagent) {
        for (int left = spell.Reagents(reagent); left > 0; --left) {
            codes += (codes.empty() ? "" : " ") + std::string(FactsOfReagent(reagent).code);
        }
    }
    return codes;
}

TEST(ShippedSpells, Count_Is96AndTheTableReaches104) {
    EXPECT_EQ(Shipped().SpellCount, 96);
    EXPECT_EQ(Shipped().Spells.Last(), 104);
    EXPECT_EQ(std::size(kRows), 96U);
    for (i32 row = 96; row <= 104; ++row) {
        EXPECT_EQ(Shipped().Spells(row).Name, "");
    }
}

TEST(ShippedSpells, EveryRow_HoldsItsFacts) {
    i32 at = 0;
    for (const ShippedRow& row : kRows) {
        SCOPED_TRACE(std::to_string(row.row) + " " + row.name);
        const SpellRecord& spell = Shipped().Spells(row.row);
        EXPECT_EQ(row.row, at++);
        EXPECT_EQ(spell.Number, row.row + 1);
        EXPECT_EQ(spell.Name, row.name);
        EXPECT_EQ(spell.School, row.school);
        EXPECT_EQ(spell.Mana, row.mana);
        EXPECT_EQ(spell.MinimumSkill, row.minimum);
        EXPECT_EQ(spell.MaximumSkill, row.maximum);
        EXPECT_EQ(ReagentsOf(spell), row.reagents);
        EXPECT_EQ(spell.Reagents(14), row.tithes);
        EXPECT_EQ(spell.Words, row.words);
        EXPECT_EQ(spell.InTown, row.inTown);
        EXPECT_EQ(spell.File5, row.rule);
        EXPECT_EQ(spell.DamageText, row.damage);
        EXPECT_EQ(spell.DurationText, row.duration);
        EXPECT_EQ(spell.ExtraText1, row.extra);
        EXPECT_EQ(spell.ExtraText2, row.resisting);
        EXPECT_EQ(spell.SecondSkill, row.school) << "each school has its second skill";
        EXPECT_EQ(spell.File1, 0);
        EXPECT_EQ(spell.File2, 0);
        EXPECT_EQ(spell.File3, 0);
        EXPECT_EQ(spell.File4, "none");
        for (i32 reagent = 1; reagent <= 14; ++reagent) {
            EXPECT_EQ(spell.ReagentInput(reagent), spell.Reagents(reagent));
        }
    }
}

TEST(ShippedSpells, Pages_HoldTheirSchools) {
    const struct {
        i32 first;
        i32 last;
        i32 school;
    } ranges[] = {{0, 63, kMagery},
                  {64, 79, kNecromancer},
                  {80, 89, kChivalry},
                  {90, 94, kNoSchool},
                  {95, 95, kNecromancer}};
    for (const auto& range : ranges) {
        for (i32 row = range.first; row <= range.last; ++row) {
            EXPECT_EQ(Shipped().Spells(row).School, range.school) << row;
        }
    }
}

TEST(ShippedSpells, Gaps_HaveNoNameAndNoAmounts) {
    for (i32 row = 90; row <= 94; ++row) {
        const SpellRecord& gap = Shipped().Spells(row);
        EXPECT_EQ(gap.Name, "") << row;
        EXPECT_EQ(gap.School, kNoSchool) << row;
        EXPECT_EQ(gap.InTown, 1) << row << ": not marked as forbidden in town";
        EXPECT_EQ(gap.Words + gap.DamageText + gap.DurationText + gap.ExtraText1 + gap.ExtraText2,
                  "")
            << row;
        EXPECT_EQ(gap.Mana + gap.MinimumSkill + gap.MaximumSkill, 0) << row;
        for (i32 reagent = 1; reagent <= 14; ++reagent) {
            EXPECT_EQ(gap.Reagents(reagent), 0) << row;
        }
    }
}

// A cast costs reagents on pages that are counted by reagents, and tithes on the others.
TEST(ShippedSpells, Costs_FitTheirPages) {
    for (i32 row = 0; row <= 95; ++row) {
        const SpellRecord& spell = Shipped().Spells(row);
        if (spell.Name.empty()) {
            continue;
        }
        const bool tithes = row >= 80 && row != 95;
        EXPECT_EQ(spell.Reagents(14) > 0, tithes) << spell.Name;
        EXPECT_EQ(ReagentsOf(spell).empty(), tithes) << spell.Name;
    }
}

TEST(ShippedSpells, Names_AreTheirOwn) {
    std::set<std::string> names;
    for (i32 row = 0; row <= 95; ++row) {
        const std::string& name = Shipped().Spells(row).Name;
        EXPECT_TRUE(name.empty() || names.insert(name).second) << name;
    }
    EXPECT_EQ(names.size(), 91U);
}

// A rule and its rows.
TEST(ShippedSpells, DurationRules_HoldForTheirRows) {
    const std::map<i16, std::vector<i32>> expected = {
        {1, {0, 2, 7, 8, 9, 15, 16, 26, 43, 45}},
        {2, {25, 34}},
        {3, {14}},
        {4, {55}},
        {5, {39, 59, 60, 61, 62, 63}},
        {6, {27}},
        {7, {37}},
        {8, {38}},
        {9, {46}},
        {10, {49}},
        {11, {23, 65}},
        {12, {51}},
        {13, {57}},
        {14, {32}},
        {15, {5}},
        {16, {64}},
        {17, {66}},
        {18, {68}},
        {19, {70}},
        {20, {74}},
        {21, {78}},
        {22, {83}},
        {23, {85}},
        {24, {87}},
    };
    std::map<i16, std::vector<i32>> found;
    for (i32 row = 0; row <= 95; ++row) {
        if (const i16 rule = Shipped().Spells(row).File5; rule != 0) {
            found[rule].push_back(row);
        }
    }
    EXPECT_EQ(found, expected);
}

// A marker takes two digits and one more character; only defined figures may be used.
TEST(ShippedSpells, FormulaMarkers_AreWellFormed) {
    const std::string mark = "#Formula";
    const std::set<std::string> open = {"01", "04", "07", "10", "13", "22"};
    std::set<std::string> used;
    for (i32 row = 0; row <= 95; ++row) {
        const SpellRecord& spell = Shipped().Spells(row);
        for (const std::string& text :
             {spell.DamageText, spell.DurationText, spell.ExtraText1, spell.ExtraText2}) {
            for (std::size_t at = text.find(mark); at != std::string::npos;
                 at = text.find(mark, at + 1)) {
                const std::string number = text.substr(at + mark.size(), 2);
                ASSERT_EQ(number.size(), 2U) << text;
                EXPECT_TRUE(number >= "01" && number <= "33") << text;
                EXPECT_FALSE(open.contains(number)) << text;
                EXPECT_TRUE(number != "31" || spell.School == kMagery) << spell.Name;
                const std::string swallowed = text.substr(at + mark.size() + 2, 1);
                EXPECT_TRUE(swallowed.empty() || swallowed == ";") << text;
                used.insert(number);
            }
        }
    }
    EXPECT_EQ(used.size(), 33U - open.size());
}

TEST(ShippedSpells, File_IsPlainTextThatSurvivesAnyEditor) {
    const std::string text = BytesOf(SPELLWICK_SPELL_DATA);
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 97) << "a title and one line for a row";
    EXPECT_TRUE(std::all_of(text.begin(), text.end(),
                            [](char c) { return c == '\n' || (c >= ' ' && c <= '~'); }));
    EXPECT_EQ(text.find(" \n"), std::string::npos) << "a blank at the end of a line";
}

}  // namespace
}  // namespace spellwick
