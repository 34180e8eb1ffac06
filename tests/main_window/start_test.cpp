// Start of the program: the load, the first activation, the timers.
#include <QFile>
#include <QScreen>
#include <QWindow>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "link/assist_messages.h"
#include "tests/support/main_window_fixture.h"
#include "tests/support/window_in_front.h"

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

TEST_F(StartTest, Appear_WhileLoading_TheWindowIsFilledBeforeItIsOnTheScreen) {
    SavePlayer(kMira);
    SetSaved("Settings", "WindowTop", "1500");
    SetSaved("Settings", "WindowLeft", "3000");
    SetSaved("Settings", "DisplayVertical", "True");
    Make();
    m_atShow = [this] { Form().Appear(); };
    Form().Form_Load();
    EXPECT_TRUE(Form().isVisible());
    EXPECT_FALSE(Form().windowHandle()->isExposed());
    Form().Form_Activate();
    EXPECT_FALSE(Form().windowHandle()->isExposed());
    EXPECT_EQ(Text("Reagent", 13), "50");
    EXPECT_EQ(Text("LabelAmount", 0), " 50");
    EXPECT_EQ(Form().pos(), QPoint(200, 100));
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&Form()));
    EXPECT_EQ(Form().pos(), QPoint(200, 100));
    EXPECT_EQ(FocusName(), "CheckCircle(2)");
}

// Counts the paintings of some controls.
class Paintings : public QObject {
  public:
    explicit Paintings(std::initializer_list<QWidget*> controls) {
        for (QWidget* control : controls) {
            control->installEventFilter(this);
        }
    }
    bool eventFilter(QObject* /*watched*/, QEvent* event) override {
        count += event->type() == QEvent::Paint ? 1 : 0;
        return false;
    }
    int count = 0;
};

TEST_F(StartTest, PaintAhead_WindowNotYetOnTheScreen_IsPaintedWithItsControls) {
    Make();
    Form().Form_Load();
    Form().Form_Activate();
    Paintings paintings({&Form(), &Named("LabelAmount", 0)});
    ASSERT_FALSE(Form().windowHandle()->isExposed());
    EXPECT_EQ(paintings.count, 0);
    Form().PaintAhead();
    EXPECT_EQ(paintings.count, 2);
}

TEST_F(StartTest, PaintAhead_WindowOnTheScreen_PaintsNothing) {
    Make();
    Start();
    QCoreApplication::processEvents();
    Paintings paintings({&Form()});
    Form().PaintAhead();
    EXPECT_EQ(paintings.count, 0);
}

TEST_F(StartTest, TopMost_IsToldAgainWhenTheWindowIsOnTheScreen) {
    SetSaved("Settings", "AlwaysOnTop", "True");
    Make();
    Form().Form_Load();
    Form().Form_Activate();
    Form().PaintAhead();
    m_desktop.topMostCalls.clear();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&Form()));
    ASSERT_FALSE(m_desktop.topMostCalls.empty());
    EXPECT_TRUE(m_desktop.topMostCalls.front().topMost);
    EXPECT_EQ(m_desktop.topMostCalls.front().window, State().MainWindowHandle);
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

TEST_F(StartTest, FormActivate_PlacesTheWindow) {
    constexpr int kFoot = -1;  // at the foot of the screen, with room for a frame
    struct Row {
        const char* name = nullptr;
        const char* top = nullptr;
        const char* left = nullptr;
        QPoint place;  // pixels
    };
    for (const Row& row : {Row{"nothing saved", nullptr, nullptr, {0, 0}},
                           Row{"a place", "1500", "3000", {200, 100}},
                           Row{"too far down, but still a place", "40000", "300", {20, kFoot}},
                           Row{"the last that can be grasped", "11745", "0", {0, 783}},
                           Row{"the first that can not", "11775", "0", {0, kFoot}},
                           Row{"a top beyond it alone falls back", "50000", "105", {7, 0}},
                           Row{"a left beyond it alone falls back", "105", "40001", {0, 7}},
                           Row{"a negative top alone falls back", "-15", "105", {7, 0}},
                           Row{"a negative left alone falls back", "105", "-0.5", {0, 7}},
                           Row{"a text that is no number", "high", "105", {7, 0}}}) {
        SCOPED_TRACE(row.name);
        m_state = SharedState();
        if (row.top != nullptr) {
            SetSaved("Settings", "WindowTop", row.top);
            SetSaved("Settings", "WindowLeft", row.left);
        }
        Make();
        // The horizontal arrangement would be moved onto the screen.
        SetSaved("Settings", "DisplayVertical", "True");
        Form().Form_Load();
        Form().Form_Activate();
        const int foot = Form().screen()->availableGeometry().bottom() + 1 - Form().height() - 40;
        EXPECT_EQ(Form().pos(), row.place.y() == kFoot ? QPoint(row.place.x(), foot) : row.place);
        m_form.reset();
    }
}

