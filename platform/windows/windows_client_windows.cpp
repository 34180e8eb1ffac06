#include "platform/windows/windows_client_windows.h"

#include <chrono>
#include <thread>

#include "platform/windows/wide_text.h"

namespace spellwick {

using namespace std::chrono_literals;

namespace {

constexpr auto kActivation = 500ms;
// The time between the activation of a window and its own report of its focus.
constexpr auto kFocusFollows = 100ms;
constexpr auto kLookAgain = 5ms;

template <typename Holds>
bool WaitFor(std::chrono::milliseconds patience, const Holds& holds) {
    const auto deadline = std::chrono::steady_clock::now() + patience;
    while (!holds()) {
        if (std::chrono::steady_clock::now() >= deadline) {
            return false;
        }
        std::this_thread::sleep_for(kLookAgain);
    }
    return true;
}

bool HasFocus(HWND window) {
    GUITHREADINFO thread{};
    thread.cbSize = sizeof thread;
    if (GetGUIThreadInfo(GetWindowThreadProcessId(window, nullptr), &thread) == FALSE) {
        return false;
    }
    return thread.hwndFocus == window || IsChild(window, thread.hwndFocus) != FALSE;
}

}  // namespace

WindowHandle WindowsClientWindows::FindWindowByClass(std::string_view windowClass) {
    return HandleOf(FindWindowW(WideFromUtf8(windowClass).c_str(), nullptr));
}

std::string WindowsClientWindows::WindowTitle(WindowHandle window) {
    return window == 0 ? std::string() : Utf8FromWide(WideTitle(HwndOf(window)));
}

bool WindowsClientWindows::SetForegroundWindow(WindowHandle window) {
    HWND target = HwndOf(window);
    if (window == 0 || IsWindow(target) == FALSE || IsWindowVisible(target) == FALSE) {
        return false;
    }
    if (IsIconic(target) != FALSE) {
        // Do not wait for it: the window may hang.
        ShowWindowAsync(target, SW_RESTORE);
    }
    ::SetForegroundWindow(target);
    bool gone = false;
    const bool ended = WaitFor(kActivation, [&] {
        gone = IsWindow(target) == FALSE;
        return gone || GetForegroundWindow() == target;
    });
    return ended && !gone;
}

bool WindowsClientWindows::IsForegroundWindow(WindowHandle window) {
    return window != 0 && GetForegroundWindow() == HwndOf(window);
}

bool WindowsClientWindows::SetFocus(WindowHandle window) {
    HWND target = HwndOf(window);
    if (window == 0 || IsWindow(target) == FALSE || IsWindowVisible(target) == FALSE ||
        IsWindowEnabled(target) == FALSE) {
        return false;
    }
    return WaitFor(kFocusFollows,
                   [&] { return GetForegroundWindow() == target && HasFocus(target); });
}

bool WindowsClientWindows::ProgramHasKeyboard(WindowHandle window) {
    DWORD ours = 0;
    DWORD front = 0;
    GetWindowThreadProcessId(HwndOf(window), &ours);
    GetWindowThreadProcessId(GetForegroundWindow(), &front);
    return ours != 0 && ours == front;
}

}  // namespace spellwick
