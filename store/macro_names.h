// The names that game clients write for spells in their macro files.
#pragma once

#include <string_view>

namespace spellwick {

// The name that the delivered spell table has for a spell that a client calls by another one;
// compared exactly. Empty if no client does.
std::string_view SpellOfClientName(std::string_view name);

}  // namespace spellwick
