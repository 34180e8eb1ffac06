// Windows of this program on an X11 desktop with a window manager.
#include <gtest/gtest.h>

#include "platform/linux/x11_desktop.h"
#include "tests/support/x_session.h"

namespace spellwick {
namespace {

using testing_support::WaitUntil;
using testing_support::WindowManager;
using testing_support::XSession;

class OwnWindows : public testing::Test {
  protected:
    void Start(WindowManager manager) {
        if (const std::string missing = XSession::WhatIsMissing(manager); !missing.empty()) {
            GTEST_SKIP() << missing;
        }
        m_session = XSession::Start(manager);
        ASSERT_NE(m_session, nullptr);
        m_desktop = std::make_unique<X11Desktop>(m_session->Display());
        m_first = m_session->MakeWindow("first", "Spellwick", "first");
        m_second = m_session->MakeWindow("second", "Spellwick", "second");
    }

    std::unique_ptr<XSession> m_session;
    std::unique_ptr<X11Desktop> m_desktop;
    xcb_window_t m_first = 0;
    xcb_window_t m_second = 0;
};

TEST_F(OwnWindows, Activate_GivesTheKeyboardToTheOneThatIsNamed) {
    for (const WindowManager manager : {WindowManager::kOpenbox, WindowManager::kMetacity}) {
        Start(manager);
        if (IsSkipped() || HasFatalFailure()) {
            return;
        }
        for (const xcb_window_t window : {m_first, m_second, m_first}) {
            EXPECT_TRUE(m_desktop->Activate(window));
            EXPECT_TRUE(WaitUntil([&] { return m_session->FocusedWindow() == window; }));
            // A window manager says so after it has given the focus.
            EXPECT_TRUE(WaitUntil([&] { return m_session->ActiveWindow() == window; }));
        }
        EXPECT_FALSE(m_desktop->Activate(0));
    }
}

TEST_F(OwnWindows, Activate_WithoutAManager_IsLeftToTheToolkit) {
    Start(WindowManager::kNone);
    if (IsSkipped() || HasFatalFailure()) {
        return;
    }
    EXPECT_FALSE(m_desktop->Activate(m_first));
}

}  // namespace
}  // namespace spellwick
