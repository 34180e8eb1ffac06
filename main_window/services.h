// Everything that the main window asks from outside itself.
#pragma once

#include <filesystem>

#include "link/assist_link.h"
#include "link/key_sender.h"
#include "model/failure_guard.h"
#include "model/shared_state.h"
#include "platform/client_windows.h"
#include "platform/desktop.h"
#include "platform/message_boxes.h"
#include "platform/settings_store.h"
#include "store/old_data.h"
#include "store/setting_changes.h"

namespace spellwick {

// The settings dialog as the main window knows it.
class SettingsPort {
  public:
    virtual ~SettingsPort() = default;

    // Makes the dialog without showing it.
    virtual void Load() = 0;
    // Shows it modally and returns when it has closed.
    virtual void ShowModal() = 0;
    // Refreshes the chances of its skills tab; makes the dialog if need be.
    virtual void UpdateChance() = 0;
    // Puts a reported value into the character's line of its skills tab, as an entry would; makes
    // the dialog if need be.
    virtual void ShowMinimumSkill(const std::string& text) = 0;
    virtual void ShowMinimumInt(const std::string& text) = 0;
    // The end of the dialog, ahead of the main window's own saving: saves its place and the macro
    // codes.
    virtual StoreResult Unload() = 0;
};

// The spell info window as the main window knows it.
class SpellInfoPort {
  public:
    virtual ~SpellInfoPort() = default;

    // Shows the window, not modal, with a spell row.
    virtual void DisplayInfo(i32 row) = 0;
};

// The running countdowns of spells as the main window and the assist link know them.
class TimersPort {
  public:
    virtual ~TimersPort() = default;

    // Starts the countdown of a spell that has just been cast, for as long as its row tells for
    // this character; row 0 to 96. None for a spell that does not last.
    virtual void StartTimer(i32 row) = 0;
    // One refresh of what is shown; due with each tick of the watch.
    virtual void Update() = 0;
    // Where the window of the countdowns stands; makes it if need be.
    virtual WindowPlaces::Place TimerPlace() = 0;
};

// The end of the process.
class ProcessEnd {
  public:
    virtual ~ProcessEnd() = default;

    // Ends the process at once; in a test it returns.
    virtual void EndProcess(int exitCode) = 0;
};

// All references outlive the main window.
struct MainWindowServices {
    SharedState& state;
    SettingsStore& store;
    ClientWindows& clients;
    KeySender& keys;
    Desktop& desktop;
    MessageBoxes& boxes;
    AssistLink& assist;
    OldDataConversion& oldData;
    SettingsPort& settings;
    SpellInfoPort& spellInfo;
    TimersPort& timers;
    FailureSink& failures;
    ProcessEnd& process;
    std::filesystem::path folder;  // of the executable, with the files that lie beside it
};

}  // namespace spellwick
