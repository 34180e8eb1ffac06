// A helper program of the tests, and its window.
#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include <windows.h>

#include "platform/windows/wide_text.h"

namespace spellwick::testing_support {

inline bool WaitUntil(const std::function<bool()>& holds,
                      std::chrono::milliseconds patience = std::chrono::seconds(10)) {
    const auto deadline = std::chrono::steady_clock::now() + patience;
    while (!holds()) {
        if (std::chrono::steady_clock::now() > deadline) {
            return false;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    return true;
}

// Dispatches the messages posted to the windows of this thread.
inline void ServeEvents() {
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != FALSE) {
        DispatchMessageW(&message);
    }
}

class PeerProcess {
  public:
    // Starts the program beside the test, and waits for its window by the title.
    PeerProcess(const std::wstring& program, const std::vector<std::wstring>& arguments,
                const std::wstring& title);
    PeerProcess(const PeerProcess&) = delete;
    PeerProcess& operator=(const PeerProcess&) = delete;
    ~PeerProcess() { End(); }

    HWND Window() const { return m_window; }
    WindowHandle Handle() const { return HandleOf(m_window); }

    // The window's answer to WM_APP + command.
    LRESULT Ask(UINT command, WPARAM wParam = 0, LPARAM lParam = 0) const;
    // The same, without waiting.
    void Tell(UINT command, WPARAM wParam = 0, LPARAM lParam = 0) const {
        PostMessageW(m_window, WM_APP + command, wParam, lParam);
    }

    // Ends the process as a crash would, and waits for it.
    void End();

  private:
    PROCESS_INFORMATION m_process{};
    HWND m_window = nullptr;
};

}  // namespace spellwick::testing_support
