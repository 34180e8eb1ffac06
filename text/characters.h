// Counts and cuts UTF-8 by characters, which are code points. A stray byte counts as one character;
// text/utf8.h has the rule.
#pragma once

#include <cstddef>
#include <string_view>

namespace spellwick {

std::size_t CountCharacters(std::string_view text);

// The first `count` characters; all if there are fewer.
std::string_view FirstCharacters(std::string_view text, std::size_t count);

// The text without its first `count` characters.
std::string_view SkipCharacters(std::string_view text, std::size_t count);

// The last `count` characters; all if there are fewer.
std::string_view LastCharacters(std::string_view text, std::size_t count);

}  // namespace spellwick
