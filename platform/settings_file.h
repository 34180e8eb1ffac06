// All settings in one file, which a player keeps or takes to another computer.
#pragma once

#include <filesystem>
#include <map>
#include <string>

#include "platform/settings_store.h"

namespace spellwick {

// Sections by their names.
using AllSettings = std::map<std::string, SectionValues, std::less<>>;

struct [[nodiscard]] ReadSettings {
    AllSettings sections;  // none after a trouble
    std::string trouble;   // a sentence for the user; empty if the file was read
};

class SettingsFile {
  public:
    virtual ~SettingsFile() = default;

    // What the file of the settings is called, with its dot: ".db".
    [[nodiscard]] virtual std::string Extension() const = 0;

    // Writes a new file or replaces one, whole or not at all.
    virtual StoreResult Write(const std::filesystem::path& file,
                              const AllSettings& settings) const = 0;

    // Reads a file that Write has made, here or by an earlier version, and writes nothing.
    virtual ReadSettings Read(const std::filesystem::path& file) const = 0;
};

}  // namespace spellwick
