#include "tests/support/x_session.h"

#include <array>
#include <filesystem>
#include <string>

#include <gtest/gtest.h>
#include <xcb/xtest.h>

namespace spellwick::testing_support {
namespace {

TEST(XSession, Openbox_ManagesAWindow) {
    if (const std::string missing = XSession::WhatIsMissing(); !missing.empty()) {
        GTEST_SKIP() << missing;
    }
    const auto session = XSession::Start();
    ASSERT_TRUE(session);
    const xcb_window_t window = session->MakeWindow("it", "It", "a title");
    EXPECT_EQ(session->WaitForWindow("a title"), window);
    EXPECT_TRUE(WaitUntil([&] { return session->ActiveWindow() == window; }));
    session->DestroyWindow(window);
    EXPECT_TRUE(session->ClientList().empty());
}

TEST(XSession, SyncWindowManager_AfterAClick_ItsWindowIsActive) {
    if (const std::string missing = XSession::WhatIsMissing(); !missing.empty()) {
        GTEST_SKIP() << missing;
    }
    const auto session = XSession::Start();
    ASSERT_TRUE(session);
    const std::array windows{session->MakeWindow("one", "One", "one"),
                             session->MakeWindow("two", "Two", "two")};
    xcb_connection_t* connection = session->Connection();
    for (std::size_t times = 0; times < 20; ++times) {
        const xcb_window_t window = windows[times % 2];
        xcb_warp_pointer(connection, XCB_NONE, window, 0, 0, 0, 0, 10, 10);
        for (const std::uint8_t event :
             {std::uint8_t{XCB_BUTTON_PRESS}, std::uint8_t{XCB_BUTTON_RELEASE}}) {
            xcb_test_fake_input(connection, event, 1, XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
            ASSERT_TRUE(session->SyncWindowManager());
        }
        ASSERT_EQ(session->ActiveWindow(), window) << times;
    }
}

TEST(XSession, KeyboardState_ShowsKeysLocksAndMap) {
    if (const std::string missing = XSession::WhatIsMissing(WindowManager::kNone);
        !missing.empty()) {
        GTEST_SKIP() << missing;
    }
    const auto session = XSession::Start(WindowManager::kNone);
    ASSERT_TRUE(session);
    ASSERT_TRUE(session->SetLayout("us"));
    const KeyboardState before = session->Keyboard();
    EXPECT_NE(before.keymap.find("xkb_keymap"), std::string::npos) << before.keymap;
    EXPECT_EQ(before, session->Keyboard());

    const std::uint8_t key = session->KeycodeOf('q');
    session->FakeKey(key, true);
    EXPECT_NE(before, session->Keyboard());
    session->FakeKey(key, false);
    EXPECT_EQ(before, session->Keyboard());

    session->LockModifiers(XCB_MOD_MASK_LOCK);
    EXPECT_EQ(session->Keyboard().lockedModifiers, XCB_MOD_MASK_LOCK);
    session->LockModifiers(0);
    ASSERT_TRUE(session->SetLayout("de"));
    EXPECT_NE(before.keymap, session->Keyboard().keymap);
}

TEST(ChildProcess, Output_IsReadWhileItRunsAndAfter) {
    const RunResult done = RunToEnd({"sh", "-c", "echo out; echo err >&2; exit 3"});
    EXPECT_EQ(done.exitCode, 3);
    EXPECT_EQ(done.output, "out\nerr\n");
    EXPECT_EQ(RunToEnd({"no-such-program-here"}).exitCode, 127);
}

TEST(ChildProcess, Start_ReturnsWhenTheChildIsTheProgram) {
    const auto ours = std::filesystem::read_symlink("/proc/self/exe");
    for (int k = 0; k < 20; ++k) {
        const auto child = ChildProcess::Start({"sleep", "60"});
        ASSERT_TRUE(child);
        const auto link = "/proc/" + std::to_string(child->Id()) + "/exe";
        EXPECT_NE(std::filesystem::read_symlink(link), ours);
    }
}

}  // namespace
}  // namespace spellwick::testing_support
