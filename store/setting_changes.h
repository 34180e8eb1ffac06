// What the save routines write, as values: lists of changes in the order of writing. All of them
// throw RuntimeFailure (subscript) while the spell table lacks a row that is to be saved.
#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "model/shared_state.h"
#include "platform/settings_store.h"

namespace spellwick {

// Positions of windows as they are saved, in twips; a window without a position is not written.
struct WindowPlaces {
    struct Place {
        float top = 0.0F;
        float left = 0.0F;
    };
    std::optional<Place> main;   // only when the window's state is normal
    std::optional<Place> timer;  // the window of running timers
};

using SettingChanges = std::vector<SettingChange>;

// All keys of a player; none for an empty name.
SettingChanges PlayerChanges(const SharedState& state, std::string_view player);

// The global keys that a save writes, without the player.
SettingChanges GlobalChanges(const SharedState& state, const WindowPlaces& places);

// The global keys with the data of CurrentPlayerName between them.
SettingChanges AllChanges(const SharedState& state, const WindowPlaces& places);

// All macro codes, -1 to 96, after the position of the settings dialog.
SettingChanges MacroChanges(const SharedState& state,
                            const std::optional<WindowPlaces::Place>& dialog);

}  // namespace spellwick
