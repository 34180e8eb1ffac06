// The text forms of values in the settings store, beyond the plain and standard number forms.
// Reading throws RuntimeFailure: type mismatch for a text that is not such a value, overflow for a
// number that does not fit.
#pragma once

#include <string>
#include <string_view>

#include "text/number_types.h"

namespace spellwick {

// "True" or "False".
std::string BoolText(bool value);
// The two words in any case, or a number; 0 is false.
bool ReadBool(std::string_view text);

// Decimal text of a position in twips, without an exponent.
std::string FloatText(float value);
float ReadFloat(std::string_view text);

i16 ReadI16(std::string_view text);
i32 ReadI32(std::string_view text);
unsigned char ReadByte(std::string_view text);

// Stock and tithing points: a text that does not start with a number is 0.
i16 ReadStock(std::string_view text);
i32 ReadTithing(std::string_view text);

}  // namespace spellwick
