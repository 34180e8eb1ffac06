// What the start tells the user in a hint.
#pragma once

#include <string>
#include <string_view>

#include "platform/clock.h"
#include "store/journal.h"

namespace spellwick {

// "Recovered 14 changes of Mira Talon from 21:40", with the date when it is another day.
std::string RecoveryText(const Journal::Found& found, const Clock& clock);

// That a saved value cannot be read; `player` is the title whose value it is, empty for a value of
// all.
std::string UnreadValueText(std::string_view key, std::string_view player);

}  // namespace spellwick
