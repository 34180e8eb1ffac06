#include "practice/macro_table.h"

#include <array>
#include <cstddef>

namespace spellwick::practice {
namespace {

constexpr std::size_t kKeysPerRow = 8;
constexpr Modifiers kAllThree{.ctrl = true, .alt = true, .shift = true};

struct MacroRow {
    Modifiers modifiers;
    std::string_view keys;
    std::array<std::string_view, kKeysPerRow> spells;
};

constexpr std::array<MacroRow, 12> kMacroRows{{
    {{.alt = true},
     "12345678",
     {"Clumsy", "Create Food", "Feeblemind", "Heal", "Magic Arrow", "Night Sight", "Reactive Armor",
      "Weaken"}},
    {{.ctrl = true},
     "12345678",
     {"Agility", "Cunning", "Cure", "Harm", "Magic Trap", "Magic Untrap", "Protection",
      "Strength"}},
    {{.ctrl = true, .alt = true},
     "12345678",
     {"Bless", "Fireball", "Magic Lock", "Poison", "Telekinesis", "Teleport", "Unlock",
      "Wall of Stone"}},
    {{.alt = true, .shift = true},
     "12345678",
     {"Arch Cure", "Arch Protection", "Curse", "Fire Field", "Greater Heal", "Lightning",
      "Mana Drain", "Recall"}},
    {{.ctrl = true, .shift = true},
     "12345678",
     {"Blade Spirits", "Dispel Field", "Incognito", "Magic Reflection", "Mind Blast", "Paralyze",
      "Poison Field", "Summon Creature"}},
    {kAllThree,
     "12345678",
     {"Dispel", "Energy Bolt", "Explosion", "Invisibility", "Mark", "Mass Curse", "Paralyze Field",
      "Reveal"}},
    {kAllThree,
     "QWERTYUI",
     {"Chain Lightning", "Energy Field", "Flamestrike", "Gate Travel", "Mana Vampire",
      "Mass Dispel", "Meteor Swarm", "Polymorph"}},
    {kAllThree,
     "ASDFGHJK",
     {"Earthquake", "Energy Vortex", "Resurrection", "Summon Air Elemental", "Summon Daemon",
      "Summon Earth Elemental", "Summon Fire Elemental", "Summon Water Elemental"}},
    {kAllThree,
     "ZXCVBNM,",
     {"Curse Weapon", "Pain Spike", "Corpse Skin", "Evil Omen", "Blood Oath", "Wraith Form",
      "Mind Rot", "Horrific Beast"}},
    {{.ctrl = true, .alt = true},
     "QWERTYUI",
     {"Animate Dead", "Poison Strike", "Strangle", "Summon Familiar", "Wither", "Lich Form",
      "Vengeful Spirit", "Vampiric Embrace"}},
    {{.ctrl = true, .alt = true},
     "ASDFGHJK",
     {"Cleanse by Fire", "Close Wounds", "Remove Curse", "Consecrate Weapon", "Sacred Journey",
      "Divine Fury", "Dispel Evil", "Enemy of One"}},
    {{.ctrl = true, .alt = true},
     "L;     O",
     {"Holy Light", "Noble Sacrifice", "", "", "", "", "", "Exorcism"}},
}};

}  // namespace

std::string ChordName(Modifiers modifiers, std::string_view key) {
    std::string name;
    if (modifiers.ctrl) {
        name += "Ctrl+";
    }
    if (modifiers.alt) {
        name += "Alt+";
    }
    if (modifiers.shift) {
        name += "Shift+";
    }
    return name.append(key);
}

std::string_view SpellOfChord(Modifiers modifiers, std::string_view key) {
    if (key.size() != 1) {
        return {};
    }
    for (const MacroRow& row : kMacroRows) {
        const std::size_t place = row.keys.find(key);
        if (row.modifiers == modifiers && place != std::string_view::npos) {
            return row.spells.at(place);
        }
    }
    return {};
}

std::string_view MagerySpell(int number) {
    const auto index = static_cast<std::size_t>(number - 1);
    return kMacroRows.at(index / kKeysPerRow).spells.at(index % kKeysPerRow);
}

}  // namespace spellwick::practice
