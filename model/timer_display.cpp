#include "model/timer_display.h"

#include "text/number_forms.h"

namespace spellwick {

namespace {

Colour ByLimits(i32 percent, i32 calm, i32 warning) {
    if (percent >= calm) {
        return kButtonFace;
    }
    return percent >= warning ? kYellow : kRed;
}

}  // namespace

TimerMode TimerModeOf(i32 saved) {
    return saved == kTimersOff || saved == kTimersAsText ? TimerMode{saved} : kTimersAsIcons;
}

i32 BarWidth(i32 percent) {
    return TruncatingDivide(percent * kTimerBarWidth, 100);
}

Colour BarRestColour(i32 percent) {
    // ODDITY(timer-two-limits): the bar warns at half the percentage at which the seconds of the
    // text mode warn; kept because the bar's length already shows how little is left.
    return ByLimits(percent, 20, 10);
}

Colour SecondsColour(i32 percent) {
    return ByLimits(percent, 40, 20);
}

std::string SecondsText(float remaining) {
    return PlainText(ToI32(double{remaining}));
}

}  // namespace spellwick
