// Signals that ask the program to end (TERM, INT, HUP), as something that an event loop can wait
// for.
#pragma once

namespace spellwick {

// Takes the signals over for the whole process. The descriptor is readable once one has come; -1 if
// that could not be set up, and the signals then end the process as they always do.
int WatchEndRequests();

}  // namespace spellwick
