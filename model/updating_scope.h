// Marks that the program itself is filling controls; handlers that look at Updating do nothing
// then.
#pragma once

#include "model/shared_state.h"

namespace spellwick {

// Sets Updating for as long as it lives, then restores the value that it found, so that scopes
// nest.
class UpdatingScope {
  public:
    explicit UpdatingScope(SharedState& state) : m_state(state), m_before(state.Updating) {
        m_state.Updating = true;
    }
    ~UpdatingScope() { m_state.Updating = m_before; }
    UpdatingScope(const UpdatingScope&) = delete;
    UpdatingScope& operator=(const UpdatingScope&) = delete;
    UpdatingScope(UpdatingScope&&) = delete;
    UpdatingScope& operator=(UpdatingScope&&) = delete;

  private:
    SharedState& m_state;
    const bool m_before;
};

}  // namespace spellwick
