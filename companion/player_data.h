// The player's data as a whole: saved to a file, loaded from one, a character removed.
#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "model/shared_state.h"
#include "platform/clock.h"
#include "platform/settings_file.h"
#include "store/journalled_store.h"

namespace spellwick {

class PlayerData {
  public:
    // What it refers to outlives it.
    struct Parts {
        SharedState& state;
        JournalledStore& store;
        const Clock& clock;
        const SettingsFile& files;
        std::function<StoreResult()> saveAll;  // everything in memory
        std::function<void()> reload;          // everything from the store, the player too
    };

    explicit PlayerData(Parts parts) : m_parts(std::move(parts)) {}

    [[nodiscard]] std::string Extension() const { return m_parts.files.Extension(); }

    // Each returns a sentence that says why it was not done; empty if it was. Then nothing in the
    // store has changed, but for what was saved first.

    // Saves what is in memory, then writes everything to a file.
    [[nodiscard]] std::string Export(const std::filesystem::path& file);

    // Reads a file and looks at each of its values; changes nothing.
    ReadSettings Open(const std::filesystem::path& file) const;

    // Names of the characters in the settings.
    static std::vector<std::string> Characters(const AllSettings& settings);

    // Puts all sections, or those of one character, in the place of the store's, and loads them. A
    // dated copy of the store is kept. Characters that the file does not have stay.
    [[nodiscard]] std::string Import(const AllSettings& settings,
                                     const std::optional<std::string>& character);

    // The character in memory; empty if there is none.
    [[nodiscard]] const std::string& Current() const { return m_parts.state.CurrentPlayerName; }

    // Takes the character in memory out of the store and out of memory, so that no save brings it
    // back. Not while it is in the game. A dated copy of the store is kept.
    [[nodiscard]] std::string RemoveCurrent();

  private:
    // Saves and copies the store.
    StoreResult Secure();
    // What makes the store's section the file's.
    void AddChanges(SettingChanges& changes, const std::string& section,
                    const SectionValues& values) const;

    Parts m_parts;
};

}  // namespace spellwick
