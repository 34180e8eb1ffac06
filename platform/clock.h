// The time of day, and the date.
#pragma once

#include <chrono>
#include <ctime>

namespace spellwick {

class Clock {
  public:
    virtual ~Clock() = default;

    // Seconds since local midnight, with a fraction; falls from 86400 to 0 at midnight, and jumps
    // when the clock is set.
    virtual float SecondsSinceMidnight() const = 0;

    virtual std::chrono::system_clock::time_point Now() const = 0;

    // The parts of a time in the system's time zone.
    virtual std::tm Local(std::time_t time) const = 0;
};

}  // namespace spellwick
