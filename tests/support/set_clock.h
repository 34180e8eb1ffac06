// A clock that shows what a test sets.
#pragma once

#include "platform/clock.h"

namespace spellwick {

class SetClock : public Clock {
  public:
    float SecondsSinceMidnight() const override { return now; }

    float now = 0.0F;
};

}  // namespace spellwick
