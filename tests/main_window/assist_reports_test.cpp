// The main window with an assist tool: what its reports show, store and start.
#include "main_window/assist_reports.h"

#include <QFile>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "link/assist_dispatcher.h"
#include "link/assist_messages.h"
#include "link/assist_search.h"
#include "platform/recording/recording_assist_transport.h"
#include "tests/support/main_window_fixture.h"

namespace spellwick {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr WindowHandle kTool = 9;
constexpr int kCount = 3;
constexpr i32 kTithes = 200;  // what a stock report calls the tithing points

// Slots of the first circle, and the cost of each: one of each reagent named.
constexpr int kClumsy = 0;  // Bloodmoss (3), Nightshade (7)
constexpr int kHeal = 3;    // Spider Silk (4), Garlic (5), Ginseng (8)

class AssistReportsTest : public MainWindowFixture {
  protected:
    AssistReportsTest() { m_assist = &m_search; }

    // Makes the window and joins the tool to it, without loading.
    void MakeBeside(bool tool) {
        SavePlayer(kMira);
        OpenClient(kMira);
        ShowTool(tool);
        Make();
        m_reports = std::make_unique<AssistReports>(Form(), m_boxes, m_parts, m_parts);
        m_dispatcher =
            std::make_unique<AssistDispatcher>(m_state, *m_reports, m_search, failureSink);
        m_search.SetReceiver(*m_dispatcher);
        m_search.SetCountButton([this](bool enabled) { m_reports->EnableCount(enabled); });
    }

    // As StartWithMira, with a tool that is there from the start or not.
    FormMain& StartBeside(bool tool) {
        MakeBeside(tool);
        Start();
        Tick(1);
        TakeLog();
        return Form();
    }
    FormMain& StartLinked() { return StartBeside(true); }

    void ShowTool(bool there) {
        m_transport.windows.clear();
        if (there) {
            m_transport.windows.push_back({kTool, "UOAssist - Mira Talon"});
        }
    }

    void Report(std::uint32_t number, i32 wParam, i32 lParam = 0) {
        EXPECT_EQ(m_transport.Deliver({number, wParam, lParam}), 0);
    }
    void ReportMana(i32 mana) { Report(kAssistStats, 100, mana); }

    std::vector<std::string> Counters() {
        std::vector<std::string> texts;
        for (int reagent = 1; reagent <= kReagentCount; ++reagent) {
            texts.push_back(Text("Reagent", reagent));
        }
        return texts;
    }
    std::vector<std::string> Amounts() {
        std::vector<std::string> texts;
        for (int slot = 0; slot < kSlotCount; ++slot) {
            texts.push_back(Text("LabelAmount", slot));
        }
        return texts;
    }
    std::vector<std::string> Timers() {
        std::vector<std::string> timers;
        for (const std::string& line : m_log) {
            if (line.starts_with("timer ")) {
                timers.push_back(line);
            }
        }
        return timers;
    }
    std::string CountCaption() { return Text("Command", kCount); }
    bool CountEnabled() { return Form().CountButton().isEnabled(); }

    FailureSink& failureSink = *this;
    RecordingAssistTransport m_transport;
    AssistSearch m_search{m_state, m_transport};
    std::unique_ptr<AssistReports> m_reports;
    std::unique_ptr<AssistDispatcher> m_dispatcher;
};

// The counters of bag 0 with one less at some reagents.
std::vector<std::string> FiftyLessOneAt(std::initializer_list<int> reagents) {
    std::vector<std::string> texts(static_cast<std::size_t>(kReagentCount), "50");
    for (const int reagent : reagents) {
        texts[static_cast<std::size_t>(reagent) - 1] = "49";
    }
    return texts;
}

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
    QFile table(m_folder.filePath(QStringLiteral("SpellData.txt")));
    ASSERT_TRUE(table.resize(table.size() / 2));
    MakeBeside(true);
    m_boxes.whileStanding = [&] {
        EXPECT_GE(m_state.Spells.Last(), 0) << "half of it is there";
        for (const WindowMessage& report :
             {WindowMessage{kAssistStats, 100, 30}, WindowMessage{kAssistMagery, 90, 0},
              WindowMessage{kAssistCast, 96, 0}, WindowMessage{kAssistStock, 1, 40000}}) {
            m_transport.Deliver(report);
        }
    };
    EXPECT_EQ(Form().Form_Load(), LoadOutcome::kBadSpellData);
    EXPECT_EQ(TakeBoxes().size(), 1U);
    EXPECT_THAT(TakeFailures(), IsEmpty());
    EXPECT_THAT(m_store.Batches(), IsEmpty());
}

