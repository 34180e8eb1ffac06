// The settings store: text values addressed by section and key. One implementation for each system
// and one in memory for tests.
#pragma once

#include <chrono>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace spellwick {

// Keys and values of one section.
using SectionValues = std::map<std::string, std::string, std::less<>>;

struct SettingChange {
    std::string section;
    std::string key;
    std::optional<std::string> value;  // none removes the key

    bool operator==(const SettingChange&) const = default;
};

// Outcome of a write: ok, or a sentence for the user.
struct [[nodiscard]] StoreResult {
    bool ok = true;
    std::string trouble;
};

class SettingsStore {
  public:
    virtual ~SettingsStore() = default;

    // The value, or nothing when section or key do not exist or cannot be read.
    [[nodiscard]] virtual std::optional<std::string> Read(std::string_view section,
                                                          std::string_view key) const = 0;

    // All of a section at once; empty when it does not exist or cannot be read.
    virtual SectionValues ReadSection(std::string_view section) const = 0;

    // All changes or none. On failure the old data stand.
    virtual StoreResult Apply(const std::vector<SettingChange>& changes) = 0;

    // Removes a section with all its keys; a section that does not exist is no failure.
    virtual StoreResult RemoveSection(std::string_view section) = 0;

    // Writes a copy of everything beside the store, with the time in its name, and keeps the newest
    // five of them.
    virtual StoreResult KeepCopy(std::chrono::system_clock::time_point now) = 0;

    // Names of all sections as they were given, in the order of the store.
    virtual std::vector<std::string> Sections() const = 0;
};

}  // namespace spellwick
