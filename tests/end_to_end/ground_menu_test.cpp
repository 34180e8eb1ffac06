// The menu that a right click on the main window's ground opens, and right clicks beside the
// ground.
#include <chrono>
#include <thread>

#include <gtest/gtest.h>
#include <xkbcommon/xkbcommon-keysyms.h>

#include "tests/end_to_end/player_desk.h"

namespace spellwick::testing_support {
namespace {

constexpr int kMeditate = 4;
// Above the controls and to the left of them, in either arrangement.
constexpr Place kGround{1, 1};

class GroundMenu : public PlayerDesk {
  protected:
    void RightClick(Place inWindow) {
        m_desk->MoveMouse(Window(), inWindow);
        m_desk->PressButton(kRight);
    }
    void OpenMenu() {
        // Two clicks at one place in less time are a double click, which opens no menu.
        std::this_thread::sleep_for(std::chrono::milliseconds(600));
        RightClick(kGround);
        ASSERT_TRUE(WaitUntil([&] { return m_desk->HasMenu(); }));
    }
    bool WaitClosed() {
        return WaitUntil([&] { return !m_desk->HasMenu(); });
    }
    bool WaitTall(bool tall) {
        return WaitUntil([&] {
            const Area area = m_desk->AreaOf(Window());
            return (area.height > area.width) == tall;
        });
    }
};

TEST_F(GroundMenu, ItsLine_ChangesTheArrangementThereAndBackAndSavesIt) {
    PrepareMage(kMira, 10);
    StartBoth();
    ASSERT_TRUE(WaitTall(false));
    const Area wide = m_desk->AreaOf(Window());
    for (const bool tall : {true, false}) {
        ASSERT_NO_FATAL_FAILURE(OpenMenu());
        m_desk->Tap(XKB_KEY_Down);
        m_desk->Tap(XKB_KEY_Return);
        EXPECT_TRUE(WaitTall(tall));
        EXPECT_TRUE(WaitClosed());
        EXPECT_TRUE(WaitUntil(
            [&] { return Stored(kGlobal, "DisplayVertical") == (tall ? "True" : "False"); }));
    }
    EXPECT_TRUE(WaitUntil([&] { return m_desk->AreaOf(Window()) == wide; }));
    EXPECT_TRUE(Typed().empty());
    ClickSpell(kHeal);
    EXPECT_TRUE(WaitTyped({"key Alt+4", "cast Heal", "key Enter"}));
    EXPECT_EQ(CloseSpellwick(), 0);
}

TEST_F(GroundMenu, TallArrangement_IsKeptOverAStart) {
    StartSpellwick();
    ASSERT_NO_FATAL_FAILURE(OpenMenu());
    m_desk->Tap(XKB_KEY_Down);
    m_desk->Tap(XKB_KEY_Return);
    ASSERT_TRUE(WaitTall(true));
    EXPECT_EQ(CloseSpellwick(), 0);
    // PlayerDesk itself expects the wide one.
    const auto program = m_desk->Session().Spawn({(Programs() / "spellwick").string()});
    const xcb_window_t window = m_desk->WaitWindow(CaptionStart());
    ASSERT_NE(window, 0U) << program->Output();
    m_desk->RestingPicture(window);
    const Area area = m_desk->AreaOf(window);
    EXPECT_GT(area.height, area.width);
    m_desk->AskToClose(window);
    EXPECT_EQ(program->WaitForEnd(std::chrono::seconds(10)), 0);
}

TEST_F(GroundMenu, Escape_LeavesEverythingAsItIs) {
    StartSpellwick();
    const Area before = m_desk->AreaOf(Window());
    ASSERT_NO_FATAL_FAILURE(OpenMenu());
    m_desk->Tap(XKB_KEY_Escape);
    EXPECT_TRUE(WaitClosed());
    EXPECT_EQ(m_desk->AreaOf(Window()), before);
    EXPECT_EQ(Stored(kGlobal, "DisplayVertical"), "");
    EXPECT_EQ(CloseSpellwick(), 0);
}

TEST_F(GroundMenu, RightClickOnMeditate_OpensNoMenuAndTypesNothing) {
    PrepareMage(kMira, 10);
    Prepare(kGlobal, {{"Macro-1", "-C-m"}});
    StartBoth();
    RightClick(Command(kMeditate));
    m_desk->RestingPicture(Window());
    EXPECT_FALSE(m_desk->HasMenu());
    EXPECT_TRUE(Typed().empty());
    // The left button types at once, so the right one would have.
    m_desk->Click(Window(), Command(kMeditate));
    EXPECT_TRUE(WaitUntil([&] { return !Typed().empty(); }));
    m_desk->RestingPicture(Window());
    EXPECT_EQ(Typed(), (std::vector<std::string>{"key Ctrl+M", "key Enter"}));
    EXPECT_EQ(CloseSpellwick(), 0);
}

}  // namespace
}  // namespace spellwick::testing_support
