// Lower case for keys and their names, the same under every locale.
#pragma once

#include <string>
#include <string_view>

namespace spellwick {

// Covers the letters that keyboards have: Latin, Greek, Cyrillic, Armenian. Others stay.
char32_t LowerCase(char32_t letter);

// The same for UTF-8. Bytes that are no UTF-8 become U+FFFD.
std::string LowerCase(std::string_view text);

}  // namespace spellwick
