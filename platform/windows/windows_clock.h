// The time of day in the system's time zone.
#pragma once

#include "platform/clock.h"

namespace spellwick {

class WindowsClock : public Clock {
  public:
    float SecondsSinceMidnight() const override;
};

}  // namespace spellwick
