// What each spell of the game costs, with its name in the practice game and the number under which
// an assist tool reports it.
#pragma once

#include <span>
#include <string_view>

namespace spellwick::practice {

struct SpellCost {
    int number;  // 1 to 64, 101 to 117, 201 to 210
    std::string_view name;
    int mana;
    // Codes of the reagents, one of each, separated by blanks.
    std::string_view reagents;
    int tithing;
};

// Null if no spell has it.
const SpellCost* FindSpell(std::string_view name);
const SpellCost* FindSpell(int number);

std::span<const SpellCost> AllSpells();

}  // namespace spellwick::practice
