// A copy of the store at the first start of each version, so that a player can go back.
#pragma once

#include <chrono>
#include <filesystem>
#include <string>

#include "platform/settings_store.h"

namespace spellwick {

// Copies the store unless the folder says that this version was started before, and notes the
// version there. A store without data is not copied. A failure is said in the log, and the next
// start tries again.
void CopyForNewVersion(SettingsStore& store, const std::filesystem::path& folder,
                       const std::string& version, std::chrono::system_clock::time_point now);

}  // namespace spellwick
