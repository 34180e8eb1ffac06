// Whether a text is one that the load of a player takes, for values that come from elsewhere than
// the store.
#pragma once

#include <string_view>

namespace spellwick {

// Whether `key` is a key of a player, and `value` reads as a value of it.
bool IsPlayerValue(std::string_view key, std::string_view value);

}  // namespace spellwick
