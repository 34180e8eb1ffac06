// Turns Qt's key events into the key presses of the journal, with the name on the key's cap.
#pragma once

#include <QKeyEvent>

#include "practice/journal.h"

namespace spellwick::practice {

// Without an X display the name comes from the event alone.
KeyPress PressOf(const QKeyEvent& event);

// The name on the cap of a key that gives the X11 key symbol `plain` alone and `shifted` with
// Shift. Where a layout has its digits on Shift, the key is named by the digit, as in the game.
// Empty for a modifier key.
std::string CapName(quint32 plain, quint32 shifted);

}  // namespace spellwick::practice
