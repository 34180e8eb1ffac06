// Everything that the settings dialog asks from outside itself.
#pragma once

#include <QRect>
#include <functional>

#include "companion/dialog_actions.h"
#include "companion/game_choice.h"
#include "companion/own_table.h"
#include "companion/player_data.h"
#include "companion/settings_at_start.h"
#include "model/failure_guard.h"
#include "model/shared_state.h"
#include "platform/desktop.h"
#include "platform/dialogs.h"
#include "platform/installation.h"
#include "platform/message_boxes.h"
#include "platform/settings_store.h"
#include "platform/wine_tools.h"
#include "store/catalogue.h"
#include "widgets/pictures.h"

namespace spellwick {

// All references outlive the dialog.
struct SettingsServices {
    SharedState& state;
    const SettingsStore& store;
    Desktop& desktop;
    MessageBoxes& boxes;
    Dialogs& dialogs;
    Installation& installation;
    FailureSink& failures;
    DialogActions& companion;
    GameChoice& game;
    const SpellTableFile& spellTable;
    Pictures& pictures;
    SettingsAtStart atStart;
    std::string about{};                // version, data and licences, a line each
    std::function<QRect()> gameArea{};  // where the game's window is, empty without one
    PlayerData* data = nullptr;         // null where it cannot be taken in or out
    WineTools* wineTools = nullptr;     // null where there is no such search
};

// Stores a switch and saves it at once.
void SetSwitch(const SettingsServices& services, const KeyOf<bool>& key, bool on);

}  // namespace spellwick
