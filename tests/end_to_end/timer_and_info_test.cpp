// Running timers and the spell info window in the real program.
#include <algorithm>
#include <chrono>
#include <thread>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <xkbcommon/xkbcommon-keysyms.h>

#include "tests/end_to_end/player_desk.h"

namespace spellwick::testing_support {
namespace {

using namespace std::chrono_literals;
using testing::IsSupersetOf;

class TimerEndToEnd : public PlayerDesk {
  protected:
    // Spells of 8 seconds and more.
    void StartWithTimers(const char* mode) {
        PrepareMage(kMira, 10);
        Prepare(kMira, {{"Magery", "100"}});
        Prepare(kGlobal, {{"SpellTimerMode", mode}, {"TimerLeft", "15000"}, {"TimerTop", "3000"}});
        StartBoth();
    }
    xcb_window_t TimerWindow() const { return m_desk->FindWindow("SpellTimer"); }
    bool GameHasKeyboard() const {
        return m_desk->Session().ActiveWindow() == m_desk->FindWindow("Ultima Online");
    }
    // Columns of the bar of a slot that are blue.
    int BlueColumns(xcb_window_t window, int slot) const {
        const Area area = m_desk->AreaOf(window);
        const Picture picture = m_desk->PictureOf(window);
        // Four slots, 48 pixels apart, and 44 pixels from the top of the last one to the end.
        const int row = area.height - 3 * 48 - 44 + 48 * slot + 42 + 1;
        int blue = 0;
        for (int x = 2; x < 44; ++x) {
            const auto at = static_cast<std::size_t>(row * area.width + x) * 4;
            if (at + 2 < picture.size() && picture[at] == 255 && picture[at + 1] == 0 &&
                picture[at + 2] == 0) {
                ++blue;
            }
        }
        return blue;
    }
};

TEST_F(TimerEndToEnd, Cast_ShowsABarThatShrinksAndTheGameKeepsTheKeyboard) {
    StartWithTimers("2");
    ClickSpell(kClumsy);
    const xcb_window_t timer = m_desk->WaitWindow("SpellTimer");
    ASSERT_NE(timer, 0U);
    EXPECT_EQ(m_desk->AreaOf(timer).x, 1000);
    EXPECT_EQ(m_desk->AreaOf(timer).y, 200);
    EXPECT_THAT(m_desk->AtomsOf(timer, "_NET_WM_STATE"),
                IsSupersetOf({"_NET_WM_STATE_SKIP_TASKBAR", "_NET_WM_STATE_SKIP_PAGER"}));
    ASSERT_TRUE(WaitTyped({"key Alt+1", "cast Clumsy", "key Enter"}));
    EXPECT_TRUE(GameHasKeyboard());
    int full = 0;
    EXPECT_TRUE(WaitUntil([&] {
        full = BlueColumns(timer, 0);
        return full >= 40;
    }));
    EXPECT_TRUE(WaitUntil([&] { return BlueColumns(timer, 0) < full; }));
    EXPECT_TRUE(GameHasKeyboard());

    // Dragging it and turning it into a row and back does not move the keyboard focus.
    m_desk->MoveMouse(timer, {20, 60});
    m_desk->Button(1, true);
    m_desk->MoveMouse(Place{1040, 300});
    m_desk->MoveMouse(Place{1050, 310});
    m_desk->Button(1, false);
    EXPECT_TRUE(WaitUntil([&] { return m_desk->AreaOf(timer).x == 1030; }));
    EXPECT_EQ(m_desk->AreaOf(timer).y, 250);
    EXPECT_TRUE(GameHasKeyboard());
    const int height = m_desk->AreaOf(timer).height;
    m_desk->Click(timer, {24, 7});
    EXPECT_TRUE(WaitUntil([&] { return m_desk->AreaOf(timer).height == 49; }));
    EXPECT_TRUE(GameHasKeyboard());
    m_desk->Click(timer, {8, 20});
    EXPECT_TRUE(WaitUntil([&] { return m_desk->AreaOf(timer).height == height; }));
    EXPECT_TRUE(GameHasKeyboard());
    m_desk->Tap(XKB_KEY_F5);
    EXPECT_TRUE(WaitUntil([&] { return Typed().size() == 4; }));

    // A right click hides it; the next cast brings it back.
    m_desk->MoveMouse(timer, {20, 60});
    m_desk->PressButton(kRight);
    EXPECT_TRUE(WaitUntil([&] { return TimerWindow() == 0; }));
    EXPECT_TRUE(GameHasKeyboard());
    std::this_thread::sleep_for(1500ms);  // a tick of the watch
    EXPECT_EQ(TimerWindow(), 0U);
    ClickSpell(kWeaken);
    EXPECT_NE(m_desk->WaitWindow("SpellTimer"), 0U);
    EXPECT_TRUE(WaitUntil([&] { return GameHasKeyboard(); }));
    m_desk->Tap(XKB_KEY_F5);
    EXPECT_TRUE(WaitUntil([&] { return Typed().size() == 8; })) << testing::PrintToString(Typed());

    EXPECT_EQ(CloseSpellwick(), 0);
    EXPECT_EQ(Stored(kGlobal, "TimerLeft"), "15450");
    EXPECT_EQ(Stored(kGlobal, "TimerTop"), "3750");
}

TEST_F(TimerEndToEnd, AlwaysOnTop_HoldsEachTimeThatTheTimersAreShown) {
    Prepare(kGlobal, {{"AlwaysOnTop", "True"}});
    StartWithTimers("2");
    for (const int spell : {kClumsy, kWeaken}) {
        ClickSpell(spell);
        const xcb_window_t timer = m_desk->WaitWindow("SpellTimer");
        ASSERT_NE(timer, 0U);
        EXPECT_TRUE(WaitUntil([&] {
            const auto states = m_desk->AtomsOf(timer, "_NET_WM_STATE");
            return std::ranges::count(states, "_NET_WM_STATE_ABOVE") == 1 &&
                   std::ranges::count(states, "_NET_WM_STATE_SKIP_TASKBAR") == 1;
        })) << testing::PrintToString(m_desk->AtomsOf(timer, "_NET_WM_STATE"));
        EXPECT_TRUE(WaitUntil([&] { return GameHasKeyboard(); }));
        m_desk->MoveMouse(timer, {20, 60});
        m_desk->PressButton(kRight);
        EXPECT_TRUE(WaitUntil([&] { return TimerWindow() == 0; }));
    }
}

TEST_F(TimerEndToEnd, SpellThatDoesNotLast_StartsNone) {
    StartWithTimers("2");
    ClickSpell(kHeal);
    ASSERT_TRUE(WaitTyped({"key Alt+4", "cast Heal", "key Enter"}));
    std::this_thread::sleep_for(1500ms);
    EXPECT_EQ(TimerWindow(), 0U);
}

TEST_F(TimerEndToEnd, ModeOff_ShowsNoWindowAndKeepsItsPlace) {
    StartWithTimers("0");
    ClickSpell(kClumsy);
    ASSERT_TRUE(WaitTyped({"key Alt+1", "cast Clumsy", "key Enter"}));
    std::this_thread::sleep_for(1500ms);
    EXPECT_EQ(TimerWindow(), 0U);
    EXPECT_EQ(CloseSpellwick(), 0);
    EXPECT_EQ(Stored(kGlobal, "TimerLeft"), "15000");
    EXPECT_EQ(Stored(kGlobal, "TimerTop"), "3000");
}

using InfoEndToEnd = PlayerDesk;

TEST_F(InfoEndToEnd, RightClick_ShowsTheSpellAndAnEntryIsKept) {
    PrepareMage(kMira, 10);
    StartBoth();
    m_desk->MoveMouse(Window(), Spell(kClumsy));
    m_desk->PressButton(kRight);
    const xcb_window_t info = m_desk->WaitWindow("Spellwick - Spell Info");
    ASSERT_NE(info, 0U);
    ASSERT_TRUE(WaitUntil([&] { return m_desk->Session().ActiveWindow() == info; }));
    const Picture before = m_desk->RestingPicture(info);
    m_desk->Type("55");
    m_desk->Tap(XKB_KEY_Tab);
    EXPECT_NE(m_desk->RestingPicture(info), before);
    EXPECT_TRUE(Typed().empty());
    const Area area = m_desk->AreaOf(info);
    m_desk->AskToClose(info);
    EXPECT_TRUE(WaitUntil([&] { return m_desk->FindWindow("Spellwick - Spell Info") == 0; }));

    // It opens again for another spell, at its old position.
    m_desk->MoveMouse(Window(), Spell(kHeal));
    m_desk->PressButton(kRight);
    const xcb_window_t again = m_desk->WaitWindow("Spellwick - Spell Info");
    ASSERT_NE(again, 0U);
    EXPECT_NE(m_desk->RestingPicture(again), before);
    EXPECT_EQ(m_desk->AreaOf(again).x, area.x);
    EXPECT_EQ(m_desk->AreaOf(again).y, area.y);
    EXPECT_TRUE(Typed().empty());
    EXPECT_EQ(CloseSpellwick(), 0);
    EXPECT_EQ(Stored(kMira, "Magery"), "55");
}

using ConversionEndToEnd = PlayerDesk;

TEST_F(ConversionEndToEnd, Start_MovesTheMarkAheadOfTheSpellTable) {
    Prepare(kGlobal, {{"Conversion", "Done 5.0"},
                      {"SpellRegs 1", "900000000000000"},
                      {"SpellRegs 65", "900000000000000"}});
    StartSpellwick();
    EXPECT_EQ(Stored(kGlobal, "Conversion"), "Done 7.13");
    EXPECT_EQ(Stored(kGlobal, "SpellRegs 1"), "");
    EXPECT_EQ(Stored(kGlobal, "SpellRegs 65"), "900000000000000");
    EXPECT_EQ(CloseSpellwick(), 0);
}

TEST_F(ConversionEndToEnd, OldData_AskAndLeaveTheWindowThatAsksForPatience) {
    PrepareMage(kMira, 10);
    Prepare(kMira, {{"Magery", "50"}});
    Prepare(kGlobal, {{"Conversion", "Done 1.0"},
                      {"CurrentReagentBag", "0"},
                      {"CurrentPlayerName", kMira},
                      {"Magery", "77"}});
    auto spellwick = m_desk->Session().Spawn({(Programs() / "spellwick").string()});
    ASSERT_TRUE(spellwick);
    const xcb_window_t question = m_desk->WaitWindow("Spellwick");
    ASSERT_NE(question, 0U);
    ASSERT_TRUE(WaitUntil([&] { return m_desk->Session().ActiveWindow() == question; }));
    m_desk->Tap(XKB_KEY_Return);
    ASSERT_NE(m_desk->WaitWindow("Please wait"), 0U);
    const xcb_window_t main = m_desk->WaitWindow(CaptionStart());
    ASSERT_NE(main, 0U);
    EXPECT_NE(m_desk->FindWindow("Please wait"), 0U);
    EXPECT_EQ(Stored(kGlobal, "Conversion"), "Done 1.0");
    m_desk->AskToClose(main);
    EXPECT_TRUE(spellwick->WaitForEnd(10s));
    // Until the conversion is done, every player has the old data, and they are saved as that
    // player's.
    EXPECT_EQ(Stored(kMira, "Magery"), "77");
    EXPECT_EQ(Stored(kGlobal, "Magery"), "77");
    EXPECT_EQ(Stored(kGlobal, "Conversion"), "Done 1.0");
}

}  // namespace
}  // namespace spellwick::testing_support
