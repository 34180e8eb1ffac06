// A spell table of names alone.
#pragma once

#include <string>

#include "model/shared_state.h"

namespace spellwick {

// Rows 0 to 96 become "Spell 0" to "Spell 96".
inline void NameSpells(SharedState& state) {
    state.Spells.GrowTo(104);
    for (i32 row = 0; row <= kLastRow; ++row) {
        state.Spells(row).Name = "Spell " + std::to_string(row);
    }
}

}  // namespace spellwick
