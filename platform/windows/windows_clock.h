// The time of day in the zone of the system.
#pragma once

#include "platform/clock.h"

namespace spellwick {

class WindowsClock : public Clock {
  public:
    float SecondsSinceMidnight() const override;
};

}  // namespace spellwick
