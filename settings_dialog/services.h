// Everything that the settings dialog asks from outside itself.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "model/failure_guard.h"
#include "model/shared_state.h"
#include "platform/desktop.h"
#include "platform/dialogs.h"
#include "platform/installation.h"
#include "platform/message_boxes.h"
#include "platform/settings_store.h"
#include "store/setting_changes.h"
#include "widgets/pictures.h"

namespace spellwick {

// The main window as the dialog knows it.
class MainWindowPort {
  public:
    virtual ~MainWindowPort() = default;

    virtual void LayoutVertical() = 0;
    virtual void LayoutHorizontal() = 0;
    virtual void UpdatePage() = 0;
    virtual void UpdateAmounts() = 0;
    // Shows the count of a reagent, 1 to 13, in the bag in use.
    virtual void ShowCounter(i32 reagent) = 0;
    // Calculates all chances, shows them, and ends with the dialog's own UpdateChance.
    virtual void UpdateChances() = 0;
    // Character and server from ClientTitle, with the caption.
    virtual void ParseClientTitle() = 0;
    // Stores how running timers are shown, and shows them so.
    virtual void SetTimerMode(i32 mode) = 0;

    // The data of CurrentPlayerName.
    virtual void SavePlayer() = 0;
    virtual void LoadPlayer() = 0;

    // The global keys and the player.
    virtual void SaveAll() = 0;
    // One key of the global section.
    virtual void SaveOption(std::string_view key, const std::string& value) = 0;
    // The macro codes, and the dialog's place if it has one. Shows no box.
    virtual StoreResult SaveMacros(const std::optional<WindowPlaces::Place>& dialog) = 0;
    // Tells the user of a save that failed, once for one trouble.
    virtual void ReportSave(const StoreResult& result) = 0;
};

// All references outlive the dialog.
struct SettingsServices {
    SharedState& state;
    const SettingsStore& store;
    Desktop& desktop;
    MessageBoxes& boxes;
    Dialogs& dialogs;
    Installation& installation;
    FailureSink& failures;
    MainWindowPort& mainWindow;
    Pictures& pictures;
};

}  // namespace spellwick
