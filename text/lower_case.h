// Lower case for keys and their names, independent of the locale.
#pragma once

#include <string>
#include <string_view>

namespace spellwick {

// Covers every letter of Unicode 14 in the Latin, Greek, Cyrillic and Armenian scripts, and the
// Coptic letters of the Greek block, that has a simple (one to one) lower-case mapping: also the
// accented, archaic, titlecase and fullwidth letters and the Kelvin, Angstrom and Ohm signs. All
// else stays as it is, Roman numerals and circled letters too.
char32_t LowerCase(char32_t letter);

// The same for UTF-8. Stray bytes become U+FFFD.
std::string LowerCase(std::string_view text);

}  // namespace spellwick
