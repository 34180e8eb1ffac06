// How many casts of a spell the counters or the tithing points allow, and in which colours.
#pragma once

#include <string>
#include <string_view>

#include "model/colours.h"
#include "model/shared_state.h"

namespace spellwick {

// The texts of the thirteen counters as shown.
using CounterTexts = FixedTable<std::string, 1, kReagentCount>;

// Whether a spell is counted by tithing points: circle 11 and above, except for slot 7 (the last)
// of circle 12.
bool CountsInTithes(i32 circle, i32 slot);

// Casts that the tithing points allow; 0 for a spell without a tithing cost.
// RuntimeFailure (overflow) above 32767.
i16 CastableByTithes(const SpellRecord& spell, i32 tithing);

// Casts that the counters allow; 0 for a spell without reagents.
// RuntimeFailure (overflow) above 32767, or for a counter that exceeds 32 bits.
i16 CastableByReagents(const SpellRecord& spell, const CounterTexts& counters);

// Casts of the spell in a slot (0 to 7) of the pressed page (button 0 to 13).
// RuntimeFailure (subscript) if a user page holds a row outside 0 to 96, (overflow) as above.
i16 CastableAmount(const SharedState& state, i32 pressedButton, i32 slot,
                   const CounterTexts& counters);

// Ground of an amount: green above regYellow, the warning colour from 1 to it, else red.
Colour AmountColour(i16 amount, i16 regYellow, Colour colorWarn);

// Ground of a counter while the mouse is over a spell that needs `need` of it.
// RuntimeFailure (overflow) for a counter that exceeds 32 bits.
Colour CounterHighlight(i32 need, std::string_view counter, Colour colorWarn);

// Ground of the tithing points likewise.
Colour TithesHighlight(i32 need, std::string_view tithes, Colour colorWarn);

}  // namespace spellwick
