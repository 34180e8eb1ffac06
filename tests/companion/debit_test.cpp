// What a cast takes off the counters, and what a Ctrl-click gives back.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/companion/casting_fixture.h"
#include "tests/support/table_bounds.h"

namespace spellwick {
namespace {

using testing::ElementsAre;

TEST_F(CastingTest, DebitSpell_RowOutsideTheTable_FailsAsSubscript) {
    StartWithMira();
    const CompanionServices services = Services();
    Display display;
    display.screen = Shown();
    Page page(m_state, display);
    Purse purse(m_state, display, page, m_boxes);
    Tithes tithes(m_state, display, page);
    RunningTimers timers(m_state, m_clock);
    Player player(services, {.display = display, .page = page, .purse = purse, .tithes = tithes});
    Casting casting(services, {.display = display,
                               .page = page,
                               .purse = purse,
                               .tithes = tithes,
                               .player = player,
                               .timers = timers});
    for (const int row : {-1, 97, 104}) {
        EXPECT_EQ(FailureOf([&] { casting.DebitSpell(row); }), FailureKind::kSubscript) << row;
        EXPECT_EQ(FailureOf([&] { casting.CreditSpell(row); }), FailureKind::kSubscript) << row;
    }
    EXPECT_EQ(FailureOf([&] { casting.DebitSpell(96); }), std::nullopt);
}

// The oddity itself is the model's; here it is what the user sees.
TEST_F(CastingTest, DebitSpell_CounterBelowTheNeed_GoesBelowZero) {
    StartWithMira();
    State().Spells(0).Reagents(3) = 2;
    EnterCounter(3, "1");
    Leave();
    State().DisableCasting = false;
    Cast(0);
    EXPECT_EQ(Text("Reagent", 3), "-1");
    EXPECT_EQ(State().ReagentStock(3, 0), -1);
    ClickCommand(kUndo);
    EXPECT_EQ(Text("Reagent", 3), "1");
}

TEST_F(CastingTest, DebitSpell_OverflowOfTheCell_IsAnUncaughtFailureThatNamesTheAction) {
    StartWithMira();
    ShowPageOf(0);
    Program().TypeCounter(3, "40000");
    ClickSpell(0);
    EXPECT_THAT(TakeFailures(),
                ElementsAre(UncaughtFailure{FailureKind::kOverflow, "casting a spell"}));
    // The box is written before its cell; nothing after it is touched.
    EXPECT_EQ(Text("Reagent", 3), "39999");
    EXPECT_EQ(State().ReagentStock(3, 0), 50);
    EXPECT_EQ(Text("Reagent", 7), "50");
    EXPECT_EQ(m_keys.sent.size(), 1U);
}

TEST_F(CastingTest, CreditSpell_OverflowOfTheCell_IsAnUncaughtFailure) {
    StartWithMira();
    EnterCounter(3, "+9999");
    Leave();
    State().ReagentStock(3, 0) = 32767;
    Program().TypeCounter(3, "32767");
    ShowPageOf(0);
    ClickSpell(0, 2);
    EXPECT_THAT(TakeFailures(),
                ElementsAre(UncaughtFailure{FailureKind::kOverflow, "casting a spell"}));
    EXPECT_EQ(State().ReagentStock(3, 0), 32767);
}

// covers ODDITY(credit-tithes-label)
TEST_F(CastingTest, CreditSpell_Oddity_RaisesTheTithesShownNotTheOnesCounted) {
    StartWithMira();
    const int need = State().Spells(80).Reagents(kTithes);
    ShowPageOf(80);
    const std::string amount = Text("LabelAmount", 0);
    ClickSpell(0, 2);
    EXPECT_EQ(Text("LabelTithes"), std::to_string(500 + need));
    EXPECT_EQ(Text("TxtTithes"), "500");
    EXPECT_EQ(State().CurrentTithing, 500);
    EXPECT_EQ(Text("LabelAmount", 0), amount);
}

TEST_F(CastingTest, CreditSpell_LeavesTheUndoAlone) {
    StartWithMira();
    Cast(0);
    Cast(1, kCtrl);
    const std::vector<int> credited = Counters();
    ClickCommand(kUndo);
    std::vector<int> restored = credited;
    ++restored[2];
    ++restored[6];
    EXPECT_EQ(Counters(), restored);
}

TEST(LastCast, UndoAmounts_HoldTheReagentsAndTheTithes) {
    LastCast cast;
    ExpectBounds("UndoAmounts", cast.UndoAmounts, 1, 14);
}

}  // namespace
}  // namespace spellwick
