// Load and save of everything that survives a restart, on the settings store.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "model/shared_state.h"
#include "platform/settings_store.h"
#include "store/catalogue.h"
#include "store/conversion_progress.h"
#include "store/setting_changes.h"

namespace spellwick {

// Parts of a player that a load has just read, in this order. The window shows each at once, since
// a value that cannot be read ends the load there.
enum class PlayerPart { kBagNames, kBagChoice, kStock, kTithingPoints };

class SettingsIo {
  public:
    // `onLoaded` runs in the middle of the load of a player.
    SettingsIo(SharedState& state, SettingsStore& store, std::function<void(PlayerPart)> onLoaded)
        : m_state(state), m_store(store), m_onLoaded(std::move(onLoaded)) {}

    // Reads all global keys, then the player CurrentPlayerName, then recalculates the costs.
    // RuntimeFailure when a saved text is no number; what was read before it stands.
    void LoadGlobalSettings();

    // Writes all global keys and the player CurrentPlayerName in one transaction; without the
    // player while its load has not ended. RuntimeFailure, with nothing written, while the spell
    // table lacks a row.
    StoreResult SaveGlobalSettings(const WindowPlaces& places);

    // The same without the player, for an end in which each step is to be done on its own.
    StoreResult SaveGlobalKeys(const WindowPlaces& places);

    // Reads all keys of a player and puts them on the window. An empty name returns at once.
    // RuntimeFailure as above.
    void LoadPlayerSettings(std::string_view section);

    // Writes all keys of a player in one transaction. An empty name returns at once, and so does
    // that of a player whose load did not end: memory then holds a part of it among other values.
    StoreResult SavePlayerSettings(std::string_view section);

    // Writes the macro codes, and the position of the settings dialog if it has one, in one
    // transaction: what closing the dialog saves.
    StoreResult SaveMacros(const std::optional<WindowPlaces::Place>& dialog);

    // A saved position in twips, 0 when there is none; RuntimeFailure when it is no number.
    float ReadPosition(std::string_view key) const;

    // A saved option, its default when there is none; RuntimeFailure when it is no such value.
    bool ReadSwitch(const KeyOf<bool>& entry) const;

    // Writes one key of the global section, for options that are saved when they are clicked.
    StoreResult SaveOption(std::string_view key, const std::string& value);

    // The key that was read last, when a load has failed.
    const std::string& LastKey() const { return m_lastKey; }

    // What a load that did not end has left in memory is saved as the player's all the same.
    void TakeAsLoaded() { m_unfinished.clear(); }

    // Kept by Conversion. While Converting is set, it decides where a player is read from.
    ConversionProgress& Progress() { return m_progress; }

  private:
    SharedState& m_state;
    SettingsStore& m_store;
    std::function<void(PlayerPart)> m_onLoaded;
    ConversionProgress m_progress;
    std::string m_unfinished;  // player whose load began and did not end
    std::string m_lastKey;
};

}  // namespace spellwick