TEST_F(AssistReportsTest, End_DetachesTheReceiverAndSaysNothingToTheTool) {
    StartLinked();
    m_transport.sent.clear();
    Form().Form_Unload();
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
    Enter(Reagent(3), "12");
    Report(kAssistStock, 1, 7);
    EXPECT_EQ(Text("Reagent", 3), "7");
    Leave();
    EXPECT_EQ(m_state.ReagentStock(3, 0), 7);
    EXPECT_EQ(Text("Reagent", 3), "7");
}

TEST_F(AssistReportsTest, StockReport_OfTheSameValueKeepsWhatIsBeingTyped) {
    StartLinked();
    Enter(Reagent(3), "12");
    Report(kAssistStock, 1, 50);
    EXPECT_EQ(Text("Reagent", 3), "12");
    Leave();
    EXPECT_EQ(m_state.ReagentStock(3, 0), 12);
}

// covers ODDITY(report-bag)
TEST_F(AssistReportsTest, StockReport_Oddity_GoesToTheBagThatIsShown) {
    StartLinked();
    m_state.CurrentReagentBag = 1;
    Form().PurseControls().ShowStock();
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
    Click("Command", kCount);
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
        Click("Command", kCount);
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
    Click("Command", kCount);
    EXPECT_EQ(CountCaption(), "Count");
    EXPECT_TRUE(CountEnabled());
    EXPECT_EQ(Text("Reagent", 1), "120");
}

TEST_F(AssistReportsTest, Count_SearchOfEachSecondEnablesTheWaitingButton) {
    StartLinked();
    Click("Command", kCount);
    Tick(1);
    EXPECT_EQ(CountCaption(), "Wait..");
    EXPECT_TRUE(CountEnabled());
}

// covers ODDITY(wait-stays)
TEST_F(AssistReportsTest, Count_Oddity_StaysAtWaitWhenTheToolCloses) {
    StartLinked();
    Click("Command", kCount);
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
    Form().ClickCommand(kCount);
    EXPECT_EQ(CountCaption(), "Count");
    EXPECT_THAT(m_transport.sent, IsEmpty());
    EXPECT_EQ(TakeBoxes().size(), 1U);
}

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
    Click("Command", 0);
    EXPECT_EQ(Counters(), FiftyLessOneAt({}));
    Report(kAssistCast, 1);
    ClickSpell(kHeal);
    Click("Command", 0);
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

TEST_F(AssistReportsTest, FallingMana_PressesMeditateOnce) {
    StartLinked();
    m_state.Meditate = true;
    m_state.MeditateLevel = 25;
    ReportMana(30);
    EXPECT_FALSE(Form().Timer1(2).isActive());
    ReportMana(20);
    EXPECT_TRUE(Form().Timer1(2).isActive());
    EXPECT_EQ(Form().MeditationTag, "Meditate");
    EXPECT_TRUE(QTest::qWaitFor([&] { return !m_keys.sent.empty(); }, 2000));
    EXPECT_EQ(m_keys.sent.size(), 1U);
    EXPECT_FALSE(Form().Timer1(2).isActive());
    EXPECT_EQ(Form().MeditationTag, "");
    ReportMana(20);
    ReportMana(22);
    EXPECT_FALSE(Form().Timer1(2).isActive());
}

TEST_F(AssistReportsTest, FirstManaReport_NeverMeditates) {
    StartLinked();
    m_state.Meditate = true;
    m_state.MeditateLevel = 25;
    ReportMana(0);
    EXPECT_FALSE(Form().Timer1(2).isActive());
    EXPECT_EQ(m_state.LastMana, 0);
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

TEST_F(AssistReportsTest, ValueThatDoesNotFit_IsAFailureAndLeavesTheCounter) {
    struct Row {
        const char* name;
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
