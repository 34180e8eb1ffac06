// Chances of success from skill bands, intelligence and mana.
#pragma once

#include "model/shared_state.h"

namespace spellwick {

// Chance in percent, 0 to 99: 0 up to `minimum`, 99 above `maximum`, a straight line between.
// RuntimeFailure (overflow) when a difference exceeds an i16.
i16 BaseChance(i16 skill, i16 minimum, i16 maximum);

// Fills Chance and SkillChance of rows 0 to 95; row 96 is left alone.
void CalculateChances(SharedState& state);

}  // namespace spellwick
