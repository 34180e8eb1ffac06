// Signals that ask the program to end (TERM, INT, HUP), as something that an event loop can wait
// for.
#pragma once

namespace spellwick {

// Holds the signals back in this thread and in those that it starts; to be called before the first
// of them, since a signal goes to any thread that takes it.
void HoldEndSignals();

// A descriptor that is readable once a signal has come; -1 if there is none to be had, and the
// signals then end the process as they always do.
int WatchEndRequests();

}  // namespace spellwick
