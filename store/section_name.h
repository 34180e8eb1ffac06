// Names of sections: the global section, and one for each player under the player's name. A player
// with the name of the global section gets a mark in front of it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/settings_store.h"

namespace spellwick {

inline constexpr std::string_view kGlobalSection = "Settings";

// No two players share a section, and none has the global one. Every name except "Settings", with
// or without "=" in front, is its own section.
std::string SectionOfPlayer(std::string_view player);
std::string PlayerOfSection(std::string_view section);

// All players that have data, in the order of the store.
std::vector<std::string> PlayerNames(const SettingsStore& store);

}  // namespace spellwick
