// What is told about a spell of the page beside its picture: in its tooltip, by screen readers, and
// about what Undo has given back.
#pragma once

#include <string>

#include "companion/screen.h"
#include "model/shared_state.h"

namespace spellwick {

// Name, words, mana, what a cast takes of what the screen shows, key, chance and duration of the
// spell in a slot, 0 to 7, a line each; lines with nothing to tell are left out. Empty for a slot
// without a spell.
std::string SpellTip(const SharedState& state, const Screen& screen, i32 slot);

// Name, casts that the stock allows and chance in one line; "No spell" for a slot without one.
std::string SpokenSpell(const SharedState& state, const Screen& screen, i32 slot);

// "back: 1 Mandrake Root, 1 Black Pearl" for what the last debit took.
std::string GivenBack(const SharedState& state, const FixedTable<i16, 1, kTithes>& amounts);

}  // namespace spellwick
