// The switch of the character that follows the client's title: what is saved, loaded and shown, in
// which order.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "link/client_watch.h"
#include "tests/support/companion_fixture.h"

namespace spellwick {
namespace {

using testing::ElementsAre;

class PlayerSwitchTest : public CompanionFixture {
  protected:
    PlayerSwitchTest() {
        Make();
        EXPECT_EQ(Program().Load(), LoadOutcome::kReady);
        TakeLog();
        m_store.notes = true;
    }

    // What one tick does: save and load by the character, page, and the search for the tool.
    std::vector<std::string> CallsOfTick() {
        Tick(1);
        std::vector<std::string> calls;
        for (const std::string& line : TakeLog()) {
            if (line.starts_with("save ") || line.starts_with("load ")) {
                calls.push_back(line);
            } else if (line == "update chance") {
                calls.emplace_back("page");
            } else if (line == "find assist") {
                calls.emplace_back("assist");
            }
        }
        return calls;
    }
};

TEST_F(PlayerSwitchTest, Tick_NoClient_SetsThePlaceholderAndLeavesCaptionAndPlayer) {
    m_state.CurrentPlayerName = kMira;
    EXPECT_THAT(CallsOfTick(), ElementsAre("assist"));
    EXPECT_EQ(m_state.ClientWindow, 0U);
    EXPECT_EQ(m_state.ClientTitle, "Ultima Online - ? (?)");
    EXPECT_EQ(m_state.CharacterName, "?");
    EXPECT_EQ(m_state.ServerName, "?");
    EXPECT_EQ(m_state.CurrentPlayerName, kMira);
    EXPECT_EQ(Shown().caption, "");
}

TEST_F(PlayerSwitchTest, Tick_FirstLogin_LoadsWithoutASave) {
    OpenClient(kMira);
    EXPECT_THAT(CallsOfTick(),
                ElementsAre("load Ultima Online - Mira Talon (Atlantic)", "page", "assist"));
    EXPECT_EQ(m_state.CurrentPlayerName, kMira);
    EXPECT_EQ(Shown().caption, CaptionText("Mira Talon", "Atlantic"));
}

TEST_F(PlayerSwitchTest, Tick_SameTitle_TouchesNoProfile) {
    OpenClient(kMira);
    CallsOfTick();
    EXPECT_THAT(CallsOfTick(), ElementsAre("assist"));
}

TEST_F(PlayerSwitchTest, Tick_TitleInOtherCase_IsAnotherPlayer) {
    OpenClient(kMira);
    CallsOfTick();
    OpenClient("Ultima Online - mira talon (Atlantic)");
    EXPECT_THAT(CallsOfTick(),
                ElementsAre("save Ultima Online - Mira Talon (Atlantic)",
                            "load Ultima Online - mira talon (Atlantic)", "page", "assist"));
}

TEST_F(PlayerSwitchTest, Tick_OtherCharacter_SavesTheOldBeforeTheNewIsLoaded) {
    OpenClient(kMira);
    CallsOfTick();
    OpenClient(kBran);
    EXPECT_THAT(CallsOfTick(),
                ElementsAre("save Ultima Online - Mira Talon (Atlantic)",
                            "load Ultima Online - Bran (Oak Hill)", "page", "assist"));
    EXPECT_EQ(m_state.CharacterName, "Bran");
    EXPECT_EQ(m_state.ServerName, "Oak Hill");
}

TEST_F(PlayerSwitchTest, Tick_ClientClosesAndComesBack_NeitherSavesNorLoads) {
    OpenClient(kMira);
    CallsOfTick();
    OpenClient("");
    EXPECT_THAT(CallsOfTick(), ElementsAre("assist"));
    OpenClient(kMira);
    EXPECT_THAT(CallsOfTick(), ElementsAre("assist"));
    EXPECT_EQ(m_state.ServerName, "Atlantic");
}

// covers ODDITY(saves-at-login-screen)
TEST_F(PlayerSwitchTest, Tick_Oddity_OldPlayerIsSavedEachSecondAtTheLoginScreen) {
    OpenClient(kMira);
    CallsOfTick();
    OpenClient("");
    CallsOfTick();
    OpenClient("Ultima Online");
    for (int second = 0; second < 3; ++second) {
        EXPECT_THAT(CallsOfTick(),
                    ElementsAre("save Ultima Online - Mira Talon (Atlantic)", "assist"));
    }
    OpenClient(kBran);
    EXPECT_THAT(CallsOfTick(),
                ElementsAre("save Ultima Online - Mira Talon (Atlantic)",
                            "load Ultima Online - Bran (Oak Hill)", "page", "assist"));
}

TEST_F(PlayerSwitchTest, Tick_EmptyServer_DoesNotSwitch) {
    OpenClient(kMira);
    CallsOfTick();
    OpenClient("Ultima Online - Mira Talon ()");
    EXPECT_THAT(CallsOfTick(), ElementsAre("save Ultima Online - Mira Talon (Atlantic)", "assist"));
    EXPECT_EQ(m_state.CurrentPlayerName, kMira);
}

// covers ODDITY(bare-title-is-a-player)
TEST_F(PlayerSwitchTest, Tick_Oddity_BareTitleAfterAServerBecomesAPlayer) {
    OpenClient(kMira);
    CallsOfTick();
    OpenClient("Ultima Online");
    EXPECT_THAT(CallsOfTick(), ElementsAre("save Ultima Online - Mira Talon (Atlantic)",
                                           "load Ultima Online", "page", "assist"));
    EXPECT_EQ(m_state.CharacterName, "Mira Talon");
    EXPECT_EQ(m_state.ServerName, "Atlantic");
}

// covers ODDITY(title-prefix-unread)
TEST_F(PlayerSwitchTest, Tick_Oddity_AnyTitleOfTheClassIsParsed) {
    OpenClient("Some other window Mira (Atlantic)");
    CallsOfTick();
    EXPECT_EQ(m_state.CharacterName, "w Mira");
    EXPECT_EQ(m_state.CurrentPlayerName, "Some other window Mira (Atlantic)");
}

}  // namespace
}  // namespace spellwick
