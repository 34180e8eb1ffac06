#include "practice/macro_table.h"

#include <map>
#include <string>

#include <gtest/gtest.h>

namespace spellwick::practice {
namespace {

const std::map<std::string, std::string> kSpellOfChord{
    {"Alt+1", "Clumsy"},
    {"Alt+2", "Create Food"},
    {"Alt+3", "Feeblemind"},
    {"Alt+4", "Heal"},
    {"Alt+5", "Magic Arrow"},
    {"Alt+6", "Night Sight"},
    {"Alt+7", "Reactive Armor"},
    {"Alt+8", "Weaken"},
    {"Ctrl+1", "Agility"},
    {"Ctrl+2", "Cunning"},
    {"Ctrl+3", "Cure"},
    {"Ctrl+4", "Harm"},
    {"Ctrl+5", "Magic Trap"},
    {"Ctrl+6", "Magic Untrap"},
    {"Ctrl+7", "Protection"},
    {"Ctrl+8", "Strength"},
    {"Ctrl+Alt+1", "Bless"},
    {"Ctrl+Alt+2", "Fireball"},
    {"Ctrl+Alt+3", "Magic Lock"},
    {"Ctrl+Alt+4", "Poison"},
    {"Ctrl+Alt+5", "Telekinesis"},
    {"Ctrl+Alt+6", "Teleport"},
    {"Ctrl+Alt+7", "Unlock"},
    {"Ctrl+Alt+8", "Wall of Stone"},
    {"Alt+Shift+1", "Arch Cure"},
    {"Alt+Shift+2", "Arch Protection"},
    {"Alt+Shift+3", "Curse"},
    {"Alt+Shift+4", "Fire Field"},
    {"Alt+Shift+5", "Greater Heal"},
    {"Alt+Shift+6", "Lightning"},
    {"Alt+Shift+7", "Mana Drain"},
    {"Alt+Shift+8", "Recall"},
    {"Ctrl+Shift+1", "Blade Spirits"},
    {"Ctrl+Shift+2", "Dispel Field"},
    {"Ctrl+Shift+3", "Incognito"},
    {"Ctrl+Shift+4", "Magic Reflection"},
    {"Ctrl+Shift+5", "Mind Blast"},
    {"Ctrl+Shift+6", "Paralyze"},
    {"Ctrl+Shift+7", "Poison Field"},
    {"Ctrl+Shift+8", "Summon Creature"},
    {"Ctrl+Alt+Shift+1", "Dispel"},
    {"Ctrl+Alt+Shift+2", "Energy Bolt"},
    {"Ctrl+Alt+Shift+3", "Explosion"},
    {"Ctrl+Alt+Shift+4", "Invisibility"},
    {"Ctrl+Alt+Shift+5", "Mark"},
    {"Ctrl+Alt+Shift+6", "Mass Curse"},
    {"Ctrl+Alt+Shift+7", "Paralyze Field"},
    {"Ctrl+Alt+Shift+8", "Reveal"},
    {"Ctrl+Alt+Shift+Q", "Chain Lightning"},
    {"Ctrl+Alt+Shift+W", "Energy Field"},
    {"Ctrl+Alt+Shift+E", "Flamestrike"},
    {"Ctrl+Alt+Shift+R", "Gate Travel"},
    {"Ctrl+Alt+Shift+T", "Mana Vampire"},
    {"Ctrl+Alt+Shift+Y", "Mass Dispel"},
    {"Ctrl+Alt+Shift+U", "Meteor Swarm"},
    {"Ctrl+Alt+Shift+I", "Polymorph"},
    {"Ctrl+Alt+Shift+A", "Earthquake"},
    {"Ctrl+Alt+Shift+S", "Energy Vortex"},
    {"Ctrl+Alt+Shift+D", "Resurrection"},
    {"Ctrl+Alt+Shift+F", "Summon Air Elemental"},
    {"Ctrl+Alt+Shift+G", "Summon Daemon"},
    {"Ctrl+Alt+Shift+H", "Summon Earth Elemental"},
    {"Ctrl+Alt+Shift+J", "Summon Fire Elemental"},
    {"Ctrl+Alt+Shift+K", "Summon Water Elemental"},
    {"Ctrl+Alt+Shift+Z", "Curse Weapon"},
    {"Ctrl+Alt+Shift+X", "Pain Spike"},
    {"Ctrl+Alt+Shift+C", "Corpse Skin"},
    {"Ctrl+Alt+Shift+V", "Evil Omen"},
    {"Ctrl+Alt+Shift+B", "Blood Oath"},
    {"Ctrl+Alt+Shift+N", "Wraith Form"},
    {"Ctrl+Alt+Shift+M", "Mind Rot"},
    {"Ctrl+Alt+Shift+,", "Horrific Beast"},
    {"Ctrl+Alt+Q", "Animate Dead"},
    {"Ctrl+Alt+W", "Poison Strike"},
    {"Ctrl+Alt+E", "Strangle"},
    {"Ctrl+Alt+R", "Summon Familiar"},
    {"Ctrl+Alt+T", "Wither"},
    {"Ctrl+Alt+Y", "Lich Form"},
    {"Ctrl+Alt+U", "Vengeful Spirit"},
    {"Ctrl+Alt+I", "Vampiric Embrace"},
    {"Ctrl+Alt+A", "Cleanse by Fire"},
    {"Ctrl+Alt+S", "Close Wounds"},
    {"Ctrl+Alt+D", "Remove Curse"},
    {"Ctrl+Alt+F", "Consecrate Weapon"},
    {"Ctrl+Alt+G", "Sacred Journey"},
    {"Ctrl+Alt+H", "Divine Fury"},
    {"Ctrl+Alt+J", "Dispel Evil"},
    {"Ctrl+Alt+K", "Enemy of One"},
    {"Ctrl+Alt+L", "Holy Light"},
    {"Ctrl+Alt+;", "Noble Sacrifice"},
    {"Ctrl+Alt+O", "Exorcism"},
};

TEST(SpellOfChord, EveryChord_CastsItsSpellAndNoOther) {
    const std::string keys = "1234567890QWERTYUIOPASDFGHJKLZXCVBNM,.;-= ";
    std::size_t known = 0;
    for (unsigned held = 0; held < 8; ++held) {
        const Modifiers modifiers{(held & 1U) != 0, (held & 2U) != 0, (held & 4U) != 0};
        for (const char key : keys) {
            const std::string chord = ChordName(modifiers, std::string(1, key));
            const auto expected = kSpellOfChord.find(chord);
            const std::string spell = expected == kSpellOfChord.end() ? "" : expected->second;
            EXPECT_EQ(SpellOfChord(modifiers, std::string(1, key)), spell) << chord;
            known += spell.empty() ? 0U : 1U;
        }
    }
    EXPECT_EQ(known, kSpellOfChord.size());
}

TEST(SpellOfChord, KeysOfMoreThanOneCharacter_CastNothing) {
    EXPECT_EQ(SpellOfChord({.alt = true}, "F1"), "");
    EXPECT_EQ(SpellOfChord({.alt = true}, "12"), "");
    EXPECT_EQ(SpellOfChord({.alt = true}, ""), "");
}

}  // namespace
}  // namespace spellwick::practice
