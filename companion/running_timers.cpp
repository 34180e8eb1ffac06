#include "companion/running_timers.h"

#include <algorithm>

#include "model/caster_values.h"
#include "model/spell_duration.h"
#include "text/number_forms.h"

namespace spellwick {

void RunningTimers::StartTimer(i32 row) {
    const i16 rule = m_state.Spells(row).File5;
    const i16 seconds = SpellDuration(rule, CasterOf(m_state));
    if (seconds >= 1) {
        CreateNewSpellTimer(ToI16(row), seconds);
    }
}

void RunningTimers::CreateNewSpellTimer(i16 spellNumber, i16 spellDuration) {
    const float now = m_clock.SecondsSinceMidnight();
    m_timers.Create(m_state.Spells, spellNumber, spellDuration, now);
    m_hiddenByUser = false;
    SortTimers(now);
    Refresh(now);
}

void RunningTimers::SortTimers(float now) {
    // Drop ended timers before they are shown: a timer of 0 seconds has no percentage.
    m_timers.DropEnding(now);
    m_timers.Sort(now);
}

void RunningTimers::Update() {
    const float now = m_clock.SecondsSinceMidnight();
    const bool hasEnded = std::ranges::any_of(
        m_timers.Timers(), [now](SpellTimer& timer) { return timer.TimeRemaining(now) == 0.0F; });
    if (hasEnded) {
        SortTimers(now);
    }
    Refresh(now);
}

void RunningTimers::SetMode(i32 newMode) {
    m_state.SpellTimerMode = newMode;
    Update();
}

void RunningTimers::ToggleLayout() {
    m_screen.horizontal = !m_screen.horizontal;
    Update();
}

void RunningTimers::HideForUser() {
    m_hiddenByUser = true;
    m_screen.visible = false;
}

void RunningTimers::Refresh(float now) {
    m_screen.mode = TimerModeOf(m_state.SpellTimerMode);
    m_screen.visible = SpellsActive() && m_screen.mode != kTimersOff && !m_hiddenByUser;
    m_screen.shown.assign(std::min(m_timers.Count(), std::size_t{kTimerSlots}), {});
    for (SpellTimer& timer : m_timers.Timers()) {
        const auto slot = static_cast<std::size_t>(timer.ControlIndex);
        if (slot < m_screen.shown.size()) {
            const i32 percent = timer.PercentRemaining(now);
            m_screen.shown[slot] = {.row = timer.SpellNumber(),
                                    .name = timer.SpellName(),
                                    .seconds = SecondsText(timer.TimeRemaining(now)),
                                    .secondsColour = SecondsColour(percent),
                                    .percent = percent};
        }
    }
}

}  // namespace spellwick
