// Casts from the click on the spell to the keys in the game and the counters in the store.
#include <csignal>
#include <thread>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <xkbcommon/xkbcommon-keysyms.h>

#include "link/client_watch.h"
#include "tests/end_to_end/player_desk.h"

namespace spellwick::testing_support {
namespace {

using namespace std::chrono_literals;
using testing::IsEmpty;
using testing::IsSupersetOf;

using CastingEndToEnd = PlayerDesk;

TEST_F(CastingEndToEnd, Click_TypesTheMacroAndTakesTheCost) {
    PrepareMage(kMira, 10);
    StartBoth();
    ClickSpell(kHeal);
    EXPECT_TRUE(WaitTyped({"key Alt+4", "cast Heal", "key Enter"}))
        << testing::PrintToString(Typed());
    EXPECT_EQ(m_desk->Session().ActiveWindow(), m_desk->FindWindow("Ultima Online"));
    m_desk->RestingPicture(Window());
    EXPECT_EQ(CloseSpellwick(), 0);
    EXPECT_THAT(StoredSection(kMira),
                IsSupersetOf({std::pair<const std::string, std::string>{"MR 0", "10"},
                              {"SA 0", "10"},
                              {"BM 0", "10"},
                              {"SS 0", "9"},
                              {"GA 0", "9"},
                              {"BP 0", "10"},
                              {"NI 0", "10"},
                              {"GI 0", "9"}}));
}

TEST_F(CastingEndToEnd, TextAndSuffix_AreTwoSpokenLines) {
    PrepareMage(kMira, 10);
    Prepare(kMira, {{"SendSpellText", "1"},
                    {"SpellText 0 3", "In Mani \xC3\xBC"},
                    {"SendSpellSuffix", "1"},
                    {"SpellTextSuffix", "... Alakazam ..."}});
    StartBoth();
    ClickSpell(kHeal);
    EXPECT_TRUE(
        WaitTyped({"key Alt+4", "cast Heal", "say In Mani \xC3\xBC", "say ... Alakazam ..."}))
        << testing::PrintToString(Typed());
}

TEST_F(CastingEndToEnd, TwoClicksInOneWait_SendTheSecondSpellTwice) {
    PrepareMage(kMira, 10);
    StartBoth();
    const Place second = Spell(kWeaken);
    ClickSpell(kHeal);
    std::this_thread::sleep_for(30ms);
    m_desk->Click(Window(), second);
    EXPECT_TRUE(WaitTyped(
        {"key Alt+8", "cast Weaken", "key Enter", "key Alt+8", "cast Weaken", "key Enter"}))
        << testing::PrintToString(Typed());
    m_desk->RestingPicture(Window());
    EXPECT_EQ(CloseSpellwick(), 0);
    // Each click takes the cost of its own spell.
    EXPECT_THAT(StoredSection(kMira),
                IsSupersetOf({std::pair<const std::string, std::string>{"SS 0", "9"},
                              {"GA 0", "8"},
                              {"GI 0", "9"},
                              {"NI 0", "9"}}));
}

TEST_F(CastingEndToEnd, CtrlClick_CreditsWithoutClient) {
    PrepareMage(kMira, 10);
    Prepare(kGlobal, {{"CurrentPlayerName", kMira}});
    StartSpellwick();
    m_desk->Hold(XKB_KEY_Control_L, true);
    ClickSpell(kClumsy);
    m_desk->RestingPicture(Window());
    m_desk->Hold(XKB_KEY_Control_L, false);
    EXPECT_EQ(CloseSpellwick(), 0);
    EXPECT_THAT(StoredSection(kMira),
                IsSupersetOf({std::pair<const std::string, std::string>{"BM 0", "11"},
                              {"NI 0", "11"},
                              {"SS 0", "10"}}));
}

TEST_F(CastingEndToEnd, ClickWithoutClient_ShowsABoxAndTakesNothing) {
    PrepareMage(kMira, 10);
    Prepare(kGlobal, {{"CurrentPlayerName", kMira}});
    StartSpellwick();
    ClickSpell(kHeal);
    const xcb_window_t box = m_desk->Session().WaitForWindow("Spellwick");
    ASSERT_NE(box, 0U);
    m_desk->RestingPicture(box);
    m_desk->Tap(XKB_KEY_Return);
    EXPECT_TRUE(m_desk->WaitGone(box));
    EXPECT_EQ(CloseSpellwick(), 0);
    EXPECT_EQ(Stored(kMira, "SS 0"), "10");
}

TEST_F(CastingEndToEnd, GameThatDoesNotComeToTheFront_GetsNothingAndCostsNothing) {
    PrepareMage(kMira, 10);
    const xcb_window_t other = m_desk->Session().MakeWindow("other", "Other", "another window");
    StartBoth();
    ClickSpell(kHeal);
    // Longer than the game is waited for and given its pause, twice.
    const auto end = std::chrono::steady_clock::now() + 1500ms;
    while (std::chrono::steady_clock::now() < end) {
        xcb_set_input_focus(m_desk->Session().Connection(), XCB_INPUT_FOCUS_PARENT, other,
                            XCB_CURRENT_TIME);
        m_desk->Session().Sync();
        std::this_thread::sleep_for(5ms);
    }
    m_desk->RestingPicture(Window());
    EXPECT_THAT(Typed(), IsEmpty());
    EXPECT_EQ(CloseSpellwick(), 0);
    EXPECT_THAT(StoredSection(kMira),
                IsSupersetOf({std::pair<const std::string, std::string>{"SS 0", "10"},
                              {"GA 0", "10"},
                              {"GI 0", "10"}}));
}

TEST_F(CastingEndToEnd, EntryInACounter_IsCommittedBeforeTheCast) {
    PrepareMage(kMira, 10);
    StartBoth();
    constexpr int kGarlic = 5;
    m_desk->Click(Window(), Counter(kGarlic));
    m_desk->RestingPicture(Window());
    m_desk->Type("+25");
    ClickSpell(kHeal);
    EXPECT_TRUE(WaitTyped({"key Alt+4", "cast Heal", "key Enter"}))
        << testing::PrintToString(Typed());
    m_desk->RestingPicture(Window());
    EXPECT_EQ(CloseSpellwick(), 0);
    EXPECT_EQ(Stored(kMira, "GA 0"), "34");
}

TEST_F(CastingEndToEnd, Undo_GivesTheCastBack) {
    PrepareMage(kMira, 10);
    StartBoth();
    ClickSpell(kHeal);
    ASSERT_TRUE(WaitTyped({"key Alt+4", "cast Heal", "key Enter"}));
    m_desk->RestingPicture(Window());
    m_desk->Click(Window(), Command(0));
    m_desk->RestingPicture(Window());
    EXPECT_EQ(CloseSpellwick(), 0);
    EXPECT_THAT(StoredSection(kMira),
                IsSupersetOf({std::pair<const std::string, std::string>{"SS 0", "10"},
                              {"GA 0", "10"},
                              {"GI 0", "10"}}));
}

TEST_F(CastingEndToEnd, UnknownSpell_IsLearnedAtYesAndCast) {
    PrepareMage(kMira, 10);
    Prepare(kMira, {{"Spellbook 3", "1"}});
    StartBoth();
    ClickSpell(kHeal);
    const xcb_window_t box = m_desk->Session().WaitForWindow("Spellwick");
    ASSERT_NE(box, 0U);
    m_desk->RestingPicture(box);
    m_desk->Hold(XKB_KEY_Alt_L, true);
    m_desk->Tap(XKB_KEY_y);
    m_desk->Hold(XKB_KEY_Alt_L, false);
    EXPECT_TRUE(WaitTyped({"key Alt+4", "cast Heal", "key Enter"}))
        << testing::PrintToString(Typed());
    EXPECT_EQ(CloseSpellwick(), 0);
    EXPECT_EQ(Stored(kMira, "Spellbook 3"), "0");
}

// The wait before the keys is about 100 ms long; the keys of the line come after it.
TEST_F(CastingEndToEnd, ClientClosesInACast_ProgramGoesOnAndNothingIsStuck) {
    const std::string line(20, 'a');
    PrepareMage(kMira, 50);
    Prepare(kMira, {{"SendSpellSuffix", "1"}, {"SpellTextSuffix", line}});
    StartBoth();
    for (const auto delay : {0ms, 60ms, 160ms, 300ms, 700ms}) {
        ClickSpell(kHeal);
        std::this_thread::sleep_for(delay);
        EndGame(SIGKILL);
        // No window gets the rest of the line.
        std::this_thread::sleep_for(3s);
        EXPECT_EQ(m_desk->Session().Keyboard().keysDown, KeyboardState{}.keysDown) << delay.count();
        ASSERT_TRUE(Spellwick().Runs()) << delay.count();
        StartGame();
        TellGame("login 1");
        ASSERT_TRUE(WaitCharacter("Mira Talon"));
    }
    // By now the watch has seen the new window.
    std::this_thread::sleep_for(1200ms);
    std::vector<std::string> expected = Typed();
    ClickSpell(kClumsy);
    expected.insert(expected.end(), {"key Alt+1", "cast Clumsy", "key Enter", "say " + line});
    EXPECT_TRUE(WaitTyped(expected)) << testing::PrintToString(Typed());
    EXPECT_EQ(CloseSpellwick(), 0);
}

TEST_F(CastingEndToEnd, Login_IsFollowedByTheCaption) {
    StartGame();
    StartSpellwick();
    int number = 0;
    for (const char* name : {"Mira Talon", "Bran Oakley", "Ysolde"}) {
        TellGame("login " + std::to_string(++number));
        EXPECT_TRUE(WaitCharacter(name));
    }
    EXPECT_EQ(m_desk->Session().WindowName(Window()), CaptionText("Ysolde", "Oak Hill"));
    EXPECT_THAT(Typed(), IsEmpty());
}

TEST_F(CastingEndToEnd, SwitchOfPlayer_KeepsBothStocksApart) {
    PrepareMage(kMira, 10);
    PrepareMage(kBran, 70);
    StartBoth();
    ClickSpell(kHeal);
    ASSERT_TRUE(WaitTyped({"key Alt+4", "cast Heal", "key Enter"}));
    m_desk->RestingPicture(Window());
    TellGame("login 2");
    ASSERT_TRUE(WaitCharacter("Bran Oakley"));
    m_desk->RestingPicture(Window());
    EXPECT_EQ(Stored(kMira, "SS 0"), "9") << "saved at the switch";
    ClickSpell(kClumsy);
    ASSERT_TRUE(WaitTyped(
        {"key Alt+4", "cast Heal", "key Enter", "key Alt+1", "cast Clumsy", "key Enter"}));
    m_desk->RestingPicture(Window());
    TellGame("login 1");
    ASSERT_TRUE(WaitCharacter("Mira Talon"));
    m_desk->RestingPicture(Window());
    ClickSpell(kHeal);
    ASSERT_TRUE(WaitUntil([&] { return Typed().size() == 9; }));
    m_desk->RestingPicture(Window());
    EXPECT_EQ(CloseSpellwick(), 0);
    EXPECT_EQ(Stored(kMira, "SS 0"), "8");
    EXPECT_EQ(Stored(kMira, "BM 0"), "10");
    EXPECT_EQ(Stored(kBran, "SS 0"), "70");
    EXPECT_EQ(Stored(kBran, "BM 0"), "69");
    EXPECT_EQ(Stored(kGlobal, "CurrentPlayerName"), kMira);
}

}  // namespace
}  // namespace spellwick::testing_support
