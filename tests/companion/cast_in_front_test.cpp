// Casts and meditation where the game does not come to the front, or does not stay there.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/companion_fixture.h"
#include "tests/support/duration_rules.h"

namespace spellwick {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* kNotCast = "Not cast: the game did not come to the front";
constexpr const char* kUnfinished = "Line not finished: the game lost the front";

constexpr int kClumsy = 0;  // in slot and row 0; takes a Bloodmoss and a Nightshade
constexpr int kBloodmoss = 3;
constexpr int kNightshade = 7;

class CastInFrontTest : public CompanionFixture {};

TEST_F(CastInFrontTest, CastSpell_GameNotInFrontAfterThePause_HintsAndCostsNothing) {
    struct Row {
        const char* name;
        std::function<void()> happens;
    };
    for (const Row& row :
         {Row{"another window in front", [this] { m_clients.foreground = 9; }},
          Row{"the keyboard elsewhere", [this] { m_clients.keyboardIsElsewhere = true; }},
          Row{"the game closed", [this] { m_clients.windows.clear(); }}}) {
        SCOPED_TRACE(row.name);
        StartWithMira();
        m_clients.keyboardIsElsewhere = false;
        State().Spells(0).File5 = kMagery120;
        m_clients.afterSetForeground = row.happens;
        ClickSpell(kClumsy);
        m_clients.afterSetForeground = nullptr;
        EXPECT_THAT(m_keys.sent, IsEmpty());
        EXPECT_EQ(Text("Reagent", kBloodmoss), "50");
        EXPECT_EQ(Text("Reagent", kNightshade), "50");
        EXPECT_FALSE(Program().Timers().SpellsActive());
        EXPECT_THAT(TakeHints(), ElementsAre(kNotCast));
    }
}

TEST_F(CastInFrontTest, CastSpell_FrontLostBehindTheMacroKey_HintsAndCounts) {
    StartWithMira();
    State().Spells(0).File5 = kMagery120;
    m_keys.result = {.error = "lost", .stopped = true, .strokes = 1};
    testing::internal::CaptureStderr();
    ClickSpell(kClumsy);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(Text("Reagent", kBloodmoss), "49");
    EXPECT_TRUE(Program().Timers().SpellsActive());
    EXPECT_THAT(TakeHints(), ElementsAre(kUnfinished));
}

TEST_F(CastInFrontTest, CastSpell_FrontLostBeforeTheMacroKey_CostsNothing) {
    StartWithMira();
    m_keys.result = {.error = "lost", .stopped = true, .strokes = 0};
    ClickSpell(kClumsy);
    EXPECT_EQ(Text("Reagent", kBloodmoss), "50");
    EXPECT_EQ(Text("Reagent", kNightshade), "50");
    EXPECT_THAT(TakeHints(), ElementsAre(kNotCast));
}

TEST_F(CastInFrontTest, CastSpell_WhileTyping_TheGameIsLookedAt) {
    StartWithMira();
    ClickSpell(kClumsy);
    EXPECT_TRUE(m_keys.mayType);
    m_keys.duringSend = [this] { m_clients.keyboardIsElsewhere = true; };
    ClickSpell(kClumsy);
    EXPECT_FALSE(m_keys.mayType);
}

TEST_F(CastInFrontTest, CastSpell_CheckOfTheFrontOff_TypesIntoWhateverHasTheKeyboardAndPays) {
    StartWithMira();
    State().CheckFront = false;
    m_clients.afterSetForeground = [this] { m_clients.foreground = 9; };
    ClickSpell(kClumsy);
    EXPECT_EQ(m_keys.sent.size(), 1U);
    EXPECT_TRUE(m_keys.mayType);
    EXPECT_EQ(Text("Reagent", kBloodmoss), "49");
}

TEST_F(CastInFrontTest, CastSpell_CheckOfTheFrontOff_NeverTypesIntoOurOwnWindows) {
    StartWithMira();
    State().CheckFront = false;
    m_clients.afterSetForeground = [this] { m_clients.ourProgramHasKeyboard = true; };
    ClickSpell(kClumsy);
    EXPECT_THAT(m_keys.sent, IsEmpty());
    EXPECT_EQ(Text("Reagent", kBloodmoss), "50");
    EXPECT_EQ(Text("Reagent", kNightshade), "50");
    EXPECT_THAT(TakeHints(), ElementsAre(kNotCast));

    m_clients.afterSetForeground = [this] { m_clients.ourProgramHasKeyboard = false; };
    m_keys.duringSend = [this] { m_clients.ourProgramHasKeyboard = true; };
    ClickSpell(kClumsy);
    EXPECT_EQ(m_keys.sent.size(), 1U);
    EXPECT_FALSE(m_keys.mayType);
}

TEST_F(CastInFrontTest, Meditate_GameNotInFront_HintsAndTypesNothing) {
    StartWithMira();
    m_clients.afterSetForeground = [this] { m_clients.foreground = 9; };
    ClickCommand(4);
    EXPECT_THAT(m_keys.sent, IsEmpty());
    EXPECT_THAT(TakeHints(), ElementsAre(kNotCast));
    EXPECT_EQ(m_focus, "Command(1)");
}

}  // namespace
}  // namespace spellwick
