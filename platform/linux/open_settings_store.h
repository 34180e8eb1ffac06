// Finds and opens the settings store of the user, and keeps one aside that cannot be read.
#pragma once

#include <chrono>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include "platform/settings_store.h"

namespace spellwick {

struct OpenedStore {
    std::unique_ptr<SettingsStore> store;  // always there; in memory when all else fails
    // Where the store went that could not be read.
    std::optional<std::filesystem::path> keptAside;
    // What to tell the user, empty when all is well.
    std::string trouble;
};

// The folder of the settings by the values of XDG_DATA_HOME and HOME, null when they are not set.
// Neither counts unless it is absolute; nothing when there is no folder then.
std::optional<std::filesystem::path> SettingsFolder(const char* dataHome, const char* home);

// The same by the environment of the process.
std::optional<std::filesystem::path> SettingsFolder();

// Opens settings.db in the folder, and makes both as needed. Never throws. A store that cannot be
// read is renamed after the time `now`; a store that is merely locked or forbidden stays.
OpenedStore OpenSettingsStore(const std::optional<std::filesystem::path>& folder,
                              std::chrono::system_clock::time_point now);

}  // namespace spellwick
