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

// The frame's width is known only once the window is there.
TEST_F(WindowState, WideStripAtTheRightEdge_EndsOnTheScreenWithItsFrame) {
    constexpr int kScreen = 1280;
    Prepare(kGlobal, {{"WindowLeft", "15000"}, {"WindowTop", "600"}});
    StartSpellwick();
    const Area inside = m_desk->AreaOf(Window());
    EXPECT_EQ(CloseSpellwick(), 0);
    const int left = std::stoi(Stored(kGlobal, "WindowLeft")) / 15;
    const int border = inside.x - left;
    ASSERT_GT(border, 0) << "there is a frame";
    EXPECT_EQ(inside.x + inside.width + border, kScreen);
    EXPECT_EQ(Stored(kGlobal, "WindowTop"), "600");
}

TEST_F(WindowState, SavedPlaceOnNoScreen_ComesBackOntoIt) {
    struct Row {
        const char* top;
        const char* left;
    };
    for (const Row& row : {Row{"30000", "300"}, Row{"300", "40000"}, Row{"40000", "40000"}}) {
        for (const char* vertical : {"True", "False"}) {
            Prepare(
                kGlobal,
                {{"WindowTop", row.top}, {"WindowLeft", row.left}, {"DisplayVertical", vertical}});
            const auto program = m_desk->Session().Spawn({(Programs() / "spellwick").string()});
            const xcb_window_t window = m_desk->WaitWindow(CaptionStart());
            ASSERT_NE(window, 0U) << program->Output();
            m_desk->RestingPicture(window);
            const Area inside = m_desk->AreaOf(window);
            EXPECT_GE(inside.x, 0);
            EXPECT_GE(inside.y, 0);
            EXPECT_LE(inside.x + inside.width, 1280);
            EXPECT_LE(inside.y + inside.height, 1024);
            m_desk->AskToClose(window);
            EXPECT_EQ(program->WaitForEnd(std::chrono::seconds(10)), 0);
        }
    }
}

TEST_F(WindowState, SavedOptionThatIsNone_LeavesTheTitleBarOnTheScreen) {
    for (const char* key : {"ShowNecroRegs", "DisplayVertical"}) {
        Prepare(kGlobal, {{"ShowNecroRegs", "True"}, {"DisplayVertical", "False"}});
        Prepare(kGlobal, {{key, "perhaps"}});
        StartSpellwick();
        EXPECT_GT(m_desk->AreaOf(Window()).y, 10) << key;
        EXPECT_EQ(CloseSpellwick(), 0);
    }
}

}  // namespace
}  // namespace spellwick::testing_support
