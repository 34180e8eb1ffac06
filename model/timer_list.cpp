#include "model/timer_list.h"

#include <algorithm>
#include <utility>

#include "text/number_forms.h"

namespace spellwick {

void TimerList::Create(const SpellTable& spells, i16 spellNumber, i16 duration, float now) {
    SpellTimer timer;
    ++m_nextKey;
    timer.StartTimer(spells, spellNumber, duration, PlainText(m_nextKey), now);
    m_timers.push_back(std::move(timer));
}

void TimerList::DropEnding(float now) {
    // ODDITY(timer-last-second): a timer in its last second disappears when another one starts or
    // ends; kept because with less than a second left a spell counts as over.
    std::erase_if(m_timers, [now](SpellTimer& timer) { return timer.TimeRemaining(now) < 1.0F; });
}

void TimerList::Sort(float now) {
    struct Entry {
        float remaining;
        SpellTimer* timer;
    };
    std::vector<Entry> order;
    order.reserve(m_timers.size());
    for (SpellTimer& timer : m_timers) {
        order.push_back({timer.TimeRemaining(now), &timer});
    }
    std::stable_sort(order.begin(), order.end(), [](const Entry& left, const Entry& right) {
        return left.remaining < right.remaining;
    });
    i32 slot = 0;
    for (const Entry& entry : order) {
        entry.timer->ControlIndex = ToI16(slot);
        ++slot;
    }
}

}  // namespace spellwick
