// A running countdown of a spell. All times are seconds since midnight in single precision, read
// from the clock by the caller; they can fall from 86400 to 0 in the middle of a countdown.
#pragma once

#include <string>

#include "model/spell_record.h"

namespace spellwick {

class SpellTimer {
  public:
    // Display slot; 0 is shown first.
    i16 ControlIndex = 0;

    // Starts the countdown of a row for `duration` seconds. RuntimeFailure (subscript) for a row
    // outside the table.
    void StartTimer(const SpellTable& spells, i16 spellNumber, i16 duration, std::string key,
                    float now);

    i16 SpellNumber() const { return m_spellNumber; }
    const std::string& SpellName() const { return m_spellName; }
    const std::string& Key() const { return m_key; }
    float StartTime() const { return m_startTime; }
    float EndTime() const { return m_endTime; }
    bool WrapsMidnight() const { return m_wrapsMidnight; }

    // Seconds left, never negative. This is where the passing of midnight is noticed.
    float TimeRemaining(float now);

    // 0 to 100. RuntimeFailure (division) for a countdown of 0 seconds.
    i16 PercentRemaining(float now);

  private:
    i16 m_spellNumber = 0;
    std::string m_spellName;
    std::string m_key;
    float m_duration = 0.0F;
    float m_startTime = 0.0F;
    float m_endTime = 0.0F;
    bool m_wrapsMidnight = false;
};

}  // namespace spellwick
