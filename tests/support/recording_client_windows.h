// Client windows that a test makes up, and the record of what was asked of them.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/client_windows.h"

namespace spellwick {

class RecordingClientWindows : public ClientWindows {
  public:
    struct Window {
        WindowHandle handle = 0;
        std::string windowClass;
        std::string title;
        bool refusesFocus = false;
        std::string instance{};  // the other half of an X11 class
    };

    // Every call except pure queries adds a line to `log`, if there is one: "find Ultima Online",
    // "foreground 7", "focus 7". Several doubles can share a log, which shows the order.
    explicit RecordingClientWindows(std::vector<std::string>* log = nullptr) : m_log(log) {}

    WindowHandle FindWindowByClass(std::string_view windowClass) override;
    WindowClassKind ClassKind() const override { return classKind; }
    std::vector<TopLevelWindow> WindowsOfClasses(const std::vector<std::string>& classes) override;
    std::vector<TopLevelWindow> AllWindows() override;
    std::vector<std::filesystem::path> ProgramFolders(WindowHandle window) override {
        Log("folders of " + std::to_string(window));
        return programFolders;
    }
    std::string WindowTitle(WindowHandle window) override;
    bool SetForegroundWindow(WindowHandle window) override;
    bool IsForegroundWindow(WindowHandle window) override { return foreground == window; }
    bool SetFocus(WindowHandle window) override;
    bool HasKeyboard(WindowHandle window) override {
        return Find(window) != nullptr && foreground == window && !keyboardIsElsewhere;
    }
    bool ProgramHasKeyboard(WindowHandle /*window*/) override { return ourProgramHasKeyboard; }
    bool FollowsKeyMapLate(WindowHandle window) override {
        const Window* found = Find(window);
        return found != nullptr && found->windowClass.ends_with(".exe");
    }
    bool WaitUntilRead(WindowHandle window, std::chrono::milliseconds /*patience*/) override {
        return Find(window) != nullptr;
    }

    // The desktop, top window first. A test may change it at any time.
    std::vector<Window> windows;
    // Of every window's program.
    std::vector<std::filesystem::path> programFolders;
    WindowClassKind classKind = WindowClassKind::kX11;
    WindowHandle foreground = 0;
    WindowHandle focus = 0;
    // Whatever window is in front.
    bool keyboardIsElsewhere = false;
    bool ourProgramHasKeyboard = false;
    // Called at the end of each SetForegroundWindow.
    std::function<void()> afterSetForeground;

  private:
    const Window* Find(WindowHandle window) const;
    void Log(std::string line);

    std::vector<std::string>* m_log;
};

}  // namespace spellwick
