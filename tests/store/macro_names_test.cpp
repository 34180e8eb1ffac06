// The names that clients have for spells, and what the load of a classic client's text tells.
#include "store/macro_names.h"

#include <map>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "model/spell_data.h"
#include "store/macro_file.h"
#include "tests/store/macro_table_tools.h"
#include "tests/support/failures.h"

namespace spellwick {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// The delivered spell table, with the key "-" for each spell.
SharedState ShippedState() {
    SharedState state;
    EXPECT_TRUE(LoadSpellData(state, SPELLWICK_SPELL_DATA));
    for (i32 number = kMeditationMacro; number <= kLastMacro; ++number) {
        SetMacro(state, number, {.key = "-"});
    }
    return state;
}

std::string Block(std::string_view action, std::string_view name) {
    return std::string("q 1 0 0\r\n").append(action).append(" ").append(name) + "\r\n########\r\n";
}

TEST(MacroNames, FileWithTheClientsOwnNames_Gives91Of91) {
    const std::map<std::string, std::string, std::less<>> theirs{
        {"Wall of Stone", "Wall Of Stone"},
        {"Dispel Field", "Dispell Field"},
        {"Flamestrike", "Flame Strike"},
        {"Summon Air Elemental", "Air Elemental"},
        {"Summon Earth Elemental", "Earth Elemental"},
        {"Summon Fire Elemental", "Fire Elemental"},
        {"Summon Water Elemental", "Water Elemental"},
        {"Summon Familiar", "Summon Familar"},
        {"Cleanse by Fire", "Cleanse By Fire"},
        {"Consecrate Weapon", "Concentrate Weapon"},
        {"Enemy of One", "Enemy Of One"},
    };
    SharedState state = ShippedState();
    std::string text;
    std::size_t named = 0;
    for (i32 row = 0; row < kLastRow; ++row) {
        const std::string& name = state.Spells(row).Name;
        if (!name.empty()) {
            const auto own = theirs.find(name);
            named += own != theirs.end() ? 1U : 0U;
            text += Block("+CastSpell", own != theirs.end() ? own->second : name);
        }
    }
    ASSERT_EQ(named, theirs.size());
    MacroLoad load;
    MergeMacroText(text, state, load);
    EXPECT_EQ(load.taken.size(), 91U);
    EXPECT_THAT(load.left, IsEmpty());
    EXPECT_FALSE(load.isCutShort);
    for (const i32 number : load.taken) {
        EXPECT_EQ(MacroOf(state, number), (Macro{.ctrl = true, .key = "q"})) << number;
    }
}

TEST(MacroNames, EveryOtherName_IsThatOfItsRow) {
    const struct {
        const char* name;
        i32 row;
    } rows[] = {
        {"Flame Strike", 50},   {"Flamestrike", 50},     {"Wall Of Stone", 23},
        {"Dispell Field", 33},  {"Air Elemental", 59},   {"Earth Elemental", 61},
        {"Fire Elemental", 62}, {"Water Elemental", 63}, {"Summ. Creature", 39},
        {"Summon Familar", 75}, {"Cleanse By Fire", 80}, {"Concentrate Weapon", 83},
        {"Enemy Of One", 87},   {"Reflection", 35},      {"Blade Spirit", 32},
        {"Gate", 51},           {"Meteor Shower", 54},   {"Telekenisis", 20},
        {"Remove Trap", 13},    {"Unlock Spell", 22},    {"Clumsy", 0},
    };
    for (const auto& row : rows) {
        SharedState state = ShippedState();
        MacroLoad load;
        MergeMacroText(Block("CastSpell", row.name), state, load);
        EXPECT_THAT(load.taken, ElementsAre(row.row + 1)) << row.name;
        EXPECT_EQ(MacroOfRow(state, row.row).key, "q") << row.name;
    }
}

// covers ODDITY(macro-exact-name)
TEST(MacroNames, Oddity_ANameThatIsNeither_KeepsItsKeyAndIsTold) {
    for (const char* name : {"flame strike", "Flame Strike ", "FLAMESTRIKE", "Flame", "Gates"}) {
        SharedState state = ShippedState();
        MacroLoad load;
        MergeMacroText(Block("CastSpell", name), state, load);
        EXPECT_THAT(load.taken, IsEmpty()) << name;
        EXPECT_THAT(load.left, ElementsAre(LeftMacro{LeftReason::kUnknownSpell, name}));
        EXPECT_EQ(MacroOfRow(state, 50).key, "-") << name;
    }
}

TEST(MacroNames, ANameOfTheTable_CountsBeforeThatOfAClient) {
    SharedState state = MacroState();
    state.Spells(10).Name = "Gate";
    state.Spells(11).Name = "Gate Travel";
    MergeMacroText(Block("CastSpell", "Gate"), state);
    EXPECT_EQ(MacroOfRow(state, 10).key, "q");
    EXPECT_EQ(MacroOfRow(state, 11).key, "-");
}

TEST(MacroNames, PlusBeforeTheAction_OnlyOneAndOnlyThere) {
    SharedState state = MacroState();
    MergeMacroText(
        "q 0 0 0\r\n+CastSpell Spell 1\r\n++CastSpell Spell 2\r\n+ CastSpell Spell 3\r\n"
        "CastSpell +Spell 4\r\n-CastSpell Spell 5\r\n",
        state);
    EXPECT_EQ(MacroOfRow(state, 1).key, "q");
    for (const i32 row : {2, 3, 4, 5}) {
        EXPECT_EQ(MacroOfRow(state, row).key, "-") << row;
    }
}

TEST(MacroNames, NamelessSpell_CutsTheLoadShortAndCountsNothing) {
    SharedState state = ShippedState();
    MacroLoad load;
    EXPECT_EQ(FailureOf([&] {
                  MergeMacroText(Block("CastSpell", "Clumsy") + "CastSpell\r\n", state, load);
              }),
              FailureKind::kSubscript);
    EXPECT_THAT(load.taken, ElementsAre(1));
    EXPECT_TRUE(load.isCutShort);
}

}  // namespace
}  // namespace spellwick
