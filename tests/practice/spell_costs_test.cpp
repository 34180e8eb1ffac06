// The tool's costs must be those of the spell table that comes with Spellwick, under the numbers
// that Spellwick expects.
#include "practice/spell_costs.h"

#include <array>
#include <set>
#include <string>

#include <gtest/gtest.h>

#include "link/assist_dispatcher.h"
#include "model/spell_data.h"
#include "practice/macro_table.h"

namespace spellwick::practice {
namespace {

constexpr std::array<const char*, 13> kCodes{"MR", "SA", "BM", "SS", "GA", "BP", "NI",
                                             "GI", "BW", "GD", "DB", "NC", "PI"};

TEST(SpellCosts, EverySpell_CostsWhatTheSpellFileSays) {
    SharedState state;
    ASSERT_TRUE(LoadSpellData(state, std::filesystem::path(SPELLWICK_SPELL_DATA)));
    std::set<int> numbers;
    for (const SpellCost& spell : AllSpells()) {
        SCOPED_TRACE(spell.name);
        numbers.insert(spell.number);
        const i32 row =
            spell.number <= 64 ? spell.number - 1 : MapSpellNumber(spell.number).value_or(-1);
        ASSERT_GE(row, 0);
        const SpellRecord& record = state.Spells(row);
        EXPECT_EQ(record.Name, spell.name);
        EXPECT_EQ(record.Mana, spell.mana);
        std::string reagents;
        for (std::size_t code = 0; code < kCodes.size(); ++code) {
            if (record.Reagents(static_cast<i32>(code) + 1) != 0) {
                reagents += (reagents.empty() ? "" : " ") + std::string(kCodes.at(code));
            }
        }
        EXPECT_EQ(reagents, spell.reagents);
        EXPECT_EQ(record.Reagents(kTithes), spell.tithing);
    }
    EXPECT_EQ(numbers.size(), 64U + 17U + 10U);
    EXPECT_EQ(*numbers.rbegin(), 210);
}

TEST(SpellCosts, EveryMacroOfTheGame_IsASpellOfTheTool) {
    int macros = 0;
    for (unsigned held = 0; held < 8; ++held) {
        const Modifiers modifiers{(held & 1U) != 0, (held & 2U) != 0, (held & 4U) != 0};
        for (const char key : std::string("12345678QWERTYUIASDFGHJKZXCVBNM,;LO")) {
            const std::string_view spell = SpellOfChord(modifiers, std::string(1, key));
            if (!spell.empty()) {
                ++macros;
                EXPECT_NE(FindSpell(spell), nullptr) << spell;
            }
        }
    }
    EXPECT_EQ(macros, 91);
}

TEST(FindSpell, UnknownNamesAndNumbers_GiveNothing) {
    EXPECT_EQ(FindSpell("heal"), nullptr);
    EXPECT_EQ(FindSpell(""), nullptr);
    for (const int number : {-1, 0, 65, 100, 118, 200, 211, 250}) {
        EXPECT_EQ(FindSpell(number), nullptr) << number;
    }
    ASSERT_NE(FindSpell(4), nullptr);
    EXPECT_EQ(FindSpell(4), FindSpell("Heal"));
}

}  // namespace
}  // namespace spellwick::practice
