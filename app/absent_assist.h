// The link with the assist tool while there is none: the Count button stays off.
#pragma once

#include <functional>

#include "link/assist_link.h"
#include "model/shared_state.h"

namespace spellwick {

class AbsentAssist : public AssistLink {
  public:
    explicit AbsentAssist(SharedState& state) : m_state(state) {}

    void SetCountButton(std::function<void(bool enabled)> enable) { m_enable = std::move(enable); }

    void FindAssist() override {
        m_state.AssistWindow = 0;
        m_enable(false);
        m_state.AssistLinked = false;
        m_state.AssistRegistered = false;
    }
    void HookWindow() override {}
    void UnhookWindow() override {}
    void RequestCount() override {}

  private:
    SharedState& m_state;
    std::function<void(bool)> m_enable = [](bool) {};
};

}  // namespace spellwick
