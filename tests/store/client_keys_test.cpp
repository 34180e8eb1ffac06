// Keys and actions of the clients with a macros.xml.
#include "store/client_keys.h"

#include <set>

#include <gtest/gtest.h>

#include "model/shared_state.h"
#include "model/spell_data.h"

namespace spellwick {
namespace {

TEST(ClientKeys, Characters_AndFunctionKeys_BothWays) {
    const struct {
        i32 code;
        const char* key;
    } rows[] = {
        {54, "6"},
        {97, "a"},
        {122, "z"},
        {44, ","},
        {59, ";"},
        {32, " "},
        {39, "'"},
        {125, "}"},
        {96, "`"},
        {126, "~"},
        {40, "("},
        {233, "\u00e9"},
        {0x44f, "\u044f"},
        {0x20ac, "\u20ac"},
        {1073741882, "{F1}"},
        {1073741890, "{F9}"},
        {1073741891, "{F10}"},
        {1073741893, "{F12}"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(MacroKeyOfCode(row.code), row.key) << row.code;
        EXPECT_EQ(CodeOfMacroKey(row.key), row.code) << row.key;
    }
    EXPECT_EQ(CodeOfMacroKey("Q"), 113) << "capitals are typed as small letters";
    EXPECT_EQ(CodeOfMacroKey("\u00c9"), 233);
}

TEST(ClientKeys, WhatTheTablesCannotHold_IsNoKeyAndHasAName) {
    const struct {
        i32 code;
        const char* name;
    } rows[] = {
        {8, "Backspace"},
        {9, "Tab"},
        {13, "Enter"},
        {27, "Escape"},
        {127, "Delete"},
        {43, "+"},
        {94, "^"},
        {37, "%"},
        {123, "{"},
        {81, "Q"},
        {1073741899, "Page Up"},
        {1073741913, "Keypad 1"},
        {1073741921, "Keypad 9"},
        {1073741922, "Keypad 0"},
        {1073741928, "F13"},
        {1073741939, "F24"},
        {1073741881, "Caps Lock"},
        {0, "0"},
        {-5, "-5"},
        {0xd800, "55296"},
        {0x110000, "1114112"},
        {0x85, "133"},
        {2147483647, "2147483647"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(MacroKeyOfCode(row.code), std::nullopt) << row.code;
        EXPECT_EQ(NameOfCode(row.code), row.name) << row.code;
    }
    for (const char* key : {"", "AA", "{F13}", "{f1}", "F1", "+", "%", "^", "{", "ab"}) {
        EXPECT_EQ(CodeOfMacroKey(key), std::nullopt) << key;
    }
}

TEST(ClientActions, EachSpellOfTheDeliveredTable_HasItsOwn) {
    SharedState state;
    ASSERT_TRUE(LoadSpellData(state, SPELLWICK_SPELL_DATA));
    std::set<i32> subcodes;
    for (i32 row = 0; row < kLastRow; ++row) {
        const auto action = ActionOfMacro(row + 1);
        EXPECT_EQ(action.has_value(), !state.Spells(row).Name.empty()) << row;
        if (action) {
            EXPECT_EQ(action->code, 15);
            EXPECT_EQ(MacroOfAction(*action), row + 1);
            subcodes.insert(action->subcode);
        }
    }
    EXPECT_EQ(subcodes.size(), 91U);
    EXPECT_EQ(*subcodes.begin(), 62);
    EXPECT_EQ(*subcodes.rbegin(), 152);
}

TEST(ClientActions, SpellsOfTheBooks_InTheirOrder) {
    SharedState state;
    ASSERT_TRUE(LoadSpellData(state, SPELLWICK_SPELL_DATA));
    const struct {
        i32 subcode;
        const char* spell;
    } rows[] = {
        {62, "Clumsy"},
        {91, "Lightning"},
        {125, "Summon Water Elemental"},
        {126, "Animate Dead"},
        {127, "Blood Oath"},
        {128, "Corpse Skin"},
        {129, "Curse Weapon"},
        {130, "Evil Omen"},
        {131, "Horrific Beast"},
        {132, "Lich Form"},
        {133, "Mind Rot"},
        {134, "Pain Spike"},
        {135, "Poison Strike"},
        {136, "Strangle"},
        {137, "Summon Familiar"},
        {138, "Vampiric Embrace"},
        {139, "Vengeful Spirit"},
        {140, "Wither"},
        {141, "Wraith Form"},
        {142, "Exorcism"},
        {143, "Cleanse by Fire"},
        {144, "Close Wounds"},
        {145, "Consecrate Weapon"},
        {146, "Dispel Evil"},
        {147, "Divine Fury"},
        {148, "Enemy of One"},
        {149, "Holy Light"},
        {150, "Noble Sacrifice"},
        {151, "Remove Curse"},
        {152, "Sacred Journey"},
    };
    for (const auto& row : rows) {
        const auto number = MacroOfAction({15, row.subcode});
        ASSERT_TRUE(number.has_value()) << row.spell;
        EXPECT_EQ(state.Spells(*number - 1).Name, row.spell);
    }
}

TEST(ClientActions, Meditation_AndWhatIsNeither) {
    EXPECT_EQ(MacroOfAction({13, 47}), -1);
    EXPECT_EQ(ActionOfMacro(-1), (ClientAction{13, 47}));
    for (const ClientAction& action : {ClientAction{15, 61},
                                       {15, 153},
                                       {15, 0},
                                       {15, -1},
                                       {15, 47},
                                       {13, 46},
                                       {13, 62},
                                       {1, 62},
                                       {0, 0},
                                       {15, 2147483647}}) {
        EXPECT_EQ(MacroOfAction(action), std::nullopt) << action.code << " " << action.subcode;
    }
    for (const i32 number : {-2, 0, 91, 95, 97}) {
        EXPECT_EQ(ActionOfMacro(number), std::nullopt) << number;
    }
}

}  // namespace
}  // namespace spellwick
