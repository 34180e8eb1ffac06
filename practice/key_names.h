// Turns Qt's key events into the key presses of the journal, with the name on the key's cap.
#pragma once

#include <QKeyEvent>

#include "practice/journal.h"

namespace spellwick::practice {

// Without an X display the name is taken from the event alone.
KeyPress PressOf(const QKeyEvent& event);

// The name on the cap of a key that types `plain` alone and `shifted` with Shift, by key symbol
// (X11). A layout that has its digits on Shift names these keys by the digit, as the game does.
// Empty for a modifier key.
std::string CapName(quint32 plain, quint32 shifted);

}  // namespace spellwick::practice
