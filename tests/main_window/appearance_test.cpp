// How the window comes to the screen: its place, its first painting, the first activation.
#include <QScreen>
#include <QWindow>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/main_window_fixture.h"
#include "tests/support/paintings.h"
#include "tests/support/window_in_front.h"

namespace spellwick {
namespace {

using testing::ElementsAre;
using testing_support::Paintings;

class AppearanceTest : public MainWindowFixture {};

TEST_F(AppearanceTest, Appear_WhileLoading_TheWindowIsFilledBeforeItIsOnTheScreen) {
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

TEST_F(AppearanceTest, PaintAhead_WindowNotYetOnTheScreen_IsPaintedWithItsControls) {
    Make();
    Form().Form_Load();
    Form().Form_Activate();
    Paintings paintings({&Form(), &Named("LabelAmount", 0)});
    ASSERT_FALSE(Form().windowHandle()->isExposed());
    EXPECT_EQ(paintings.count, 0);
    Form().PaintAhead();
    EXPECT_EQ(paintings.count, 2);
    QCoreApplication::processEvents();
    EXPECT_EQ(paintings.asked, 0) << "what is painted is asked for again";
}

TEST_F(AppearanceTest, PaintAhead_WindowOnTheScreen_PaintsNothing) {
    Make();
    Start();
    QCoreApplication::processEvents();
    Paintings paintings({&Form()});
    Form().PaintAhead();
    EXPECT_EQ(paintings.count, 0);
}

TEST_F(AppearanceTest, TopMost_IsToldAgainWhenTheWindowIsOnTheScreen) {
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

TEST_F(AppearanceTest, FormActivate_PlacesTheWindow) {
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

TEST_F(AppearanceTest, FormActivate_TakesTheArrangementSaved) {
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
TEST_F(AppearanceTest, MakeHandle_OptionThatIsNone_StillGivesPlaceAndArrangement) {
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

TEST_F(AppearanceTest, FormActivate_TellsTheDesktopWhetherToStayOnTop) {
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

TEST_F(AppearanceTest, FormActivate_ShowsTheStockOfTheBag) {
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

TEST_F(AppearanceTest, FormActivate_NegativeBag_LeavesTheCountersAlone) {
    SavePlayer(kMira);
    SetSaved(kMira, "CurrentReagentBag", "-1");
    Make();
    Form().Form_Load();
    Reagent(1).setText("7");
    Form().Form_Activate();
    EXPECT_EQ(Text("Reagent", 1), "7");
    EXPECT_EQ(Named<QComboBox>(QStringLiteral("ComboReagent")).currentIndex(), -1);
}

TEST_F(AppearanceTest, FormActivate_AgainRepeatsTheTopMostCallOnly) {
    StartWithMira();
    Reagent(1).setText("7");
    Form().move(33, 44);
    TakeLog();
    Form().Form_Activate();
    EXPECT_THAT(TakeLog(), ElementsAre("top-most off"));
    EXPECT_EQ(Text("Reagent", 1), "7");
    EXPECT_EQ(Form().pos(), QPoint(33, 44));
}

TEST_F(AppearanceTest, FormActivate_OfTheWindowSystem_RepeatsTheTopMostCall) {
    StartWithMira();
    const WindowInFront other;
    TakeLog();
    Form().activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&Form()));
    EXPECT_THAT(TakeLog(), ElementsAre("top-most off"));
}

}  // namespace
}  // namespace spellwick