TEST_F(StartTest, FormActivate_TakesTheArrangementSaved) {
    struct Row {
        const char* vertical;
        bool isTall;
    };
    for (const Row& row : {Row{"True", true}, Row{"False", false}}) {
        m_state = SharedState();
        SetSaved("Settings", "DisplayVertical", row.vertical);
        Make();
        Start();
        EXPECT_EQ(Form().height() > Form().width(), row.isTall);
        m_form.reset();
    }
}

// Without place and size before it has a handle, a window puts its title bar above the screen.
TEST_F(StartTest, MakeHandle_OptionThatIsNone_StillGivesPlaceAndArrangement) {
    for (const char* key : {"ShowNecroRegs", "DisplayVertical"}) {
        SCOPED_TRACE(key);
        m_state = SharedState();
        SetSaved("Settings", "ShowNecroRegs", "True");
        SetSaved("Settings", "WindowTop", "600");
        SetSaved("Settings", "WindowLeft", "105");
        SetSaved("Settings", "DisplayVertical", "True");
        SetSaved("Settings", key, "perhaps");
        Make();
        Form().MakeHandle();
        EXPECT_EQ(Form().width(), Form().minimumWidth());
        EXPECT_TRUE(State().ShowNecroRegs);
        EXPECT_EQ(State().DisplayVertical, key == std::string("ShowNecroRegs"));
        EXPECT_EQ(Form().height() > Form().width(), State().DisplayVertical);
        Start();
        EXPECT_EQ(Form().y(), 40);
        m_form.reset();
    }
}

TEST_F(StartTest, FormActivate_TellsTheDesktopWhetherToStayOnTop) {
    for (const bool onTop : {true, false}) {
        m_state = SharedState();
        SetSaved("Settings", "AlwaysOnTop", onTop ? "True" : "False");
        Make();
        m_desktop.topMostCalls.clear();
        Start();
        ASSERT_FALSE(m_desktop.topMostCalls.empty());
        for (const RecordingDesktop::TopMost& call : m_desktop.topMostCalls) {
            EXPECT_EQ(call.window, State().MainWindowHandle);
            EXPECT_EQ(call.topMost, onTop);
        }
        m_form.reset();
    }
}

TEST_F(StartTest, FormActivate_ShowsTheStockOfTheBag) {
    SavePlayer(kMira);
    Make();
    Form().Form_Load();
    for (int reagent = 1; reagent <= 13; ++reagent) {
        Reagent(reagent).setText("7");
    }
    Form().Form_Activate();
    EXPECT_EQ(Text("Reagent", 13), "50");
    EXPECT_EQ(Text("LabelAmount", 0), " 50");
}

TEST_F(StartTest, FormActivate_NegativeBag_LeavesTheCountersAlone) {
    SavePlayer(kMira);
    SetSaved(kMira, "CurrentReagentBag", "-1");
    Make();
    Form().Form_Load();
    Reagent(1).setText("7");
    Form().Form_Activate();
    EXPECT_EQ(Text("Reagent", 1), "7");
    EXPECT_EQ(Named<QComboBox>(QStringLiteral("ComboReagent")).currentIndex(), -1);
}

TEST_F(StartTest, FormActivate_AgainRepeatsTheTopMostCallOnly) {
    StartWithMira();
    Reagent(1).setText("7");
    Form().move(33, 44);
    TakeLog();
    Form().Form_Activate();
    EXPECT_THAT(TakeLog(), ElementsAre("top-most off"));
    EXPECT_EQ(Text("Reagent", 1), "7");
    EXPECT_EQ(Form().pos(), QPoint(33, 44));
}

TEST_F(StartTest, FormActivate_OfTheWindowSystem_RepeatsTheTopMostCall) {
    StartWithMira();
    const WindowInFront other;
    TakeLog();
    Form().activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&Form()));
    EXPECT_THAT(TakeLog(), ElementsAre("top-most off"));
}

}  // namespace
}  // namespace spellwick
