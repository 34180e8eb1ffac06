// Bringing a window to the front from another desktop, under window managers that differ in it.
#include <chrono>

#include "tests/platform/x11_client_windows_fixture.h"

namespace spellwick {
namespace {

using testing_support::WaitUntil;
using testing_support::WindowManager;

constexpr std::uint32_t kAllDesktops = 0xffffffff;

class OnAnotherDesktop : public X11ClientWindowsTest,
                         public testing::WithParamInterface<WindowManager> {
    void SetUp() override { Open(GetParam()); }
};

TEST_P(OnAnotherDesktop, Foreground_GoesThere) {
    const xcb_window_t client = session->MakeWindow("a", "Ultima Online", "one");
    const xcb_window_t ours = session->MakeWindow("b", "Ours", "two");
    ASSERT_TRUE(windows->SetForegroundWindow(ours));
    ASSERT_TRUE(windows->SetFocus(ours));
    for (const std::uint32_t desktop : {1U, 2U, 1U}) {
        SCOPED_TRACE(desktop);
        ASSERT_TRUE(session->PutOnDesktop(client, desktop));
        ASSERT_TRUE(WaitUntil([&] { return session->ActiveWindow() != client; }));
        EXPECT_FALSE(windows->IsForegroundWindow(client));
        EXPECT_TRUE(windows->SetForegroundWindow(client));
        EXPECT_EQ(session->CurrentDesktop(), desktop);
        EXPECT_EQ(session->ActiveWindow(), client);
        EXPECT_TRUE(windows->SetFocus(client));
        EXPECT_TRUE(windows->HasKeyboard(client));
        EXPECT_FALSE(windows->HasKeyboard(ours));
        // And back.
        EXPECT_TRUE(windows->SetForegroundWindow(ours));
        EXPECT_EQ(session->CurrentDesktop(), 0U);
        EXPECT_TRUE(windows->SetFocus(ours));
        EXPECT_TRUE(windows->HasKeyboard(ours));
    }
}

TEST_P(OnAnotherDesktop, Foreground_OfAWindowOnAllDesktops_StaysHere) {
    const xcb_window_t client = session->MakeWindow("a", "Ultima Online", "one");
    const xcb_window_t ours = session->MakeWindow("b", "Ours", "two");
    // Else the manager may give the new window the keyboard later than the client.
    ASSERT_TRUE(windows->SetForegroundWindow(ours));
    ASSERT_TRUE(windows->SetFocus(ours));
    ASSERT_TRUE(session->PutOnDesktop(client, kAllDesktops));
    EXPECT_TRUE(windows->SetForegroundWindow(client));
    EXPECT_EQ(session->CurrentDesktop(), 0U);
    // Metacity names the window before it has the keyboard.
    EXPECT_TRUE(windows->SetFocus(client));
    EXPECT_TRUE(windows->HasKeyboard(client));
}

INSTANTIATE_TEST_SUITE_P(Managers, OnAnotherDesktop,
                         testing::Values(WindowManager::kOpenbox, WindowManager::kMetacity),
                         [](const auto& row) {
                             return row.param == WindowManager::kOpenbox ? "Openbox" : "Metacity";
                         });

}  // namespace
}  // namespace spellwick
