// Where the keyboard is, and typing into a window that loses it.
#include "tests/platform/x11_typing_fixture.h"

namespace spellwick {
namespace {

using namespace std::chrono_literals;
using testing_support::KeyboardState;
using testing_support::KeyWitness;

TEST_F(X11Typing, Keyboard_IsWhereTheFocusIs) {
    const xcb_window_t ours = session->MakeWindow("ours", "Ours", "ours");
    const xcb_window_t alsoOurs = session->MakeWindow("ours", "Ours", "ours too");
    ASSERT_TRUE(windows->SetForegroundWindow(witness->Window()));
    EXPECT_TRUE(windows->HasKeyboard(witness->Window()));
    EXPECT_FALSE(windows->HasKeyboard(ours));
    EXPECT_FALSE(windows->HasKeyboard(0));
    EXPECT_TRUE(windows->ProgramHasKeyboard(witness->Window()));
    EXPECT_FALSE(windows->ProgramHasKeyboard(ours));
    ASSERT_TRUE(windows->SetForegroundWindow(alsoOurs));
    EXPECT_FALSE(windows->HasKeyboard(witness->Window()));
    EXPECT_FALSE(windows->HasKeyboard(ours));
    EXPECT_TRUE(windows->ProgramHasKeyboard(ours));
    EXPECT_FALSE(windows->ProgramHasKeyboard(witness->Window()));
    EXPECT_FALSE(windows->ProgramHasKeyboard(0));
    // A window inside the one asked for.
    const xcb_window_t inside = xcb_generate_id(session->Connection());
    xcb_create_window(session->Connection(), XCB_COPY_FROM_PARENT, inside, ours, 0, 0, 10, 10, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
    xcb_map_window(session->Connection(), inside);
    ASSERT_TRUE(windows->SetForegroundWindow(ours));
    xcb_set_input_focus(session->Connection(), XCB_INPUT_FOCUS_PARENT, inside, XCB_CURRENT_TIME);
    session->Sync();
    EXPECT_TRUE(windows->HasKeyboard(ours));
}

// Takes the front away from a window before one of its keystrokes.
class LosesTheFront : public AnyTarget {
  public:
    LosesTheFront(ClientWindows& windows, xcb_window_t window, xcb_window_t other, int stroke)
        : m_windows(windows), m_window(window), m_other(other), m_left(stroke) {}

    bool MayType() override {
        if (m_left-- == 0) {
            EXPECT_TRUE(m_windows.SetForegroundWindow(m_other));
        }
        return m_windows.HasKeyboard(m_window);
    }

  private:
    ClientWindows& m_windows;
    xcb_window_t m_window;
    xcb_window_t m_other;
    int m_left;
};

TEST_F(X11Typing, FrontLostWhileTyping_TheOtherWindowGetsNoKey) {
    ASSERT_TRUE(session->SetLayout("us"));
    const auto other = KeyWitness::Start(*session, "another window");
    ASSERT_TRUE(other);
    const KeyboardState before = session->Keyboard();
    KeystrokeSender sender(*keyboard, {8ms, 8ms}, 300ms);
    for (int stroke = 0; stroke < 5; ++stroke) {
        SCOPED_TRACE(stroke);
        ASSERT_TRUE(windows->SetForegroundWindow(witness->Window()));
        witness->ForgetKeys();
        LosesTheFront target(*windows, witness->Window(), other->Window(), stroke);
        const SendResult result = sender.SendKeys("%{f1}ABc{ENTER}", true, target);
        EXPECT_TRUE(result.stopped);
        EXPECT_EQ(result.strokes, static_cast<std::size_t>(stroke));
        const std::vector<std::string> typed{"", "<Alt+F1>", "<Alt+F1>A", "<Alt+F1>AB",
                                             "<Alt+F1>ABc"};
        const std::string& expected = typed.at(static_cast<std::size_t>(stroke));
        EXPECT_EQ(witness->WaitForTyped(expected), expected);
        EXPECT_EQ(witness->Unmirrored(), "");
    }
    EXPECT_EQ(other->Typed(), "");
    ExpectAsBefore(before);
}

}  // namespace
}  // namespace spellwick
