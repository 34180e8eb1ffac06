// First sessions of new players, from an empty store to the first right cast. What stops them are
// at most two boxes, and the hint behind a box leads to the control that mends it. The question
// whether a spell is in the book is no such box: its Yes mends it.
#include <gtest/gtest.h>

#include "tests/end_to_end/first_hour_desk.h"

namespace spellwick::testing_support {
namespace {

TEST_F(FirstHourTest, GameFirst_TwoHintsLeadToTheCastsControls) {
    StartWithGame();
    MendFirstTry();
    EXPECT_EQ(Stored(kMira, "Intelligence"), "80");
    EXPECT_EQ(Stored(kMira, "SA 0"), "50");
    TryToCast(kMagicArrow);
    ExpectCast("Magic Arrow");
}

TEST_F(FirstHourTest, FirstClickElsewhere_TheFirstHintGoes) {
    StartWithGame();
    AwaitHints(1);
    ClickPage(kThirdCircle);
    AwaitHints(0);
}

TEST_F(FirstHourTest, SkillsNeverEntered_TheHintLeadsToMagery) {
    StartWithGame();
    ClickPage(kThirdCircle);
    TryToCast(kFireball);
    AnswerBox();  // the skill
    AwaitHints(1);
    FollowIntoSettings(0);
    TypeSkills();
    PressOk();
    EXPECT_EQ(Stored(kMira, "Magery"), "100");
    TryToCast(kFireball);
    AnswerQuestion();
    AnswerBox();  // the stock
    AwaitHints(1);
    ClickHint(0);
    FillCounters(1);
    TryToCast(kFireball);
    ExpectCast("Fireball");
}

TEST_F(FirstHourTest, OnlyPaladin_TheHintsLeadToChivalryAndTithes) {
    StartWithGame();
    ClickPage(kPaladin);
    TryToCast(0);
    AnswerBox();  // the skill
    AwaitHints(1);
    FollowIntoSettings(0);
    TypeSkills();
    PressOk();
    EXPECT_EQ(Stored(kMira, "Chivalry"), "100");
    EXPECT_EQ(Stored(kMira, "Magery"), "0");
    TryToCast(0);
    AnswerQuestion();
    AnswerBox();  // the tithes
    AwaitHints(1);
    ClickHint(0);
    AwaitMainWindow();
    Picture("tithes");
    m_desk->Type("200");
    m_desk->Tap(XKB_KEY_Return);
    m_desk->RestingPicture(Window());
    TryToCast(0);
    ExpectCast("Cleanse by Fire");
}

}  // namespace
}  // namespace spellwick::testing_support
