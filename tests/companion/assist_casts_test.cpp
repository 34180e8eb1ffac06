// Casts, meditation and boxes while an assist tool reports.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/companion/assist_reports_fixture.h"

namespace spellwick {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST_F(AssistReportsTest, Cast_CostsAndLastsOnlyWhenTheToolReportsIt) {
    StartLinked();
    ClickSpell(kHeal);
    EXPECT_THAT(m_keys.sent, ElementsAre("%4{ENTER}"));
    EXPECT_EQ(Counters(), FiftyLessOneAt({}));
    EXPECT_THAT(Timers(), IsEmpty());
    Report(kAssistCast, 4);
    EXPECT_EQ(Counters(), FiftyLessOneAt({4, 5, 8}));
    EXPECT_EQ(m_state.ReagentStock(4, 0), 49);
    EXPECT_THAT(Timers(), ElementsAre("timer 3"));
}

TEST_F(AssistReportsTest, CastReport_NeedsNoClick) {
    StartLinked();
    Report(kAssistCast, 1);
    EXPECT_EQ(Counters(), FiftyLessOneAt({3, 7}));
    EXPECT_THAT(m_keys.sent, IsEmpty());
}

TEST_F(AssistReportsTest, Undo_BeforeTheReport_AddsAnEarlierDebitOnly) {
    StartLinked();
    ClickSpell(kHeal);
    ClickCommand(0);
    EXPECT_EQ(Counters(), FiftyLessOneAt({}));
    Report(kAssistCast, 1);
    ClickSpell(kHeal);
    ClickCommand(0);
    EXPECT_EQ(Counters(), FiftyLessOneAt({}));
}

// covers ODDITY(debit-twice)
TEST_F(AssistReportsTest, CastReport_Oddity_ClickedWhileNotLinkedIsPaidTwice) {
    StartBeside(false);
    ClickSpell(kHeal);
    EXPECT_EQ(Counters(), FiftyLessOneAt({4, 5, 8}));
    ShowTool(true);
    Report(kAssistCast, 4);
    EXPECT_EQ(Text("Reagent", 4), "48");
    EXPECT_EQ(Text("Reagent", 5), "48");
    EXPECT_EQ(Text("Reagent", 8), "48");
    // It lasts once: the click has started its countdown.
    EXPECT_THAT(Timers(), ElementsAre("timer 3"));
    EXPECT_TRUE(m_state.AssistLinked);
}

// covers ODDITY(reported-spell-before)
TEST_F(AssistReportsTest, CastReport_Oddity_PaladinAbilityTakesTheCostOfTheSpellBefore) {
    StartLinked();
    const SpellRecord& before = m_state.Spells(79);
    const int tithes = m_state.CurrentTithing;
    Report(kAssistCast, 201);
    for (int reagent = 1; reagent <= kReagentCount; ++reagent) {
        EXPECT_EQ(Text("Reagent", reagent), std::to_string(50 - before.Reagents(reagent)))
            << reagent;
    }
    EXPECT_EQ(m_state.CurrentTithing, tithes);
    // The countdown is that of the spell that was cast.
    EXPECT_THAT(Timers(), ElementsAre("timer 80"));
}

TEST_F(AssistReportsTest, CastReport_Necromancer_LastsAsTheSpellThatWasCast) {
    StartLinked();
    Report(kAssistCast, 104);
    EXPECT_THAT(Timers(), ElementsAre("timer 64"));
}

TEST_F(AssistReportsTest, CastReport_ThatFails_StartsNoCountdown) {
    StartLinked();
    Report(kAssistCast, 100);
    EXPECT_EQ(TakeFailures().size(), 1U);
    EXPECT_THAT(Timers(), IsEmpty());
    EXPECT_EQ(Counters(), FiftyLessOneAt({}));
}

// covers ODDITY(unknown-spell-number)
TEST_F(AssistReportsTest, CastReport_Oddity_UnknownNumberShowsItsBoxAndFails) {
    StartLinked();
    Report(kAssistCast, 118);
    EXPECT_THAT(TakeBoxes(), ElementsAre(Box{.text = "Unsupported Necromancer or Paladin spell "
                                                     "number 118 has been cast."}));
    EXPECT_THAT(TakeFailures(),
                ElementsAre(UncaughtFailure{FailureKind::kSubscript,
                                            "handling a report of the assist tool"}));
    EXPECT_EQ(Counters(), FiftyLessOneAt({}));
}

TEST_F(AssistReportsTest, FallingMana_PressesMeditateOnce) {
    StartLinked();
    m_state.Meditate = true;
    m_state.MeditateLevel = 25;
    ReportMana(30);
    EXPECT_FALSE(MeditationArmed());
    ReportMana(20);
    EXPECT_TRUE(MeditationArmed());
    EXPECT_EQ(Shown().meditationTag, "Meditate");
    Tick(2);
    EXPECT_EQ(m_keys.sent.size(), 1U);
    EXPECT_FALSE(MeditationArmed());
    EXPECT_EQ(Shown().meditationTag, "");
    ReportMana(20);
    ReportMana(22);
    EXPECT_FALSE(MeditationArmed());
}

TEST_F(AssistReportsTest, FirstManaReport_NeverMeditates) {
    StartLinked();
    m_state.Meditate = true;
    m_state.MeditateLevel = 25;
    ReportMana(0);
    EXPECT_FALSE(MeditationArmed());
    ReportMana(0);
    EXPECT_FALSE(MeditationArmed());
    ReportMana(-1);
    EXPECT_TRUE(MeditationArmed());
}

TEST_F(AssistReportsTest, ReportInThePauseOfACast_IsTakenWhole) {
    StartLinked();
    InThePause([&] {
        Report(kAssistStock, 7, 20);
        Report(kAssistCast, 4);
    });
    ClickSpell(kClumsy);
    EXPECT_THAT(m_keys.sent, ElementsAre("%1{ENTER}"));
    std::vector<std::string> counters = FiftyLessOneAt({4, 5, 8});
    counters[1] = "20";
    EXPECT_EQ(Counters(), counters);
    EXPECT_EQ(m_state.ReagentStock(2, 0), 20);
}

TEST_F(AssistReportsTest, ToolThatComesInThePause_DebitsTheCast) {
    StartBeside(false);
    InThePause([&] {
        ShowTool(true);
        Report(kAssistThere, 0);
    });
    ClickSpell(kClumsy);
    EXPECT_EQ(Counters(), FiftyLessOneAt({}));
    Report(kAssistCast, 1);
    EXPECT_EQ(Counters(), FiftyLessOneAt({3, 7}));
    EXPECT_THAT(Timers(), ElementsAre("timer 0"));
}

TEST_F(AssistReportsTest, ToolThatGoesInThePause_LeavesTheDebitToTheClick) {
    StartLinked();
    InThePause([&] {
        ShowTool(false);
        Tick(1);
    });
    ClickSpell(kClumsy);
    EXPECT_EQ(Counters(), FiftyLessOneAt({3, 7}));
    EXPECT_THAT(Timers(), ElementsAre("timer 0"));
}

TEST_F(AssistReportsTest, ReportsWhileABoxStands_AreTaken) {
    StartLinked();
    m_state.Spellbook(kClumsy) = 1;
    m_boxes.answers = {BoxAnswer::kYes};
    m_boxes.whileStanding = [&] {
        Report(kAssistStock, 1, 3);
        Report(kAssistCast, 4);
        ReportMana(55);
    };
    ClickSpell(kClumsy);
    EXPECT_EQ(TakeBoxes().size(), 1U);
    EXPECT_THAT(m_keys.sent, ElementsAre("%1{ENTER}"));
    std::vector<std::string> counters = FiftyLessOneAt({4, 5, 8});
    counters[2] = "3";
    EXPECT_EQ(Counters(), counters);
    EXPECT_EQ(Text("LabelCurrentMana"), "(55)");
}

TEST_F(AssistReportsTest, ReportThatEmptiesTheStockWhileABoxStands_StopsTheCast) {
    StartLinked();
    m_state.DisableCasting = true;
    m_state.Spellbook(kClumsy) = 1;
    m_boxes.answers = {BoxAnswer::kYes, BoxAnswer::kOk};
    m_boxes.whileStanding = [&] { Report(kAssistStock, 1, 0); };
    ClickSpell(kClumsy);
    EXPECT_THAT(m_keys.sent, IsEmpty());
    EXPECT_EQ(TakeBoxes().size(), 2U);
}

}  // namespace
}  // namespace spellwick
