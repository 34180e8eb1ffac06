// What the program asks of the Windows desktop: the sound, the shell's openers, and windows that
// stay above the others or out of the task bar.
#pragma once

#include "platform/desktop.h"

namespace spellwick {

class WindowsDesktop : public Desktop {
  public:
    void Beep() override;
    bool OpenDocument(const std::filesystem::path& file) override;
    bool OpenWebPage(const std::string& address) override;
    bool SetTopMost(WindowHandle window, bool topMost) override;
    bool LeaveTaskList(WindowHandle window) override;
};

}  // namespace spellwick
