// The figures that a spell's texts can refer to by number.
#pragma once

#include <string>

#include "model/caster_values.h"
#include "model/fixed_table.h"

namespace spellwick {

inline constexpr i32 kFormulaCount = 33;

// Texts by number; the cells after the last figure stay empty.
using FormulaTexts = FixedTable<std::string, 1, 40>;

// 1 for Magery 1 to 99, 2 from 100 on.
double MageryTier(i16 magery);

// The factor by which the damage of a spell grows or shrinks.
float DamageFactor(i16 evalInt, i16 targetResist);

// All figures for a spell of a circle (1 to 13), in the standard number form.
// RuntimeFailure (overflow) if a figure that is kept in 16 bits does not fit.
FormulaTexts BuildFormulaTexts(const CasterValues& values, i32 circle);

}  // namespace spellwick
