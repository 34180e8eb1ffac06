// The windows of other programs on Windows: search, titles, activation.
#pragma once

#include <string>
#include <string_view>

#include "platform/client_windows.h"

namespace spellwick {

class WindowsClientWindows : public ClientWindows {
  public:
    WindowHandle FindWindowByClass(std::string_view windowClass) override;
    WindowClassKind ClassKind() const override { return WindowClassKind::kWindows; }
    std::vector<TopLevelWindow> WindowsOfClasses(const std::vector<std::string>& classes) override;
    std::vector<TopLevelWindow> AllWindows() override;
    std::vector<std::filesystem::path> ProgramFolders(WindowHandle window) override;
    std::string WindowTitle(WindowHandle window) override;

    // The system may refuse the foreground to a program that the user is not working with, and
    // still report success, so read back which window is in front.
    std::optional<WindowArea> AreaOf(WindowHandle window) override;
    bool SetForegroundWindow(WindowHandle window) override;
    bool IsForegroundWindow(WindowHandle window) override;

    // Another program manages its own focus: true if the window is in front and it or one of its
    // controls has the focus.
    bool SetFocus(WindowHandle window) override;

    // Input goes to the window in front.
    bool HasKeyboard(WindowHandle window) override { return IsForegroundWindow(window); }
    bool ProgramHasKeyboard(WindowHandle window) override;
    bool FollowsKeyMapLate(WindowHandle /*window*/) override { return false; }
    // A key carries all that a program reads of it.
    bool WaitUntilRead(WindowHandle /*window*/, std::chrono::milliseconds /*patience*/) override {
        return true;
    }
};

}  // namespace spellwick
