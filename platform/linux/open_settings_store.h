// Finds and opens the user's settings store, and sets an unreadable one aside.
#pragma once

#include <chrono>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include "platform/settings_store.h"

namespace spellwick {

struct OpenedStore {
    std::unique_ptr<SettingsStore> store;  // never null; in memory if all else fails
    bool lasts = false;                    // not in memory
    // The new name of an unreadable store.
    std::optional<std::filesystem::path> keptAside;
    // A text for the user; empty if all is well.
    std::string trouble;
};

// The settings folder for the values of XDG_DATA_HOME and HOME, which may be null. Relative paths
// are ignored; nothing if neither gives a folder.
std::optional<std::filesystem::path> SettingsFolder(const char* dataHome, const char* home);

// The same for the environment of the process.
std::optional<std::filesystem::path> SettingsFolder();

// Makes a folder and its parents, accessible to the user alone; false if it is not there then.
bool MakeFolder(const std::filesystem::path& folder);

// Opens settings.db in the folder and makes both if needed. Never throws. An unreadable store is
// renamed, with the time `now` in its name; one that is only locked or forbidden is left alone.
OpenedStore OpenSettingsStore(const std::optional<std::filesystem::path>& folder,
                              std::chrono::system_clock::time_point now);

}  // namespace spellwick
