// The state of the first steps, and the hint of the first start of all.
#include "companion/first_steps.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/companion_fixture.h"

namespace spellwick {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class FirstStepsTest : public testing::Test {
  protected:
    FirstStepsTest() {
        m_state.Spells.GrowTo(104);
        for (i32 row = 0; row < 64; ++row) {
            m_state.Spells(row).School = kMagery;
        }
        m_state.Spellbook.Fill(1);
        m_state.ServerName = "?";
    }

    SharedState m_state;
};

TEST_F(FirstStepsTest, NewPlayer_HasAllToDo) {
    EXPECT_THAT(FirstStepsDone(m_state), ElementsAre(false, false, false, false));
}

TEST_F(FirstStepsTest, Game_IsFoundOnceACharacterIsInIt) {
    m_state.ClientWindow = 7;
    EXPECT_FALSE(FirstStepsDone(m_state)[0]) << "nobody is logged in";
    m_state.ServerName = "Atlantic";
    EXPECT_THAT(FirstStepsDone(m_state), ElementsAre(true, false, false, false));
    m_state.ClientWindow = 0;
    EXPECT_FALSE(FirstStepsDone(m_state)[0]) << "the game has ended";
}

TEST_F(FirstStepsTest, Spellbook_NeedsASpellAndNotAnEmptyRow) {
    m_state.Spellbook(90) = 0;
    EXPECT_FALSE(FirstStepsDone(m_state)[1]);
    m_state.Spellbook(63) = 0;
    EXPECT_THAT(FirstStepsDone(m_state), ElementsAre(false, true, false, false));
}

TEST_F(FirstStepsTest, Skills_NeedIntelligenceAndOneOfTheSchools) {
    m_state.Intelligence = 80;
    m_state.EvalInt = 100;
    EXPECT_FALSE(FirstStepsDone(m_state)[2]);
    for (i16 CasterSkills::*skill :
         {&CasterSkills::Magery, &CasterSkills::Necro, &CasterSkills::Chivalry}) {
        m_state.*skill = 30;
        EXPECT_THAT(FirstStepsDone(m_state), ElementsAre(false, false, true, false));
        m_state.*skill = 0;
    }
    m_state.Magery = 30;
    m_state.Intelligence = 0;
    EXPECT_FALSE(FirstStepsDone(m_state)[2]);
}

TEST_F(FirstStepsTest, Stock_IsThatOfTheBagInUseOrTithes) {
    m_state.ReagentStock(13, 2) = 1;
    EXPECT_FALSE(FirstStepsDone(m_state)[3]);
    m_state.CurrentReagentBag = 2;
    EXPECT_THAT(FirstStepsDone(m_state), ElementsAre(false, false, false, true));
    m_state.CurrentReagentBag = -1;
    EXPECT_FALSE(FirstStepsDone(m_state)[3]);
    m_state.CurrentTithing = 1;
    EXPECT_TRUE(FirstStepsDone(m_state)[3]);
}

TEST_F(FirstStepsTest, EmptySpellTable_IsNoFailure) {
    EXPECT_THAT(FirstStepsDone(SharedState()), ElementsAre(false, false, false, false));
}

using FirstStartTest = CompanionFixture;

TEST_F(FirstStartTest, EmptyStore_AHintPointsAtTheFirstSteps) {
    Make();
    Start();
    Program().ShowStartHints();
    const std::vector<WayHint> ways = TakeWays();
    ASSERT_EQ(ways.size(), 1U);
    EXPECT_EQ(ways[0].text, "New here? First steps");
    EXPECT_EQ(ways[0].target, (Target{Way::kFirstSteps}));
}

TEST_F(FirstStartTest, SettingsOfAnyKind_GiveNoSuchHint) {
    SetSaved("Settings", "AlwaysOnTop", "True");
    Make();
    Start();
    Program().ShowStartHints();
    EXPECT_THAT(TakeWays(), IsEmpty());
}

TEST_F(FirstStartTest, TheHint_WritesNothing) {
    Make();
    Start();
    m_store.ForgetBatches();
    Program().ShowStartHints();
    EXPECT_THAT(m_store.Batches(), IsEmpty());
}

}  // namespace
}  // namespace spellwick
