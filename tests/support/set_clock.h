// A clock that shows what a test sets.
#pragma once

#include "platform/clock.h"

namespace spellwick {

class SetClock : public Clock {
  public:
    float SecondsSinceMidnight() const override { return now; }
    std::chrono::system_clock::time_point Now() const override {
        return std::chrono::system_clock::from_time_t(time);
    }
    // In the zone of Greenwich.
    std::tm Local(std::time_t moment) const override {
        using namespace std::chrono;
        const sys_seconds whole{seconds{moment}};
        const sys_days day = floor<days>(whole);
        const year_month_day date{day};
        const hh_mm_ss clock{whole - day};
        std::tm parts{};
        parts.tm_year = static_cast<int>(date.year()) - 1900;
        parts.tm_mon = static_cast<int>(static_cast<unsigned>(date.month())) - 1;
        parts.tm_mday = static_cast<int>(static_cast<unsigned>(date.day()));
        parts.tm_hour = static_cast<int>(clock.hours().count());
        parts.tm_min = static_cast<int>(clock.minutes().count());
        parts.tm_sec = static_cast<int>(clock.seconds().count());
        return parts;
    }

    float now = 0.0F;
    std::time_t time = 1'000'000'000;  // 9 September 2001, 01:46:40
};

}  // namespace spellwick
