// Start of the program: the load and the timers.
#include <QFile>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "link/assist_messages.h"
#include "tests/support/main_window_fixture.h"

namespace spellwick {
namespace {

using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

class StartTest : public MainWindowFixture {
  protected:
    QString SpellData() const {
        return QString::fromStdString((m_folder.Path() / "SpellData.txt").string());
    }
    void WriteSpellData(const char* text) {
        QFile file(SpellData());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(text);
    }
};

TEST_F(StartTest, FormLoad_RunsItsStepsInOrder) {
    Make();
    EXPECT_EQ(Form().Form_Load(), LoadOutcome::kReady);
    EXPECT_THAT(TakeLog(),
                ElementsAre("find assist", "hook", "convert", "update chance", "load settings"));
}

TEST_F(StartTest, FormLoad_TellsTheLinkItsWindowAndClearsItsFlags) {
    State().AssistLinked = true;
    State().AssistRegistered = true;
    Make();
    m_parts.hooked = "find assist";
    bool linked = true;
    bool registered = true;
    WindowHandle window = 0;
    m_parts.hook = [&] {
        linked = State().AssistLinked;
        registered = State().AssistRegistered;
        window = State().MainWindowHandle;
    };
    Form().Form_Load();
    EXPECT_FALSE(linked);
    EXPECT_FALSE(registered);
    EXPECT_EQ(window, static_cast<WindowHandle>(Form().winId()));
}

TEST_F(StartTest, FormLoad_ConversionComesBeforeTheSpellTable) {
    Make();
    m_parts.hooked = "convert";
    i32 rows = 99;
    std::string reagent = "unset";
    m_parts.hook = [&] {
        rows = State().Spells.Last();
        reagent = State().ReagentName(1);
    };
    Form().Form_Load();
    EXPECT_EQ(rows, -1);
    EXPECT_EQ(reagent, "");
    EXPECT_EQ(State().ReagentName(1), "Mandrake Root");
    EXPECT_EQ(State().ReagentCode(14), "TI");
    EXPECT_EQ(State().SpellCount, 96);
}

TEST_F(StartTest, FormLoad_MissingSpellData_ShowsItsBoxBeforeAnythingElse) {
    QFile::remove(SpellData());
    Make();
    EXPECT_EQ(Form().Form_Load(), LoadOutcome::kMissingSpellData);
    EXPECT_THAT(TakeBoxes(), ElementsAre(Box{.text = "Cannot find support file: SpellData.txt",
                                             .icon = BoxIcon::kCritical,
                                             .title = "Missing File!"}));
    EXPECT_THAT(TakeLog(), ElementsAre("box Cannot find support file: SpellData.txt"));
}

TEST_F(StartTest, FormLoad_BadSpellData_ShowsItsBoxAndEndsThere) {
    struct Row {
        const char* name;
        const char* text;
    };
    for (const Row& row :
         {Row{"empty", ""}, Row{"no rows", "Spells, 96\n"}, Row{"noise", "\x01\x02 \"\n,,,"},
          Row{"count below the fewest", "Spells, 87\n"}, Row{"count no number", "Spells, many\n"},
          Row{"count beyond memory", "Spells, 2000000000\n"}}) {
        SCOPED_TRACE(row.name);
        WriteSpellData(row.text);
        Make();
        EXPECT_EQ(Form().Form_Load(), LoadOutcome::kBadSpellData);
        EXPECT_THAT(TakeBoxes(), ElementsAre(Box{.text = "Unable to load spell data file",
                                                 .icon = BoxIcon::kCritical,
                                                 .title = "Missing File"}));
        EXPECT_THAT(TakeLog(), Not(Contains("load settings")));
    }
}

TEST_F(StartTest, FormLoad_CleanMachine_LeavesTheDefaultsOfThePlayerUnread) {
    Make();
    Start();
    EXPECT_EQ(State().CurrentPlayerName, "");
    EXPECT_THAT(m_store.SectionsRead(), ElementsAre("Settings"));
    for (int row = 0; row <= 96; ++row) {
        ASSERT_EQ(State().Spellbook(row), 1) << row;
    }
    EXPECT_EQ(State().BagName(0), "");
    EXPECT_EQ(Named<QComboBox>(QStringLiteral("ComboReagent")).count(), 0);
    EXPECT_EQ(Text("LabelTithes"), "");
    EXPECT_EQ(State().SpellTextSuffix, "");
    EXPECT_EQ(State().SendSpellText, 0);
    for (int reagent = 1; reagent <= 13; ++reagent) {
        EXPECT_EQ(Text("Reagent", reagent), "0") << reagent;
    }
    EXPECT_THAT(m_store.Batches(), IsEmpty());
    EXPECT_TRUE(Form().isVisible());
}

TEST_F(StartTest, FormLoad_ShowsTheFirstCircle) {
    SavePlayer(kMira);
    Make();
    Start();
    for (int button = 0; button < 14; ++button) {
        EXPECT_EQ(Named<QAbstractButton>("CheckCircle", button).isChecked(), button == 2);
    }
    EXPECT_EQ(Named("SpellIcon", 0).accessibleName(), QStringLiteral("Clumsy"));
    for (const char* label :
         {"LabelMana", "LabelCost", "LabelName", "LabelWords", "LabelCurrentMana"}) {
        EXPECT_EQ(Text(label), "") << label;
    }
    EXPECT_FALSE(State().Updating);
}

TEST_F(StartTest, FormLoad_LastPlayer_IsThere) {
    SavePlayer(kMira);
    SetSaved(kMira, "CurrentReagentBag", "1");
    SetSaved(kMira, "Bag 1", "Belt pouch");
    Make();
    Start();
    EXPECT_EQ(State().CurrentPlayerName, kMira);
    EXPECT_EQ(Named<QComboBox>(QStringLiteral("ComboReagent")).currentText(),
              QStringLiteral("Belt pouch"));
    EXPECT_EQ(Text("Reagent", 1), "20");
    EXPECT_EQ(Text("LabelTithes"), "500");
    EXPECT_EQ(Text("LabelAmount", 0), " 20");
    EXPECT_EQ(State().CurrentMana, 100);
}

TEST_F(StartTest, FormLoad_AnyStepFails_TheOthersRunAllTheSame) {
    struct Row {
        const char* name;
        const char* failing;
    };
    for (const Row& row : {Row{"search for the tool", "find assist"}, Row{"hook", "hook"},
                           Row{"conversion", "convert"}, Row{"first page", "update chance"},
                           Row{"settings dialog", "load settings"}}) {
        SCOPED_TRACE(row.name);
        SavePlayer(kMira);
        m_parts.failing = row.failing;
        Make();
        Start();
        EXPECT_THAT(TakeLog(), AllOf(Contains("find assist"), Contains("hook"), Contains("convert"),
                                     Contains("update chance"), Contains("load settings")));
        EXPECT_EQ(State().CurrentPlayerName, kMira);
        EXPECT_EQ(Text("LabelAmount", 0), " 50");
        EXPECT_EQ(Form().width(), Form().minimumWidth());
        EXPECT_TRUE(Form().isVisible());
        m_form.reset();
        m_state = SharedState();
    }
}

TEST_F(StartTest, FormLoad_SavedTextThatIsNoNumber_IgnoredStepByStep) {
    SavePlayer(kMira);
    SetSaved("Settings", "MR price", "dear");
    Make();
    Start();
    // Loading stopped at the first number; the page is filled all the same.
    EXPECT_EQ(State().CurrentPlayerName, "");
    EXPECT_THAT(TakeLog(), Contains("load settings"));
    EXPECT_EQ(Named("SpellIcon", 0).accessibleName(), QStringLiteral("Clumsy"));
    EXPECT_TRUE(Form().isVisible());
}

TEST_F(StartTest, FormLoad_AmountsFail_TheWindowComesAllTheSame) {
    SavePlayer(kMira);
    Make();
    // A counter beyond 16 bits makes each step that computes the amounts fail.
    m_parts.hooked = "load settings";
    m_parts.hook = [&] { Reagent(3).setText("99999"); };
    EXPECT_EQ(Form().Form_Load(), LoadOutcome::kReady);
    EXPECT_TRUE(Form().Timer1(1).isActive());
    Form().Form_Activate();
    EXPECT_TRUE(Form().isVisible());
    EXPECT_EQ(Text("Reagent", 3), "50");
}

TEST_F(StartTest, ShowMainWindow_ComesOnceNothingCanEndTheStart) {
    SavePlayer(kMira);
    SetSaved("Settings", "DisplayVertical", "True");
    Make();
    int times = 0;
    m_atShow = [&] {
        ++times;
        EXPECT_EQ(State().SpellCount, 96);
        EXPECT_EQ(State().CurrentPlayerName, kMira);
        EXPECT_TRUE(State().DisplayVertical);
        EXPECT_THAT(TakeLog(), ElementsAre("find assist", "hook", "convert"));
    };
    Form().Form_Load();
    EXPECT_EQ(times, 1);
    EXPECT_THAT(TakeLog(), ElementsAre("update chance", "load settings"));
}

TEST_F(StartTest, ShowMainWindow_StartThatEnds_NeverComes) {
    m_atShow = [] { ADD_FAILURE() << "the window would come up"; };
    WriteSpellData("Spells, 87\n");
    Make();
    EXPECT_EQ(Form().Form_Load(), LoadOutcome::kBadSpellData);
    QFile::remove(SpellData());
    Make();
    EXPECT_EQ(Form().Form_Load(), LoadOutcome::kMissingSpellData);
    EXPECT_EQ(TakeBoxes().size(), 2U);
}

TEST_F(StartTest, Timers_HaveTheirIntervalsAndStates) {
    struct Row {
        int index;
        int interval;
        bool active;
    };
    Make();
    Form().Form_Load();
    for (const Row& row : {Row{0, 100, false}, Row{1, 1000, true}, Row{2, 100, false}}) {
        QTimer& timer = Form().Timer1(row.index);
        EXPECT_EQ(timer.interval(), row.interval) << row.index;
        EXPECT_EQ(timer.isActive(), row.active) << row.index;
        EXPECT_FALSE(timer.isSingleShot()) << row.index;
        EXPECT_EQ(timer.objectName(), QStringLiteral("Timer1(%1)").arg(row.index));
    }
}

TEST_F(StartTest, Timer0_TickStopsIt) {
    Make();
    Form().Timer1(0).start();
    Tick(0);
    EXPECT_FALSE(Form().Timer1(0).isActive());
}

TEST_F(StartTest, Timer2_WithItsTag_PressesMeditateOnce) {
    StartWithMira();
    State().Meditate = true;
    State().MeditateLevel = 25;
    Program().Reports().OnMessage({kAssistStats, 100, 30});
    EXPECT_FALSE(Form().Timer1(2).isActive());
    Program().Reports().OnMessage({kAssistStats, 100, 20});
    EXPECT_EQ(Shown().meditationTag, "Meditate");
    EXPECT_TRUE(Form().Timer1(2).isActive());
    Tick(2);
    EXPECT_FALSE(Form().Timer1(2).isActive());
    EXPECT_EQ(Shown().meditationTag, "");
    EXPECT_THAT(m_keys.sent, ElementsAre(" {ENTER}"));
}

TEST_F(StartTest, Timer2_WithoutItsTag_DoesNothing) {
    StartWithMira();
    Form().Timer1(2).start();
    Tick(2);
    EXPECT_TRUE(Form().Timer1(2).isActive());
    EXPECT_EQ(Shown().meditationTag, "");
    EXPECT_THAT(TakeLog(), IsEmpty());
}

}  // namespace
}  // namespace spellwick
