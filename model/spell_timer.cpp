#include "model/spell_timer.h"

#include <algorithm>
#include <utility>

#include "text/number_forms.h"

namespace spellwick {

namespace {

constexpr float kSecondsOfDay = 86400.0F;
constexpr float kNoon = 43200.0F;

}  // namespace

void SpellTimer::StartTimer(const SpellTable& spells, i16 spellNumber, i16 duration,
                            std::string key, float now) {
    m_spellName = spells(spellNumber).Name;
    m_spellNumber = spellNumber;
    m_duration = duration;
    m_key = std::move(key);
    m_startTime = now;
    m_endTime = now + m_duration;
    // ODDITY(timer-at-midnight): a timer that ends exactly at midnight starts to count a whole day;
    // kept because only an end after midnight counts as the next day's.
    m_wrapsMidnight = m_endTime > kSecondsOfDay;
}

float SpellTimer::TimeRemaining(float now) {
    if (m_wrapsMidnight && now < kNoon) {
        m_endTime -= kSecondsOfDay;
        m_wrapsMidnight = false;
    }
    return m_endTime > now ? m_endTime - now : 0.0F;
}

i16 SpellTimer::PercentRemaining(float now) {
    if (m_duration == 0.0F) {
        throw RuntimeFailure(FailureKind::kDivision, "A spell timer of 0 seconds has no percent.");
    }
    const double percent = RoundHalfEven(double{TimeRemaining(now)} * 100.0 / m_duration);
    return ToI16(std::clamp(percent, 0.0, 100.0));
}

}  // namespace spellwick
