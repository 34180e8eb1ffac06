// The main window with an assist tool: what its reports show and store.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/companion/assist_reports_fixture.h"

namespace spellwick {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

TEST_F(AssistReportsTest, Start_RegistersBeforeTheReceiverIsThere) {
    bool attached = true;
    m_transport.onSend = [&](const RecordingAssistTransport::Sent&) {
        attached = m_transport.IsAttached();
        return 1;
    };
    StartLinked();
    EXPECT_FALSE(attached);
    EXPECT_TRUE(m_transport.IsAttached());
    EXPECT_THAT(m_transport.sent, ElementsAre(RecordingAssistTransport::Sent{
                                      kTool, kAssistRegister, m_state.MainWindowHandle, 0}));
    EXPECT_TRUE(CountEnabled());
}

TEST_F(AssistReportsTest, ReportsBeforeTheSpellTableIsRead_AreTakenAsFarAsTheyCan) {
    MakeBeside(true);
    m_parts.hooked = "convert";
    m_parts.hook = [&] {
        ReportMana(30);
        Report(kAssistMagery, 90);
        Report(kAssistStock, 1, 7);
        Report(kAssistCast, 1);
    };
    Start();
    EXPECT_THAT(TakeFailures(), IsEmpty());
    Tick(1);
    // What is kept of the player is what was saved.
    EXPECT_EQ(m_state.Magery, 100);
    EXPECT_EQ(Text("Reagent", 3), "50");
    Report(kAssistStock, 1, 7);
    EXPECT_EQ(Text("Reagent", 3), "7");
}

TEST_F(AssistReportsTest, ReportsWhileTheBoxOfABadSpellTableStands_AreLost) {
    const std::filesystem::path table = m_folder.Path() / "SpellData.txt";
    std::filesystem::resize_file(table, std::filesystem::file_size(table) / 2);
    MakeBeside(true);
    m_boxes.whileStanding = [&] {
        EXPECT_GE(m_state.Spells.Last(), 0) << "half of it is there";
        for (const WindowMessage& report :
             {WindowMessage{kAssistStats, 100, 30}, WindowMessage{kAssistMagery, 90, 0},
              WindowMessage{kAssistCast, 96, 0}, WindowMessage{kAssistStock, 1, 40000}}) {
            m_transport.Deliver(report);
        }
    };
    EXPECT_EQ(Program().Load(), LoadOutcome::kBadSpellData);
    EXPECT_EQ(TakeBoxes().size(), 1U);
    EXPECT_THAT(TakeFailures(), IsEmpty());
    EXPECT_THAT(m_store.Batches(), IsEmpty());
}

TEST_F(AssistReportsTest, End_DetachesTheReceiverAndSaysNothingToTheTool) {
    StartLinked();
    m_transport.sent.clear();
    Program().End(EndCause::kUser);
    EXPECT_FALSE(m_transport.IsAttached());
    EXPECT_THAT(m_transport.sent, IsEmpty());
}

TEST_F(AssistReportsTest, StockReport_ShowsStoresAndRefreshesTheCasts) {
    StartLinked();
    EXPECT_EQ(Text("LabelAmount", kClumsy), " 50");
    Report(kAssistStock, 1, 7);
    EXPECT_EQ(Text("Reagent", 3), "7");
    EXPECT_EQ(m_state.ReagentStock(3, 0), 7);
    EXPECT_EQ(Text("LabelAmount", kClumsy), " 7");
    EXPECT_EQ(Text("LabelAmount", kHeal), " 50");
}

TEST_F(AssistReportsTest, StockReport_OverwritesWhatIsBeingTyped) {
    StartLinked();
    EnterCounter(3, "12");
    Report(kAssistStock, 1, 7);
    EXPECT_EQ(Text("Reagent", 3), "7");
    Leave();
    EXPECT_EQ(m_state.ReagentStock(3, 0), 7);
    EXPECT_EQ(Text("Reagent", 3), "7");
}

TEST_F(AssistReportsTest, StockReport_OfTheSameValueKeepsWhatIsBeingTyped) {
    StartLinked();
    EnterCounter(3, "12");
    Report(kAssistStock, 1, 50);
    EXPECT_EQ(Text("Reagent", 3), "12");
    Leave();
    EXPECT_EQ(m_state.ReagentStock(3, 0), 12);
}

// covers ODDITY(report-bag)
TEST_F(AssistReportsTest, StockReport_Oddity_GoesToTheBagThatIsShown) {
    StartLinked();
    m_state.CurrentReagentBag = 1;
    for (i32 reagent = 1; reagent <= kReagentCount; ++reagent) {
        Program().ShowCounter(reagent);
    }
    Report(kAssistStock, 1, 7);
    EXPECT_EQ(m_state.ReagentStock(3, 0), 50);
    EXPECT_EQ(m_state.ReagentStock(3, 1), 7);
    EXPECT_EQ(Text("Reagent", 3), "7");
}

// covers ODDITY(tithes-report)
TEST_F(AssistReportsTest, TithesReport_Oddity_ShowsThePointsAndLeavesTheAmounts) {
    constexpr int kFirstPaladinPage = 12;
    StartLinked();
    ShowPage(kFirstPaladinPage);
    const std::vector<std::string> before = Amounts();
    EXPECT_EQ(before[0], " 50");  // 500 points, 10 each
    Report(kAssistStock, kTithes, 40000);
    EXPECT_EQ(Text("LabelTithes"), "40000");
    EXPECT_EQ(Text("TxtTithes"), "40000");
    EXPECT_EQ(Amounts(), before);
    ShowPage(kFirstPaladinPage);
    EXPECT_EQ(Text("LabelAmount", 0), " 4000");
}

TEST_F(AssistReportsTest, Count_WaitsForTheFirstReport) {
    StartLinked();
    m_transport.sent.clear();
    TakeLog();
    ClickCommand(kCount);
    EXPECT_EQ(CountCaption(), "Wait..");
    EXPECT_FALSE(CountEnabled());
    EXPECT_THAT(m_transport.sent,
                ElementsAre(RecordingAssistTransport::Sent{kTool, kAssistCount, 0, 0}));
    EXPECT_THAT(TakeLog(), Contains(testing::HasSubstr("foreground")));
    Report(kAssistStock, 3, 50);
    EXPECT_EQ(CountCaption(), "Count");
    EXPECT_TRUE(CountEnabled());
}

TEST_F(AssistReportsTest, Count_UnknownThingsAreCountedToo) {
    StartLinked();
    for (const i32 counted : {9, 99, 105, 201, 0, -1}) {
        ClickCommand(kCount);
        EXPECT_FALSE(CountEnabled());
        Report(kAssistStock, counted, 7);
        EXPECT_EQ(CountCaption(), "Count") << counted;
        EXPECT_TRUE(CountEnabled()) << counted;
    }
    EXPECT_EQ(Counters(), FiftyLessOneAt({}));
}

TEST_F(AssistReportsTest, Count_ReportsBeforeItsAnswerAreTaken) {
    StartLinked();
    m_transport.onSend = [&](const RecordingAssistTransport::Sent& message) {
        if (message.number == kAssistCount) {
            EXPECT_FALSE(CountEnabled());
            Report(kAssistStock, 5, 120);
            EXPECT_TRUE(CountEnabled());
        }
        return 0;
    };
    ClickCommand(kCount);
    EXPECT_EQ(CountCaption(), "Count");
    EXPECT_TRUE(CountEnabled());
    EXPECT_EQ(Text("Reagent", 1), "120");
}

TEST_F(AssistReportsTest, Count_SearchOfEachSecondEnablesTheWaitingButton) {
    StartLinked();
    ClickCommand(kCount);
    Tick(1);
    EXPECT_EQ(CountCaption(), "Wait..");
    EXPECT_TRUE(CountEnabled());
}

// covers ODDITY(wait-stays)
TEST_F(AssistReportsTest, Count_Oddity_StaysAtWaitWhenTheToolCloses) {
    StartLinked();
    ClickCommand(kCount);
    ShowTool(false);
    Tick(1);
    EXPECT_EQ(CountCaption(), "Wait..");
    EXPECT_FALSE(CountEnabled());
    ShowTool(true);
    Tick(1);
    EXPECT_EQ(CountCaption(), "Wait..");
    EXPECT_TRUE(CountEnabled());
    Report(kAssistStock, 1, 50);
    EXPECT_EQ(CountCaption(), "Count");
}

TEST_F(AssistReportsTest, Count_WithoutATool_IsOffAndOnlySaysSo) {
    StartBeside(false);
    EXPECT_FALSE(CountEnabled());
    ClickCommand(kCount);
    EXPECT_EQ(CountCaption(), "Count");
    EXPECT_THAT(m_transport.sent, IsEmpty());
    EXPECT_EQ(TakeBoxes().size(), 1U);
}

TEST_F(AssistReportsTest, StatsReport_ShowsTheManaAndTellsTheDialog) {
    StartLinked();
    Report(kAssistStats, 90, 41);
    EXPECT_EQ(Text("LabelCurrentMana"), "(41)");
    EXPECT_EQ(m_state.Intelligence, 90);
    EXPECT_EQ(m_state.CurrentMana, 41);
    EXPECT_THAT(TakeLog(), Contains("int 90"));
}

TEST_F(AssistReportsTest, StatsReport_WithoutManaMakesSpellsHopeless) {
    StartLinked();
    ReportMana(100);
    EXPECT_NE(Text("LabelChance", kHeal), "0");
    Report(kAssistStats, 0, 0);
    EXPECT_EQ(Text("LabelChance", kHeal), "0");
}

TEST_F(AssistReportsTest, MageryReport_RefreshesTheChancesAndTellsTheDialog) {
    constexpr int kEighthCircle = 9;
    StartLinked();
    ShowPage(kEighthCircle);
    TakeLog();
    Report(kAssistMagery, 10);
    EXPECT_EQ(m_state.Magery, 10);
    EXPECT_EQ(Text("LabelChance", 0), "0");
    EXPECT_THAT(TakeLog(), Contains("skill 10"));
    Report(kAssistMagery, 120);
    EXPECT_NE(Text("LabelChance", 0), "0");
}

// covers ODDITY(skill-report)
TEST_F(AssistReportsTest, SkillReport_Oddity_ShowsAtTheNextRefreshOnly) {
    constexpr i32 kNecromancy = 0x31;
    constexpr int kFirstNecromancerPage = 10;
    StartLinked();
    ShowPage(kFirstNecromancerPage);
    const std::string before = Text("LabelChance", 0);
    ASSERT_NE(before, "0");
    Report(kAssistSkill, kNecromancy, 0);
    EXPECT_EQ(m_state.Necro, 0);
    EXPECT_EQ(Text("LabelChance", 0), before);
    ShowPage(kFirstNecromancerPage);
    EXPECT_EQ(Text("LabelChance", 0), "0");
}

TEST_F(AssistReportsTest, ValueThatDoesNotFit_IsAFailureAndLeavesTheCounter) {
    struct Row {
        const char* name = "";
        WindowMessage message;
    };
    StartLinked();
    for (const Row& row :
         {Row{"stock", {kAssistStock, 1, 32768}}, Row{"Magery", {kAssistMagery, 70000, 0}},
          Row{"Intelligence", {kAssistStats, 40000, 1}}, Row{"mana", {kAssistStats, 1, -40000}},
          Row{"skill", {kAssistSkill, 16, 400000}}}) {
        EXPECT_EQ(m_transport.Deliver(row.message), 0) << row.name;
        EXPECT_THAT(TakeFailures(),
                    ElementsAre(UncaughtFailure{FailureKind::kOverflow,
                                                "handling a report of the assist tool"}))
            << row.name;
    }
    EXPECT_EQ(Text("Reagent", 3), "50");
    EXPECT_EQ(m_state.Magery, 100);
}

TEST_F(AssistReportsTest, PlayerSwitch_TheStockReportedGoesToTheFormerPlayer) {
    SavePlayer(kBran);
    StartLinked();
    Report(kAssistStock, 1, 7);
    OpenClient(kBran);
    Tick(1);
    EXPECT_EQ(Saved(kMira, "BM 0"), "7");
    EXPECT_EQ(Text("Reagent", 3), "50");
    Report(kAssistStock, 1, 8);
    EXPECT_EQ(m_state.ReagentStock(3, 0), 8);
}

}  // namespace
}  // namespace spellwick
