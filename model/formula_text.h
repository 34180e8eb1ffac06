// Texts with markers: "#Formula", two digits and one more character stand for a figure.
#pragma once

#include <string>
#include <string_view>

#include "model/formulas.h"

namespace spellwick {

// A text without the blanks at its ends.
std::string_view TrimBlanks(std::string_view text);

// The text with every marker replaced by its trimmed figure; trimmed if there was a marker. The
// character behind the two digits goes with the marker, whatever it is.
// RuntimeFailure (subscript) for a number outside 1 to 40. No figure may hold a marker itself.
std::string ExpandFormulas(std::string_view text, const FormulaTexts& figures);

}  // namespace spellwick
