// What the window of the running timers shows, as plain data.
#pragma once

#include <string>
#include <vector>

#include "model/colours.h"
#include "model/timer_display.h"

namespace spellwick {

inline constexpr i32 kTimerSlots = 4;

// One running timer, for both display modes.
struct TimerSlot {
    i32 row = 0;  // row of the spell table
    std::string name;
    std::string seconds;  // left
    Colour secondsColour = kButtonFace;
    i32 percent = 0;  // left, 0 to 100

    bool operator==(const TimerSlot&) const = default;
};

struct TimerScreen {
    bool visible = false;
    TimerMode mode = kTimersOff;
    bool horizontal = false;       // icons in a row, else in a column
    std::vector<TimerSlot> shown;  // the timers that end first, at most kTimerSlots

    bool operator==(const TimerScreen&) const = default;
};

}  // namespace spellwick
