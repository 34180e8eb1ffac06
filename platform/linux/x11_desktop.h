// What the program asks of an X11 desktop: the bell, opening files and pages, and windows that stay
// above the others.
#pragma once

#include "platform/desktop.h"
#include "platform/linux/x11_connection.h"
#include "platform/linux/x11_window_hints.h"

namespace spellwick {

class X11Desktop : public Desktop {
  public:
    // An empty display means the one in the environment. Without a connection the bell and the
    // top-most state do nothing.
    explicit X11Desktop(const std::string& display)
        : m_connection(display), m_hints(m_connection) {}

    void Beep() override;
    bool OpenDocument(const std::filesystem::path& file) override;
    bool HasProgramFor(const std::filesystem::path& file) override;
    bool OpenWebPage(const std::string& address) override;
    bool SetTopMost(WindowHandle window, bool topMost) override;
    bool LeaveTaskList(WindowHandle window) override;
    bool Activate(WindowHandle window) override;

  private:
    bool IsMapped(WindowHandle window);

    X11Connection m_connection;
    X11WindowHints m_hints;
};

}  // namespace spellwick
