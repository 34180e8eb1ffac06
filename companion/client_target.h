// The game's window as the target of keys.
#pragma once

#include "link/key_sender.h"
#include "model/shared_state.h"
#include "platform/client_windows.h"

namespace spellwick {

class ClientTarget : public KeyTarget {
  public:
    // Both outlive the target.
    ClientTarget(ClientWindows& clients, const SharedState& state)
        : m_clients(clients), m_state(state) {}

    // With the option on, only the game's window gets keys; with it off, any but our own.
    bool MayType() override {
        return m_state.CheckFront ? m_clients.HasKeyboard(m_state.ClientWindow)
                                  : !m_clients.ProgramHasKeyboard(m_state.MainWindowHandle);
    }

    bool HasRead(std::chrono::milliseconds patience) override {
        return m_clients.HasKeyboard(m_state.ClientWindow) &&
               m_clients.WaitUntilRead(m_state.ClientWindow, patience);
    }

    bool FollowsKeyMapLate() override { return m_clients.FollowsKeyMapLate(m_state.ClientWindow); }

  private:
    ClientWindows& m_clients;
    const SharedState& m_state;
};

}  // namespace spellwick
