// The countdowns of the spells that were cast: how long each runs, which ones are shown, and
// whether their window is.
#pragma once

#include "companion/timer_screen.h"
#include "model/shared_state.h"
#include "model/timer_list.h"
#include "platform/clock.h"

namespace spellwick {

class RunningTimers {
  public:
    // Both references outlive it.
    RunningTimers(SharedState& state, const Clock& clock) : m_state(state), m_clock(clock) {}

    // Starts the countdown of a spell that has just been cast, for the duration that its row gives
    // for this character; none for a spell that does not last. RuntimeFailure: subscript for a row
    // outside the table, overflow for values that do not give a number of seconds.
    void StartTimer(i32 row);

    // Starts a countdown of whole seconds and shows the window again if the user has hidden it.
    void CreateNewSpellTimer(i16 spellNumber, i16 spellDuration);

    // Whether a timer is running, visible or not.
    bool SpellsActive() const { return !m_timers.IsEmpty(); }

    // Refreshes what is shown; call it about once a second.
    void Update();

    // A TimerMode, also for the settings.
    void SetMode(i32 newMode);

    // Switches between a column and a row of icons.
    void ToggleLayout();

    // Hides the window until the next timer starts.
    void HideForUser();

    // What is shown since the last of the calls above.
    const TimerScreen& Screen() const { return m_screen; }

  private:
    void SortTimers(float now);
    void Refresh(float now);

    SharedState& m_state;
    const Clock& m_clock;
    TimerList m_timers;
    bool m_hiddenByUser = false;
    TimerScreen m_screen;
};

}  // namespace spellwick
