// All that the program gets from the system that it runs on. Each system has one implementation of
// the two functions.
#pragma once

#include <memory>
#include <string>

#include "platform/client_windows.h"
#include "platform/desktop.h"
#include "platform/keyboard.h"
#include "platform/settings_store.h"

namespace spellwick {

struct System {
    std::unique_ptr<ClientWindows> clients;
    std::unique_ptr<Keyboard> keyboard;
    std::unique_ptr<Desktop> desktop;
    std::unique_ptr<SettingsStore> store;
    // For the user: what became of a store that could not be read. Empty when all is well.
    std::string storeTrouble;
    // Readable when the system asks the program to end; -1 where it asks in other ways.
    int endRequests = -1;
};

// Readies the process for showing windows; to be called before the toolkit starts. Returns why the
// program cannot show itself here, as one sentence, or nothing.
std::string PrepareDisplay();

// Call only where there is no such trouble. Never fails: a part that cannot be had does nothing.
System OpenSystem();

}  // namespace spellwick
