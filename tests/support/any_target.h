// A target that takes every key.
#pragma once

#include "link/key_sender.h"

namespace spellwick {

class AnyTarget : public KeyTarget {
  public:
    bool MayType() override { return true; }
    bool HasRead(std::chrono::milliseconds /*patience*/) override { return false; }
    bool FollowsKeyMapLate() override { return false; }
};

inline AnyTarget anywhere;

}  // namespace spellwick
