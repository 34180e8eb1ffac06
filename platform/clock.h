// The time of day.
#pragma once

namespace spellwick {

class Clock {
  public:
    virtual ~Clock() = default;

    // Seconds since local midnight, with a fraction; falls from 86400 to 0 at midnight, and jumps
    // when the clock is set.
    virtual float SecondsSinceMidnight() const = 0;
};

}  // namespace spellwick
