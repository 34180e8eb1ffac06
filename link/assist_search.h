// The search for the assist tool: its window by the title, the registration, the three states of
// the link.
#pragma once

#include <functional>

#include "link/assist_link.h"
#include "model/shared_state.h"
#include "platform/assist_transport.h"

namespace spellwick {

class AssistSearch : public AssistLink {
  public:
    // Both outlive it.
    AssistSearch(SharedState& state, AssistTransport& transport)
        : m_state(state), m_transport(transport) {}

    // Enables or disables the Count button; set before the first search.
    void SetCountButton(std::function<void(bool enabled)> enable) { m_enable = std::move(enable); }

    // What HookWindow attaches; set before it, and outlives the link.
    void SetReceiver(MessageReceiver& receiver) { m_receiver = &receiver; }

    void FindAssist() override;
    void HookWindow() override;
    void UnhookWindow() override;
    void TakeReports() override { m_transport.ServePending(); }
    void RequestCount() override;

    // The tool's window that the last search found; 0 if it found none.
    WindowHandle AssistWindow() const { return m_assistWindow; }

  private:
    [[nodiscard]] bool Register();

    SharedState& m_state;
    AssistTransport& m_transport;
    std::function<void(bool)> m_enable = [](bool) {};
    MessageReceiver* m_receiver = nullptr;
    WindowHandle m_assistWindow = 0;
};

}  // namespace spellwick
