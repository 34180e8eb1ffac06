// The look of a running countdown: the width of its bar, its colours, its figure.
#pragma once

#include <string>

#include "model/colours.h"

namespace spellwick {

inline constexpr i32 kTimerBarWidth = 42;  // pixels
inline constexpr i32 kTimerBarHeight = 5;

enum TimerMode : i32 { kTimersOff = 0, kTimersAsText = 1, kTimersAsIcons = 2 };

// The mode that a saved number stands for. An invalid number counts as not saved.
TimerMode TimerModeOf(i32 saved);

// The width of the bar, in pixels, for the time left; percent is 0 to 100.
i32 BarWidth(i32 percent);

// Colour of the rest of the bar.
Colour BarRestColour(i32 percent);

// Colour of the seconds in text mode.
Colour SecondsColour(i32 percent);

// The seconds left, rounded to a whole number.
std::string SecondsText(float remaining);

}  // namespace spellwick
