// The time of day in the system's time zone.
#pragma once

#include "platform/clock.h"

namespace spellwick {

class LocalClock : public Clock {
  public:
    float SecondsSinceMidnight() const override;
    std::chrono::system_clock::time_point Now() const override;
    std::tm Local(std::time_t time) const override;
};

}  // namespace spellwick
