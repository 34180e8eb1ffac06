// All that the program gets from the system that it runs on. Each system has one implementation of
// the functions.
#pragma once

#include <filesystem>
#include <future>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/assist_transport.h"
#include "platform/client_windows.h"
#include "platform/clock.h"
#include "platform/desktop.h"
#include "platform/installation.h"
#include "platform/journal_file.h"
#include "platform/keyboard.h"
#include "platform/settings_file.h"
#include "platform/settings_owner.h"
#include "platform/settings_store.h"
#include "platform/wine_tools.h"

namespace spellwick {

// What the user asked for at the start.
struct Options {
    std::optional<std::filesystem::path> data;  // the settings' folder in place of the usual one
};

struct System {
    std::unique_ptr<ClientWindows> clients;
    std::unique_ptr<Keyboard> keyboard;  // null where the program cannot type
    std::unique_ptr<Desktop> desktop;
    std::unique_ptr<Installation> installation;
    std::unique_ptr<Clock> clock;
    std::unique_ptr<SettingsStore> store;
    std::unique_ptr<SettingsOwner> owner;  // null where nothing says who has the settings
    std::unique_ptr<JournalFile> journal;  // null where the store does not last
    std::unique_ptr<SettingsFile> files;   // null: a text file serves
    std::unique_ptr<AssistTransport> assist;
    std::unique_ptr<WineTools> wineTools;  // null where tools are found without a search
    // What the user should know at once, a text each: a store that could not be read, a display
    // that takes no keys.
    std::vector<std::string> troubles;
    // The settings' folder, which need not exist; nothing if the system names none.
    std::optional<std::filesystem::path> folder;
    // Where the settings are kept, for the user to read; empty if they do not last.
    std::string storePlace;
    // What of others is in the program on this system, a line each: its name and its licence.
    std::vector<std::string> licences;
    // The session may have windows that no other program sees.
    bool wayland = false;
    // A window that is shown comes to the screen some milliseconds later, when another program, the
    // window manager, has mapped it.
    bool mapsLater = false;
    // Readable when the system asks the program to end; -1 where it asks in other ways.
    int endRequests = -1;
};

// Takes a request to end from `endRequests`, after which it is no longer readable. The next one
// ends the process at once.
void TakeEndRequest(int endRequests);

// What PrepareProcess has found.
struct Preparation {
    std::string trouble;  // why the program cannot show itself here, as one sentence; or empty
    // Keeps the display until the system is open; null where nothing has to.
    std::shared_ptr<const void> display;
};

// Readies the process, before the toolkit starts.
[[nodiscard]] Preparation PrepareProcess();

// Takes the settings' folder for this process. When another program has it, its window is brought
// to the front. Call after PrepareProcess.
Ownership OwnSettings(const Options& options);

// Opens the system, on Linux in another thread, so that the caller can start the toolkit meanwhile;
// what the toolkit's first text waits for is read there too. Call it only where PrepareProcess
// found no trouble, with the display that it gave. The result throws std::runtime_error with a
// sentence when the display goes away.
[[nodiscard]] std::future<System> OpenSystem(const Options& options,
                                             std::shared_ptr<const void> display);

}  // namespace spellwick
