#include "practice/spell_costs.h"

#include <algorithm>
#include <array>

namespace spellwick::practice {
namespace {

constexpr std::array<SpellCost, 91> kSpells{{
    {1, "Clumsy", 4, "BM NI", 0},
    {2, "Create Food", 4, "MR GA GI", 0},
    {3, "Feeblemind", 4, "NI GI", 0},
    {4, "Heal", 4, "SS GA GI", 0},
    {5, "Magic Arrow", 4, "SA", 0},
    {6, "Night Sight", 4, "SA SS", 0},
    {7, "Reactive Armor", 4, "SA SS GA", 0},
    {8, "Weaken", 4, "GA NI", 0},
    {9, "Agility", 6, "MR BM", 0},
    {10, "Cunning", 6, "MR NI", 0},
    {11, "Cure", 6, "GA GI", 0},
    {12, "Harm", 6, "SS NI", 0},
    {13, "Magic Trap", 6, "SA SS GA", 0},
    {14, "Magic Untrap", 6, "SA BM", 0},
    {15, "Protection", 6, "SA GA GI", 0},
    {16, "Strength", 6, "MR NI", 0},
    {17, "Bless", 9, "MR GA", 0},
    {18, "Fireball", 9, "BP", 0},
    {19, "Magic Lock", 9, "SA BM GA", 0},
    {20, "Poison", 9, "NI", 0},
    {21, "Telekinesis", 9, "MR BM", 0},
    {22, "Teleport", 9, "MR BM", 0},
    {23, "Unlock", 9, "SA BM", 0},
    {24, "Wall of Stone", 9, "BM GA", 0},
    {25, "Arch Cure", 11, "MR GA GI", 0},
    {26, "Arch Protection", 11, "MR SA GA GI", 0},
    {27, "Curse", 11, "SA GA NI", 0},
    {28, "Fire Field", 11, "SA SS BP", 0},
    {29, "Greater Heal", 11, "MR SS GA GI", 0},
    {30, "Lightning", 11, "MR SA", 0},
    {31, "Mana Drain", 11, "MR SS BP", 0},
    {32, "Recall", 11, "MR BM BP", 0},
    {33, "Blade Spirits", 14, "MR BP NI", 0},
    {34, "Dispel Field", 14, "SA SS GA BP", 0},
    {35, "Incognito", 14, "BM GA NI", 0},
    {36, "Magic Reflection", 14, "MR SS GA", 0},
    {37, "Mind Blast", 14, "MR SA BP NI", 0},
    {38, "Paralyze", 14, "MR SS GA", 0},
    {39, "Poison Field", 14, "SS BP NI", 0},
    {40, "Summon Creature", 14, "MR BM SS", 0},
    {41, "Dispel", 20, "MR SA GA", 0},
    {42, "Energy Bolt", 20, "BP NI", 0},
    {43, "Explosion", 20, "MR BM", 0},
    {44, "Invisibility", 20, "BM NI", 0},
    {45, "Mark", 20, "MR BM BP", 0},
    {46, "Mass Curse", 20, "MR SA GA NI", 0},
    {47, "Paralyze Field", 20, "SS BP GI", 0},
    {48, "Reveal", 20, "SA BM", 0},
    {49, "Chain Lightning", 40, "MR SA BM BP", 0},
    {50, "Energy Field", 40, "MR SA SS BP", 0},
    {51, "Flamestrike", 40, "SA SS", 0},
    {52, "Gate Travel", 40, "MR SA BP", 0},
    {53, "Mana Vampire", 40, "MR BM SS BP", 0},
    {54, "Mass Dispel", 40, "MR SA GA BP", 0},
    {55, "Meteor Swarm", 40, "MR SA BM SS", 0},
    {56, "Polymorph", 40, "MR BM SS", 0},
    {57, "Earthquake", 50, "MR SA BM GI", 0},
    {58, "Energy Vortex", 50, "MR BM BP NI", 0},
    {59, "Resurrection", 50, "BM GA GI", 0},
    {60, "Summon Air Elemental", 50, "MR BM SS", 0},
    {61, "Summon Daemon", 50, "MR SA BM SS", 0},
    {62, "Summon Earth Elemental", 50, "MR BM SS", 0},
    {63, "Summon Fire Elemental", 50, "MR SA BM SS", 0},
    {64, "Summon Water Elemental", 50, "MR BM SS", 0},
    {101, "Animate Dead", 23, "GD DB", 0},
    {102, "Blood Oath", 13, "DB", 0},
    {103, "Corpse Skin", 11, "BW GD", 0},
    {104, "Curse Weapon", 7, "PI", 0},
    {105, "Evil Omen", 11, "BW NC", 0},
    {106, "Horrific Beast", 11, "BW DB", 0},
    {107, "Lich Form", 23, "GD DB NC", 0},
    {108, "Mind Rot", 17, "BW DB PI", 0},
    {109, "Pain Spike", 5, "GD PI", 0},
    {110, "Poison Strike", 17, "NC", 0},
    {111, "Strangle", 29, "DB NC", 0},
    {112, "Summon Familiar", 17, "BW GD DB", 0},
    {113, "Vampiric Embrace", 23, "BW NC PI", 0},
    {114, "Vengeful Spirit", 41, "BW GD PI", 0},
    {115, "Wither", 23, "GD NC PI", 0},
    {116, "Wraith Form", 17, "NC PI", 0},
    {117, "Exorcism", 40, "GD NC", 0},
    {201, "Cleanse by Fire", 10, "", 10},
    {202, "Close Wounds", 10, "", 10},
    {203, "Consecrate Weapon", 10, "", 10},
    {204, "Dispel Evil", 10, "", 10},
    {205, "Divine Fury", 15, "", 10},
    {206, "Enemy of One", 20, "", 10},
    {207, "Holy Light", 10, "", 10},
    {208, "Noble Sacrifice", 20, "", 30},
    {209, "Remove Curse", 20, "", 10},
    {210, "Sacred Journey", 10, "", 15},
}};

}  // namespace

const SpellCost* FindSpell(std::string_view name) {
    const auto* const found = std::ranges::find(kSpells, name, &SpellCost::name);
    return found == kSpells.end() ? nullptr : found;
}

const SpellCost* FindSpell(int number) {
    const auto* const found = std::ranges::find(kSpells, number, &SpellCost::number);
    return found == kSpells.end() ? nullptr : found;
}

std::span<const SpellCost> AllSpells() {
    return kSpells;
}

}  // namespace spellwick::practice
