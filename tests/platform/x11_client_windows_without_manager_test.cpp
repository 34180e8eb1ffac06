// The real search and activation without a window manager, and with one played by the test.
#include <unistd.h>

#include "platform/linux/program_folders.h"
#include "tests/platform/x11_client_windows_fixture.h"
#include "tests/support/child_process.h"

namespace spellwick {
namespace {

class WithoutManager : public X11ClientWindowsTest {
    void SetUp() override { Open(testing_support::WindowManager::kNone); }

  protected:
    // From here on the test is the window manager.
    void PlayManager() {
        const xcb_window_t check = session->MakeWindow("manager", "Manager", "");
        for (const xcb_window_t window : {session->Root(), check}) {
            SetCells(window, "_NET_SUPPORTING_WM_CHECK", "WINDOW", {check});
        }
        SetCells(session->Root(), "_NET_SUPPORTED", "ATOM", {session->Atom("_NET_ACTIVE_WINDOW")});
    }

    void RefuseInput(xcb_window_t window) {
        constexpr std::uint32_t kInputHint = 1;
        SetCells(window, "WM_HINTS", "WM_HINTS", {kInputHint, 0, 0, 0, 0, 0, 0, 0, 0});
    }
};

TEST_F(WithoutManager, Process_OfTheWindowGivesItsFolders) {
    const auto child = testing_support::ChildProcess::Start({"sleep", "60"}, {});
    ASSERT_TRUE(child);
    const auto process = static_cast<std::uint32_t>(child->Id());
    const xcb_window_t game = session->MakeWindow("game", "Game", "game");
    EXPECT_TRUE(windows->ProgramFolders(game).empty()) << "it does not say whose it is";
    SetCells(game, "_NET_WM_PID", "CARDINAL", {process});
    EXPECT_EQ(windows->ProgramFolders(game), ProgramFoldersOf(static_cast<pid_t>(process)));
    EXPECT_FALSE(windows->ProgramFolders(game).empty());
    SetProperty(game, "WM_CLIENT_MACHINE", XCB_ATOM_STRING, "another machine");
    EXPECT_TRUE(windows->ProgramFolders(game).empty()) << "a process there has another number";
}

TEST_F(WithoutManager, AllWindows_AreThoseOfOtherPrograms) {
    const xcb_window_t other = session->MakeWindow("other", "Other", "other");
    const xcb_window_t ours = session->MakeWindow("ours", "Ours", "ours");
    SetCells(ours, "_NET_WM_PID", "CARDINAL", {static_cast<std::uint32_t>(getpid())});
    const std::vector<TopLevelWindow> listed = windows->AllWindows();
    ASSERT_EQ(listed.size(), 1U);
    EXPECT_EQ(listed[0].handle, other);
    EXPECT_EQ(windows->FindWindowByClass("Ours"), ours)
        << "a search by class finds it all the same";
}

// A window manager would give the focus to a window again.
TEST_F(WithoutManager, KeyboardThatFollowsThePointer_IsTheProgramsBelowIt) {
    const xcb_window_t ours = session->MakeWindow("ours", "Ours", "ours");
    ASSERT_TRUE(windows->SetForegroundWindow(ours));
    EXPECT_TRUE(windows->HasKeyboard(ours));
    xcb_set_input_focus(session->Connection(), XCB_INPUT_FOCUS_PARENT, XCB_INPUT_FOCUS_POINTER_ROOT,
                        XCB_CURRENT_TIME);
    xcb_warp_pointer(session->Connection(), XCB_NONE, ours, 0, 0, 0, 0, 5, 5);
    session->Sync();
    EXPECT_FALSE(windows->HasKeyboard(ours));
    EXPECT_TRUE(windows->ProgramHasKeyboard(ours));
    xcb_warp_pointer(session->Connection(), XCB_NONE, session->Root(), 0, 0, 0, 0, 1000, 700);
    session->Sync();
    EXPECT_FALSE(windows->ProgramHasKeyboard(ours));
}

TEST_F(WithoutManager, FindTitleAndActivation_WorkOnTheTree) {
    const xcb_window_t one = session->MakeWindow("a", kClient, "one");
    const xcb_window_t two = session->MakeWindow("b", "B", "two");
    EXPECT_EQ(windows->FindWindowByClass(kClient), one);
    EXPECT_EQ(windows->WindowTitle(one), "one");
    EXPECT_TRUE(windows->SetForegroundWindow(one));
    EXPECT_EQ(session->FocusedWindow(), one);
    EXPECT_TRUE(windows->IsForegroundWindow(one));
    EXPECT_TRUE(windows->SetForegroundWindow(two));
    EXPECT_EQ(session->FocusedWindow(), two);
    EXPECT_FALSE(windows->IsForegroundWindow(one));
    EXPECT_TRUE(windows->SetFocus(one));
    EXPECT_EQ(session->FocusedWindow(), one);
    session->DestroyWindow(one);
    EXPECT_EQ(windows->FindWindowByClass(kClient), 0U);
    EXPECT_FALSE(windows->SetForegroundWindow(one));
}

TEST_F(WithoutManager, WindowWithinAFrame_IsFoundByItsState) {
    const xcb_window_t frame = session->MakeWindow("frame", "Frame", "");
    const xcb_window_t client = session->MakeWindow("a", kClient, "one");
    xcb_reparent_window(session->Connection(), client, frame, 0, 0);
    session->Sync();
    EXPECT_EQ(windows->FindWindowByClass(kClient), 0U);
    SetCells(client, "WM_STATE", "WM_STATE", {1, 0});
    EXPECT_EQ(windows->FindWindowByClass(kClient), client);
    EXPECT_TRUE(windows->SetForegroundWindow(client));
    EXPECT_EQ(session->FocusedWindow(), client);
}

TEST_F(WithoutManager, ListWithoutStacking_GoesFromTheNewestToTheOldest) {
    const xcb_window_t older = session->MakeWindow("a", kClient, "one");
    const xcb_window_t newer = session->MakeWindow("b", kClient, "two");
    const xcb_window_t unlisted = session->MakeWindow("c", "Unlisted", "three");
    PlayManager();
    EXPECT_EQ(windows->FindWindowByClass("Unlisted"), unlisted);
    SetCells(session->Root(), "_NET_CLIENT_LIST", "WINDOW", {newer, older});
    EXPECT_EQ(windows->FindWindowByClass(kClient), older);
    EXPECT_EQ(windows->FindWindowByClass("Unlisted"), 0U);
    SetCells(session->Root(), "_NET_CLIENT_LIST_STACKING", "WINDOW", {older, newer});
    EXPECT_EQ(windows->FindWindowByClass(kClient), newer);
}

TEST_F(WithoutManager, ListsOfAnotherType_AreNotRead) {
    const xcb_window_t client = session->MakeWindow("a", kClient, "one");
    PlayManager();
    for (const char* list : {"_NET_CLIENT_LIST", "_NET_CLIENT_LIST_STACKING"}) {
        SetCells(session->Root(), list, "CARDINAL", {});
    }
    EXPECT_EQ(windows->FindWindowByClass(kClient), client);
    SetProperty(session->Root(), "_NET_CLIENT_LIST", session->Atom("WINDOW"), "abc");
    EXPECT_EQ(windows->FindWindowByClass(kClient), client);
    SetCells(session->Root(), "_NET_CLIENT_LIST", "WINDOW", {});
    EXPECT_EQ(windows->FindWindowByClass(kClient), 0U);
}

TEST_F(WithoutManager, ActiveWindow_IsTheFirstOfTheValues) {
    const xcb_window_t one = session->MakeWindow("a", "A", "one");
    const xcb_window_t two = session->MakeWindow("b", "B", "two");
    PlayManager();
    EXPECT_FALSE(windows->IsForegroundWindow(one));
    // Some window managers write a second value.
    SetCells(session->Root(), "_NET_ACTIVE_WINDOW", "WINDOW", {one, 0});
    EXPECT_TRUE(windows->IsForegroundWindow(one));
    EXPECT_FALSE(windows->IsForegroundWindow(two));
    EXPECT_FALSE(windows->SetFocus(two));
    SetCells(session->Root(), "_NET_ACTIVE_WINDOW", "WINDOW", {});
    EXPECT_FALSE(windows->IsForegroundWindow(one));
    EXPECT_TRUE(windows->SetFocus(two));
}

TEST_F(WithoutManager, WindowThatTakesTheFocusItself_IsAskedTo) {
    const xcb_window_t window = session->MakeWindow("a", kClient, "one");
    RefuseInput(window);
    SetCells(window, "WM_PROTOCOLS", "ATOM",
             {session->Atom("WM_DELETE_WINDOW"), session->Atom("WM_TAKE_FOCUS")});
    EXPECT_FALSE(windows->SetFocus(window));
    session->Sync();
    bool asked = false;
    while (const auto event = OwnReply(xcb_poll_for_event(session->Connection()))) {
        if ((event->response_type & 0x7f) == XCB_CLIENT_MESSAGE) {
            const void* untyped = event.get();
            const auto* message = static_cast<const xcb_client_message_event_t*>(untyped);
            asked = asked ||
                    (message->window == window && message->type == session->Atom("WM_PROTOCOLS") &&
                     message->data.data32[0] == session->Atom("WM_TAKE_FOCUS") &&
                     message->data.data32[1] != XCB_CURRENT_TIME);
        }
    }
    EXPECT_TRUE(asked);
}

TEST_F(WithoutManager, WindowThatWantsNoInput_DoesNotGetTheFocus) {
    const xcb_window_t other = session->MakeWindow("b", "B", "two");
    const xcb_window_t window = session->MakeWindow("a", kClient, "one");
    ASSERT_TRUE(windows->SetFocus(other));
    RefuseInput(window);
    EXPECT_FALSE(windows->SetFocus(window));
    EXPECT_EQ(session->FocusedWindow(), other);
}

TEST_F(WithoutManager, HiddenWindow_DoesNotGetTheFocus) {
    const xcb_window_t window = session->MakeWindow("a", kClient, "one");
    xcb_unmap_window(session->Connection(), window);
    session->Sync();
    EXPECT_FALSE(windows->SetFocus(window));
    EXPECT_FALSE(windows->SetForegroundWindow(window));
    EXPECT_EQ(windows->FindWindowByClass(kClient), 0U);
}

}  // namespace
}  // namespace spellwick
