// Where everything in the window of the timers stands, for each of its arrangements. All numbers
// are device-independent pixels.
#pragma once

#include <QRect>
#include <QSize>
#include <array>

#include "companion/timer_screen.h"

namespace spellwick {

inline constexpr int kTimerIcon = 42;  // both ways

struct TimerPlan {
    i32 texts = 0;  // slots 0 up to this show a name and its seconds
    i32 icons = 0;  // slots 0 up to this show an icon and its bar
    bool showsControls = false;
    std::array<QRect, kTimerSlots> names{};
    std::array<QRect, kTimerSlots> seconds{};
    std::array<QRect, kTimerSlots> pictures{};
    std::array<QRect, kTimerSlots> bars{};
    std::array<QRect, 2> controls{};
    QSize window{};
};

// Names with seconds, for `count` timers; the window has room for four in any case.
TimerPlan PlanTexts(i32 count, QSize name, QSize seconds);

// Icons with bars in a column, or in a row, for `count` timers; `control` is the size of the two
// small buttons.
TimerPlan PlanColumn(i32 count, QSize control);
TimerPlan PlanRow(i32 count, QSize control);

}  // namespace spellwick
