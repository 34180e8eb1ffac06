// The main window as the window manager sees it.
#include <algorithm>

#include <gtest/gtest.h>
#include <xkbcommon/xkbcommon-keysyms.h>

#include "tests/end_to_end/player_desk.h"

namespace spellwick::testing_support {
namespace {

constexpr const char* kAbove = "_NET_WM_STATE_ABOVE";

class WindowState : public PlayerDesk {
  protected:
    // Toggles "Always on Top", below the list of players on the last tab, and closes the dialog.
    void FlipAlwaysOnTop() {
        m_desk->Click(Window(), Command(2));
        const xcb_window_t dialog = m_desk->WaitWindow("Spellwick - Settings");
        ASSERT_NE(dialog, 0U);
        m_desk->RestingPicture(dialog);
        m_desk->Click(dialog, {m_desk->AreaOf(dialog).width - 35, 14});
        m_desk->RestingPicture(dialog);
        m_desk->Click(dialog, {16, 81});
        m_desk->RestingPicture(dialog);
        m_desk->Hold(XKB_KEY_Alt_L, true);
        m_desk->Tap(XKB_KEY_o);
        m_desk->Hold(XKB_KEY_Alt_L, false);
        ASSERT_TRUE(m_desk->WaitGone(dialog));
    }

    bool WaitAbove(bool above) {
        return WaitUntil([&] {
            const auto state = m_desk->AtomsOf(Window(), "_NET_WM_STATE");
            return (std::ranges::find(state, kAbove) != state.end()) == above;
        });
    }
};

TEST_F(WindowState, AlwaysOnTop_IsSwitchedWithoutANewWindowOrAMove) {
    StartSpellwick();
    const xcb_window_t window = Window();
    const Area area = m_desk->AreaOf(window);
    EXPECT_TRUE(WaitAbove(false));
    for (const bool above : {true, false, true}) {
        ASSERT_NO_FATAL_FAILURE(FlipAlwaysOnTop());
        EXPECT_TRUE(WaitAbove(above));
        EXPECT_EQ(m_desk->WaitWindow(CaptionStart()), window);
        EXPECT_EQ(m_desk->AreaOf(window), area);
        EXPECT_EQ(Stored(kGlobal, "AlwaysOnTop"), above ? "True" : "False");
    }
    EXPECT_EQ(CloseSpellwick(), 0);
    StartSpellwick();
    EXPECT_TRUE(WaitAbove(true)) << "kept over a start";
}

TEST_F(WindowState, SavedPlace_OutOfRangeIsZeroOnThatAxisAlone) {
    struct Row {
        const char* top = nullptr;
        const char* left = nullptr;
        Place frame;
    };
    for (const Row& row : {Row{"600", "1500", {100, 40}}, Row{"50000", "1500", {100, 0}},
                           Row{"600", "-15", {0, 40}}}) {
        Prepare(kGlobal, {{"WindowTop", row.top}, {"WindowLeft", row.left}});
        StartSpellwick();
        EXPECT_EQ(CloseSpellwick(), 0);
        EXPECT_EQ(Stored(kGlobal, "WindowLeft"), std::to_string(row.frame.x * 15)) << row.left;
        EXPECT_EQ(Stored(kGlobal, "WindowTop"), std::to_string(row.frame.y * 15)) << row.top;
    }
}

}  // namespace
}  // namespace spellwick::testing_support
