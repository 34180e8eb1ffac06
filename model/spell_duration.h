// How long a spell lasts, by the rule in the last value of its row.
#pragma once

#include "model/caster_values.h"

namespace spellwick {

// Whole seconds, rounded down; 0 for rule 0, for a rule that does not exist, and for a result that
// is not positive. RuntimeFailure (overflow) beyond 32767.
i16 SpellDuration(i16 rule, const CasterValues& values);

}  // namespace spellwick
