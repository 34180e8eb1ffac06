// A target that takes every key.
#pragma once

#include "link/key_sender.h"

namespace spellwick {

class AnyTarget : public KeyTarget {
  public:
    bool MayType() override { return true; }
};

inline AnyTarget anywhere;

}  // namespace spellwick
