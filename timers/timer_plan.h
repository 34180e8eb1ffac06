// The place of every part of the timers' window, for each of its arrangements. All numbers are
// device-independent pixels.
#pragma once

#include <QRect>
#include <QSize>
#include <array>

#include "companion/timer_screen.h"

namespace spellwick {

inline constexpr int kTimerIcon = 42;  // width and height, as designed

struct TimerPlan {
    i32 texts = 0;  // slots below this show a name and its seconds
    i32 icons = 0;  // slots below this show an icon and its bar
    bool showsControls = false;
    std::array<QRect, kTimerSlots> names{};
    std::array<QRect, kTimerSlots> seconds{};
    std::array<QRect, kTimerSlots> pictures{};
    std::array<QRect, kTimerSlots> bars{};
    std::array<QRect, 2> controls{};
    QSize window{};
};

// Names with seconds, for `count` timers; the window always has room for four.
TimerPlan PlanTexts(i32 count, QSize name, QSize seconds);

// Icons with bars, in a column or in a row, for `count` timers; `control` is the size of the two
// small buttons, and icons and bars are `scale` times as large as designed.
TimerPlan PlanColumn(i32 count, QSize control, double scale = 1.0);
TimerPlan PlanRow(i32 count, QSize control, double scale = 1.0);

}  // namespace spellwick
