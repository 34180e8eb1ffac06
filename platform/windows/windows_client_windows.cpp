#include "platform/windows/windows_client_windows.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <thread>

#include "platform/windows/desktop_windows.h"
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

std::string ClassOf(HWND window) {
    std::array<wchar_t, 257> text{};  // the longest name of a class, and its end
    const int length = GetClassNameW(window, text.data(), static_cast<int>(text.size()));
    return Utf8FromWide({text.data(), static_cast<std::size_t>(std::max(length, 0))});
}

// Topmost first.
std::vector<HWND> VisibleWindows() {
    std::vector<HWND> windows = DesktopWindows();
    std::erase_if(windows, [](HWND window) { return IsWindowVisible(window) == FALSE; });
    return windows;
}

TopLevelWindow Describe(HWND window) {
    return {HandleOf(window), ClassOf(window), {}, Utf8FromWide(WideTitle(window))};
}

}  // namespace

WindowHandle WindowsClientWindows::FindWindowByClass(std::string_view windowClass) {
    return HandleOf(FindWindowW(WideFromUtf8(windowClass).c_str(), nullptr));
}

// The system searches by class alone far faster than it tells the classes of all windows.
std::vector<TopLevelWindow> WindowsClientWindows::WindowsOfClasses(
    const std::vector<std::string>& classes) {
    constexpr std::size_t kMost = 100;
    std::vector<TopLevelWindow> listed;
    std::size_t withWindows = 0;
    for (const std::string& each : classes) {
        const std::wstring wide = WideFromUtf8(each);
        const std::size_t before = listed.size();
        HWND window = FindWindowExW(nullptr, nullptr, wide.c_str(), nullptr);
        for (std::size_t count = 0; window != nullptr && count < kMost; ++count) {
            if (IsWindowVisible(window) != FALSE) {
                listed.push_back(Describe(window));
            }
            window = FindWindowExW(nullptr, window, wide.c_str(), nullptr);
        }
        if (listed.size() > before) {
            ++withWindows;
        }
    }
    if (withWindows > 1) {
        const std::vector<HWND> order = VisibleWindows();
        std::ranges::stable_sort(listed, {}, [&](const TopLevelWindow& window) {
            return std::ranges::find(order, HwndOf(window.handle)) - order.begin();
        });
    }
    return listed;
}

std::vector<TopLevelWindow> WindowsClientWindows::AllWindows() {
    std::vector<TopLevelWindow> listed;
    for (HWND window : VisibleWindows()) {
        DWORD process = 0;
        GetWindowThreadProcessId(window, &process);
        if (process != GetCurrentProcessId()) {
            listed.push_back(Describe(window));
        }
    }
    return listed;
}

std::vector<std::filesystem::path> WindowsClientWindows::ProgramFolders(WindowHandle window) {
    constexpr std::size_t kLongestPath = 32768;
    DWORD id = 0;
    GetWindowThreadProcessId(HwndOf(window), &id);
    HANDLE process = id == 0 ? nullptr : OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, id);
    if (process == nullptr) {
        return {};
    }
    std::wstring path(kLongestPath, L'\0');
    DWORD length = static_cast<DWORD>(path.size());
    const bool told = QueryFullProcessImageNameW(process, 0, path.data(), &length) != FALSE;
    CloseHandle(process);
    if (!told) {
        return {};
    }
    path.resize(length);
    return {std::filesystem::path(path).parent_path()};
}

std::string WindowsClientWindows::WindowTitle(WindowHandle window) {
    return window == 0 ? std::string() : Utf8FromWide(WideTitle(HwndOf(window)));
}

std::optional<WindowArea> WindowsClientWindows::AreaOf(WindowHandle window) {
    HWND target = HwndOf(window);
    RECT rect{};
    if (IsWindowVisible(target) == FALSE || IsIconic(target) != FALSE ||
        GetWindowRect(target, &rect) == FALSE) {
        return std::nullopt;
    }
    return WindowArea{rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top};
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
