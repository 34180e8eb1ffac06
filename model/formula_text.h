// Texts with markers: "#Formula", two digits and one more character stand for a figure.
#pragma once

#include <string>
#include <string_view>

#include "model/formulas.h"

namespace spellwick {

// Removes the blanks at both ends of a text.
std::string_view TrimBlanks(std::string_view text);

// The text with every marker replaced by its trimmed figure; trimmed itself if there was a marker.
// The character after the two digits is part of the marker, whatever it is. RuntimeFailure
// (subscript) for a number outside 1 to 40. No figure may contain a marker itself.
std::string ExpandFormulas(std::string_view text, const FormulaTexts& figures);

}  // namespace spellwick
