// What the settings dialog takes in once per run, at the start of the program. It needs no dialog:
// that is made when it is first wanted.
#pragma once

#include <string>
#include <vector>

#include "model/shared_state.h"
#include "platform/settings_store.h"
#include "store/setting_changes.h"

namespace spellwick {

struct SettingsAtStart {
    std::vector<std::string> players;  // that had data then
    WindowPlaces::Place place;         // of the dialog
};

// Passes the settings of `state` through the forms that the dialog's edits give them, and reads the
// macros as the dialog does. A step that fails is skipped, as in the rest of the start.
SettingsAtStart TakeInSettings(SharedState& state, const SettingsStore& store);

}  // namespace spellwick
