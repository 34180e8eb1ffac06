// The digit strings that hold the amounts of a spell: one place for each reagent, two for the
// tithing points.
#pragma once

#include <string>
#include <string_view>

#include "model/spell_record.h"

namespace spellwick {

using ReagentAmounts = decltype(SpellRecord::Reagents);

// Fifteen digits. Each amount is written whole at its own place, so the next amount overwrites the
// second digit of an amount over 9.
std::string DigitString(const ReagentAmounts& amounts);

// The text that stands for amounts that were never saved: sixteen digits, the first digit of each.
std::string UnsavedDigitString(const ReagentAmounts& amounts);

// Reads places 1 to 13 and the pair at 14 and 15 into the amounts. RuntimeFailure (type mismatch)
// at the first place without a number; the amounts before it are stored.
void ReadDigitString(std::string_view text, ReagentAmounts& amounts);

}  // namespace spellwick
