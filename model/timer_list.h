// All running countdowns, in order of their creation, and the order in which they are shown.
#pragma once

#include <vector>

#include "model/spell_timer.h"

namespace spellwick {

class TimerList {
  public:
    // Adds a countdown of `duration` seconds under the next key. RuntimeFailure (subscript) for a
    // row outside the table.
    void Create(const SpellTable& spells, i16 spellNumber, i16 duration, float now);

    // Drops every countdown with less than one second left.
    void DropEnding(float now);

    // Numbers the countdowns by the time left, least first; equal ones keep their order of
    // creation.
    void Sort(float now);

    bool IsEmpty() const { return m_timers.empty(); }
    std::size_t Count() const { return m_timers.size(); }
    std::vector<SpellTimer>& Timers() { return m_timers; }

  private:
    std::vector<SpellTimer> m_timers;
    i32 m_nextKey = 0;
};

}  // namespace spellwick
