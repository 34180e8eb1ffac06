// Turns the signals that ask the program to end (TERM, INT, HUP) into something that an event loop
// can wait for.
#pragma once

namespace spellwick {

// Blocks the signals in this thread and in those that it starts. Call it before the first of them
// is started, since any thread that does not block a signal may get it.
void HoldEndSignals();

// A descriptor that is readable once a signal has arrived; -1 on failure, and the signals then end
// the process as usual.
int WatchEndRequests();

// Takes one signal from the descriptor; the next one ends the process at once.
void TakeEndSignal(int descriptor);

}  // namespace spellwick
