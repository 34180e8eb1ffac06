// What the program asks of the Windows desktop: the sound, opening files and pages, and windows
// that stay above the others or out of the taskbar.
#pragma once

#include "platform/desktop.h"

namespace spellwick {

class WindowsDesktop : public Desktop {
  public:
    void Beep() override;
    bool OpenDocument(const std::filesystem::path& file) override;
    bool HasProgramFor(const std::filesystem::path& file) override;
    bool OpenWebPage(const std::string& address) override;
    bool SetTopMost(WindowHandle window, bool topMost) override;
    bool LeaveTaskList(WindowHandle window) override;
};

}  // namespace spellwick
