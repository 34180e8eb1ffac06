// Other programs' top-level windows: find one by class, read its title, bring it to the front.
#pragma once

#include <chrono>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "text/number_types.h"

namespace spellwick {

// What a system's window classes are.
enum class WindowClassKind { kX11, kWindows };

struct TopLevelWindow {
    WindowHandle handle = 0;
    std::string windowClass;
    std::string instance;  // the first half of WM_CLASS; empty where there is no such thing
    std::string title;     // valid UTF-8

    bool operator==(const TopLevelWindow&) const = default;
};

// On the screen, in the pixels of the system.
struct WindowArea {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;

    bool operator==(const WindowArea&) const = default;
};

// No call throws, and none waits longer than told. A window that is gone is no error.
class ClientWindows {
  public:
    virtual ~ClientWindows() = default;

    // The top-level window of this class, 0 if there is none. With several, one of them.
    [[nodiscard]] virtual WindowHandle FindWindowByClass(std::string_view windowClass) = 0;

    // The top-level window of the first of these classes that has one, 0 if none has. A window that
    // is only likely to be of its class is taken when there is no certain one of any of them.
    [[nodiscard]] virtual WindowHandle FindWindowOfClasses(
        std::span<const std::string_view> windowClasses) {
        for (const std::string_view windowClass : windowClasses) {
            if (const WindowHandle window = FindWindowByClass(windowClass)) {
                return window;
            }
        }
        return 0;
    }

    [[nodiscard]] virtual WindowClassKind ClassKind() const { return WindowClassKind::kX11; }

    // The visible top-level windows of any of these classes, topmost first. On X11 a class counts
    // if it is either half of WM_CLASS; names of Windows' classes and programs have no case.
    [[nodiscard]] virtual std::vector<TopLevelWindow> WindowsOfClasses(
        const std::vector<std::string>& /*classes*/) {
        return {};
    }

    // All visible top-level windows of other programs, topmost first.
    [[nodiscard]] virtual std::vector<TopLevelWindow> AllWindows() { return {}; }

    // The folders that the window's program may keep its data in, the likeliest first; empty if the
    // window is gone, or the program is another user's or another machine's.
    [[nodiscard]] virtual std::vector<std::filesystem::path> ProgramFolders(
        WindowHandle /*window*/) {
        return {};
    }

    // The whole title as valid UTF-8; empty if the window is gone.
    virtual std::string WindowTitle(WindowHandle window) = 0;

    // Where the window is; nothing if it is gone, cannot be seen, or is unknown.
    [[nodiscard]] virtual std::optional<WindowArea> AreaOf(WindowHandle /*window*/) {
        return std::nullopt;
    }

    // True once the system itself names the window as the active one; false if it does not within
    // half a second, or if the window is gone.
    [[nodiscard]] virtual bool SetForegroundWindow(WindowHandle window) = 0;

    // True while the system itself names the window as the active one; false if it is gone.
    [[nodiscard]] virtual bool IsForegroundWindow(WindowHandle window) = 0;

    // True if the window has the keyboard afterwards; false if it is gone, cannot be seen or does
    // not want the keyboard.
    [[nodiscard]] virtual bool SetFocus(WindowHandle window) = 0;

    // True while what is typed goes into the window; false if it is gone. Cheap enough for a look
    // before each key.
    [[nodiscard]] virtual bool HasKeyboard(WindowHandle window) = 0;

    // True while what is typed goes into any window of the program that this one belongs to.
    [[nodiscard]] virtual bool ProgramHasKeyboard(WindowHandle window) = 0;

    // True once the window's program has read every key typed before, and the key map of now.
    // False if it does not say so within the patience; at once if it never says so.
    [[nodiscard]] virtual bool WaitUntilRead(WindowHandle window,
                                             std::chrono::milliseconds patience) = 0;

    // True if the window's program follows a change of the key map late, and has room for few codes
    // that had no symbol before: one that runs under Wine.
    [[nodiscard]] virtual bool FollowsKeyMapLate(WindowHandle window) = 0;
};

}  // namespace spellwick
