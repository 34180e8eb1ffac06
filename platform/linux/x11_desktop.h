// What the program asks of an X11 desktop: the bell, the openers of files and pages, and windows
// that stay above the others.
#pragma once

#include <memory>

#include "platform/desktop.h"

struct xcb_connection_t;

namespace spellwick {

class X11Desktop : public Desktop {
  public:
    // Opens its own connection to the display of the environment; without one the bell and the
    // top-most state do nothing.
    X11Desktop();

    void Beep() override;
    bool OpenDocument(const std::filesystem::path& file) override;
    bool OpenWebPage(const std::string& address) override;
    bool SetTopMost(WindowHandle window, bool topMost) override;

  private:
    struct Disconnect {
        void operator()(xcb_connection_t* connection) const;
    };

    bool IsUp() const;

    std::unique_ptr<xcb_connection_t, Disconnect> m_connection;
    std::uint32_t m_root = 0;
};

}  // namespace spellwick
