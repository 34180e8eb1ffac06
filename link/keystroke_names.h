// Keys as people name them, for the log.
#pragma once

#include <string>
#include <string_view>

namespace spellwick {

// "Alt+1, Enter" for "%1{ENTER}". Characters without marks are named one by one, so a spoken text
// is not to be given.
std::string KeystrokeNames(std::string_view keystrokes);

}  // namespace spellwick
