// The windows of other programs on Windows: search, titles, activation.
#pragma once

#include <string>
#include <string_view>

#include "platform/client_windows.h"

namespace spellwick {

class WindowsClientWindows : public ClientWindows {
  public:
    WindowHandle FindWindowByClass(std::string_view windowClass) override;
    std::string WindowTitle(WindowHandle window) override;

    // The system may refuse the front to a program that the user is not working with, and says yes
    // all the same: what counts is which window is in front afterwards.
    bool SetForegroundWindow(WindowHandle window) override;
    bool IsForegroundWindow(WindowHandle window) override;

    // The keyboard's focus within another program is that program's own affair: true if the window
    // is in front and has it, or one of its controls.
    bool SetFocus(WindowHandle window) override;
};

}  // namespace spellwick
