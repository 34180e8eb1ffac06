// The hints beside a window.
#include "widgets/hint.h"

#include <QApplication>
#include <QDialog>
#include <QLineEdit>
#include <QPointer>
#include <QScreen>
#include <QTest>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace spellwick {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr QRect kRoom(0, 0, 800, 600);
constexpr QSize kHintSize(200, 50);

TEST(HintPlace, RoomOnTheRight_StandsThere) {
    EXPECT_EQ(PlaceBeside({100, 120, 183, 400}, kHintSize, kRoom, {}), QPoint(289, 120));
}

TEST(HintPlace, NoRoomOnTheRight_StandsOnTheLeft) {
    EXPECT_EQ(PlaceBeside({600, 120, 183, 400}, kHintSize, kRoom, {}), QPoint(394, 120));
}

TEST(HintPlace, WideWindow_StandsBelowIt) {
    EXPECT_EQ(PlaceBeside({10, 0, 780, 130}, kHintSize, kRoom, {}), QPoint(10, 136));
}

TEST(HintPlace, WideWindowAtTheFoot_StandsAboveIt) {
    EXPECT_EQ(PlaceBeside({10, 460, 780, 130}, kHintSize, kRoom, {}), QPoint(10, 404));
}

TEST(HintPlace, WindowAtTheFoot_IsMovedUpOntoTheScreen) {
    EXPECT_EQ(PlaceBeside({100, 580, 183, 400}, kHintSize, kRoom, {}), QPoint(289, 550));
}

TEST(HintPlace, AnotherWindowOnTheRight_IsLeftUncovered) {
    EXPECT_EQ(PlaceBeside({300, 100, 183, 400}, kHintSize, kRoom, {{500, 100, 200, 200}}),
              QPoint(94, 100));
}

TEST(HintPlace, AnotherWindowEverywhere_TheOwnerComesFirst) {
    EXPECT_EQ(PlaceBeside({300, 100, 183, 400}, kHintSize, kRoom, {kRoom}), QPoint(489, 100));
}

TEST(HintPlace, SecondScreen_ItsOwnCornerCounts) {
    constexpr QRect kSecond(-800, -100, 800, 600);
    EXPECT_EQ(PlaceBeside({-300, -90, 183, 400}, kHintSize, kSecond, {}), QPoint(-506, -90));
}

TEST(HintPlace, GameOnTheRight_IsLeftUncovered) {
    EXPECT_EQ(PlaceBeside({300, 100, 183, 400}, kHintSize, kRoom, {}, {480, 0, 320, 600}),
              QPoint(94, 100));
}

TEST(HintPlace, GameOrAnotherWindow_TheGameStaysUncovered) {
    EXPECT_EQ(
        PlaceBeside({300, 0, 183, 600}, kHintSize, kRoom, {{0, 0, 290, 600}}, {500, 0, 300, 600}),
        QPoint(94, 0));
}

TEST(HintPlace, BesideAControl_StandsAtItsHeight) {
    EXPECT_EQ(PlaceBeside({100, 120, 183, 400}, kHintSize, kRoom, {}, {}, {110, 300, 60, 20}),
              QPoint(289, 300));
}

TEST(HintPlace, BesideAControl_TakesTheNearestSide) {
    EXPECT_EQ(PlaceBeside({100, 200, 500, 130}, kHintSize, kRoom, {}, {}, {400, 205, 60, 20}),
              QPoint(400, 144))
        << "above";
    EXPECT_EQ(PlaceBeside({100, 200, 500, 130}, kHintSize, kRoom, {}, {}, {400, 300, 60, 20}),
              QPoint(400, 336))
        << "below";
}

class HintTest : public testing::Test, public FailureSink {
  protected:
    HintTest() {
        m_window.setGeometry(100, 100, 183, 400);
        m_edit.setFocus();
    }
    void ShowWindow() {
        m_window.show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&m_window));
    }
    void OnUncaughtFailure(const std::exception& failure, std::string_view action) override {
        ADD_FAILURE() << action << ": " << failure.what();
    }

    static std::vector<QLabel*> Shown() {
        std::vector<QLabel*> hints;
        for (QWidget* window : QApplication::topLevelWidgets()) {
            if (window->objectName() == QStringLiteral("Hint") && window->isVisible()) {
                hints.push_back(qobject_cast<QLabel*>(window));
            }
        }
        std::ranges::sort(hints, {}, &QWidget::y);
        return hints;
    }
    static std::vector<std::string> Texts() {
        std::vector<std::string> texts;
        for (const QLabel* hint : Shown()) {
            texts.push_back(hint->text().toStdString());
        }
        return texts;
    }
    static void Click(QWidget& window) {
        QTest::mouseClick(window.windowHandle(), Qt::LeftButton, {}, QPoint(5, 5));
    }
    static void ExpectOnScreen() {
        const QRect room = QGuiApplication::primaryScreen()->availableGeometry();
        for (const QLabel* hint : Shown()) {
            EXPECT_TRUE(room.contains(hint->frameGeometry()));
        }
    }

    QWidget m_window;
    QLineEdit m_edit{&m_window};
    Hints m_hints{m_window, *this};
};

TEST_F(HintTest, AnotherWindowAppears_TheHintsMoveAsideAndBack) {
    ShowWindow();
    m_hints.Show(QStringLiteral("Log in to your game."));
    const QPoint before = Shown().at(0)->pos();
    QWidget other;
    other.setGeometry(QRect(before - QPoint(4, 4), QSize(200, 200)));
    other.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&other));
    EXPECT_FALSE(Shown().at(0)->frameGeometry().intersects(other.frameGeometry()));
    other.move(before + QPoint(0, 300));
    QCoreApplication::processEvents();
    EXPECT_EQ(Shown().at(0)->pos(), before) << "it has moved out of the way";
    other.move(before);
    QCoreApplication::processEvents();
    EXPECT_NE(Shown().at(0)->pos(), before);
    other.hide();
    EXPECT_EQ(Shown().at(0)->pos(), before);
}

TEST_F(HintTest, ModalDialogAppears_AHintThatStandsStillTakesClicks) {
    ShowWindow();
    bool followed = false;
    m_hints.Show(QStringLiteral("New here?"), {.follow = [&] { followed = true; }});
    QDialog dialog(&m_window);
    dialog.setModal(true);
    dialog.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
    EXPECT_TRUE(QTest::qWaitFor(
        [&] { return Shown().at(0)->windowHandle()->transientParent() == dialog.windowHandle(); }));
    Click(*Shown().at(0));
    EXPECT_TRUE(followed);
}

TEST_F(HintTest, Time_IsEightSeconds) {
    ShowWindow();
    m_hints.Show(QStringLiteral("Log in to your game."));
    ASSERT_THAT(Texts(), ElementsAre("Log in to your game."));
    const auto& time = static_cast<Hint*>(Shown()[0])->Time();
    EXPECT_TRUE(time.isActive());
    EXPECT_EQ(time.intervalAsDuration(), 8s);
    EXPECT_TRUE(time.isSingleShot());
}

TEST_F(HintTest, Show_StandsBesideTheWindowAndTakesNoFocus) {
    ShowWindow();
    m_hints.Show(QStringLiteral("Log in to your game."));
    ASSERT_EQ(Shown().size(), 1U);
    const QLabel& hint = *Shown()[0];
    EXPECT_TRUE(hint.isWindow());
    EXPECT_TRUE(hint.windowFlags().testFlag(Qt::FramelessWindowHint));
    EXPECT_TRUE(hint.windowFlags().testFlag(Qt::WindowDoesNotAcceptFocus));
    EXPECT_TRUE(hint.testAttribute(Qt::WA_ShowWithoutActivating));
    EXPECT_FALSE(hint.frameGeometry().intersects(m_window.frameGeometry()));
    ExpectOnScreen();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(Shown()[0]));
    EXPECT_EQ(QApplication::focusWidget(), &m_edit);
    EXPECT_TRUE(m_window.isActiveWindow());
    EXPECT_FALSE(m_edit.testAttribute(Qt::WA_NativeWindow))
        << "the window system has no need of it";
}

TEST_F(HintTest, Text_IsPlainAndWrapped) {
    ShowWindow();
    m_hints.Show(QStringLiteral("<b>Short</b>"));
    const int line = Shown()[0]->height();
    const int width = Shown()[0]->width();
    Click(*Shown()[0]);
    m_hints.Show(
        QStringLiteral("Several windows could be your game. Open Settings, tab Game, and "
                       "choose the one in which your character stands."));
    ASSERT_EQ(Shown().size(), 1U);
    EXPECT_GT(Shown()[0]->height(), line + 20);
    EXPECT_GT(Shown()[0]->width(), width);
    EXPECT_LE(Shown()[0]->width(), 300);
    EXPECT_GE(Shown()[0]->height(), Shown()[0]->heightForWidth(Shown()[0]->width()));
    EXPECT_EQ(Shown()[0]->textFormat(), Qt::PlainText);
}

TEST_F(HintTest, Text_FromOutsideAndEndless_StaysOnTheScreen) {
    ShowWindow();
    m_hints.Show(QString(20000, QLatin1Char('W')));
    m_hints.Show(QStringLiteral("word ").repeated(20000));
    EXPECT_FALSE(Shown().empty());
    ExpectOnScreen();
}

TEST_F(HintTest, TimeIsOver_Goes) {
    Hints brief(m_window, *this, 30ms);
    ShowWindow();
    brief.Show(QStringLiteral("Log in to your game."));
    EXPECT_EQ(Shown().size(), 1U);
    EXPECT_TRUE(QTest::qWaitFor([] { return Shown().empty(); }, 2000));
}

TEST_F(HintTest, Click_EndsIt) {
    ShowWindow();
    m_hints.Show(QStringLiteral("Log in to your game."));
    const QPointer<QWidget> hint = Shown()[0];
    Click(*hint);
    EXPECT_THAT(Texts(), IsEmpty());
    EXPECT_TRUE(m_window.isActiveWindow());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(hint.isNull()) << "it is not kept for ever";
}

TEST_F(HintTest, Second_StandsBelowTheFirst) {
    ShowWindow();
    m_hints.Show(QStringLiteral("Log in to your game."));
    m_hints.Show(QStringLiteral("No assist tool answers."));
    ASSERT_THAT(Texts(), ElementsAre("Log in to your game.", "No assist tool answers."));
    EXPECT_FALSE(Shown()[0]->frameGeometry().intersects(Shown()[1]->frameGeometry()));
    EXPECT_FALSE(Shown()[1]->frameGeometry().intersects(m_window.frameGeometry()));
    ExpectOnScreen();
    const QPoint first = Shown()[0]->pos();
    Click(*Shown()[0]);
    ASSERT_THAT(Texts(), ElementsAre("No assist tool answers."));
    EXPECT_EQ(Shown()[0]->pos(), first) << "it moves up";
}

TEST_F(HintTest, OnTheLeft_EachEndsAtTheWindow) {
    m_window.move(600, 100);
    ShowWindow();
    m_hints.Show(QStringLiteral("Log in."));
    m_hints.Show(QStringLiteral("No assist tool answers."));
    ASSERT_EQ(Shown().size(), 2U);
    EXPECT_LT(Shown()[0]->width(), Shown()[1]->width());
    for (const QLabel* hint : Shown()) {
        EXPECT_EQ(hint->geometry().right() + 1, m_window.frameGeometry().left() - 6);
    }
}

TEST_F(HintTest, SameTextAgain_StandsOnceAndItsTimeStartsAnew) {
    ShowWindow();
    m_hints.Show(QStringLiteral("Log in to your game."));
    auto& time = static_cast<Hint*>(Shown()[0])->Time();
    time.start(1h);
    m_hints.Show(QStringLiteral("Log in to your game."));
    EXPECT_THAT(Texts(), ElementsAre("Log in to your game."));
    EXPECT_EQ(time.intervalAsDuration(), kHintTime);
    EXPECT_TRUE(time.isActive());
}

TEST_F(HintTest, MoreThanTheScreenHolds_TheOldestGo) {
    ShowWindow();
    for (int number = 0; number < 60; ++number) {
        m_hints.Show(QStringLiteral("Hint %1").arg(number));
    }
    ExpectOnScreen();
    ASSERT_FALSE(Shown().empty());
    EXPECT_LT(Shown().size(), 60U);
    EXPECT_EQ(Texts().back(), "Hint 59");
    for (std::size_t i = 1; i < Shown().size(); ++i) {
        EXPECT_GT(Shown()[i]->y(), Shown()[i - 1]->geometry().bottom());
    }
}

TEST_F(HintTest, WindowMoves_TheHintFollows) {
    ShowWindow();
    m_hints.Show(QStringLiteral("Log in to your game."));
    m_window.move(550, 50);
    QCoreApplication::processEvents();
    EXPECT_FALSE(Shown()[0]->frameGeometry().intersects(m_window.frameGeometry()));
    EXPECT_EQ(Shown()[0]->y(), m_window.frameGeometry().y());
    ExpectOnScreen();
}

TEST_F(HintTest, WindowGrowsOverIt_TheHintGivesWay) {
    ShowWindow();
    m_hints.Show(QStringLiteral("Log in to your game."));
    m_window.resize(600, 130);
    QCoreApplication::processEvents();
    EXPECT_FALSE(Shown()[0]->frameGeometry().intersects(m_window.frameGeometry()));
    ExpectOnScreen();
}

TEST_F(HintTest, WindowNotYetShown_TheHintComesWithIt) {
    m_hints.Show(QStringLiteral("Log in to your game."));
    EXPECT_THAT(Texts(), IsEmpty());
    ShowWindow();
    ASSERT_THAT(Texts(), ElementsAre("Log in to your game."));
    EXPECT_TRUE(static_cast<Hint*>(Shown()[0])->Time().isActive());
    m_window.hide();
    EXPECT_THAT(Texts(), IsEmpty());
}

TEST_F(HintTest, WindowMinimised_TheHintWaitsForIt) {
    ShowWindow();
    m_hints.Show(QStringLiteral("Log in to your game."));
    m_window.showMinimized();
    QCoreApplication::processEvents();
    EXPECT_THAT(Texts(), IsEmpty());
    m_window.showNormal();
    QCoreApplication::processEvents();
    EXPECT_THAT(Texts(), ElementsAre("Log in to your game."));
}

TEST_F(HintTest, ModalDialogOpen_AClickStillEndsIt) {
    ShowWindow();
    QDialog dialog(&m_window);
    dialog.setModal(true);
    dialog.show();
    m_hints.Show(QStringLiteral("Log in to your game."));
    Click(*Shown()[0]);
    EXPECT_THAT(Texts(), IsEmpty());
}

TEST_F(HintTest, WithALead_StandsBesideTheControlOverNone) {
    ShowWindow();
    m_edit.setGeometry(20, 300, 100, 24);
    m_hints.Show(QStringLiteral("Type it here."), {.beside = &m_edit, .follow = [] {}});
    ASSERT_EQ(Shown().size(), 1U);
    EXPECT_EQ(Shown()[0]->y(), m_edit.mapToGlobal(QPoint(0, 0)).y());
    EXPECT_FALSE(Shown()[0]->frameGeometry().intersects(m_window.frameGeometry()));
    EXPECT_EQ(Shown()[0]->cursor().shape(), Qt::PointingHandCursor);
    EXPECT_TRUE(m_window.isActiveWindow());
    EXPECT_EQ(QApplication::focusWidget(), &m_edit);
}

TEST_F(HintTest, ClickOnALead_ClosesTheHintAndThenGoesThere) {
    ShowWindow();
    int followed = 0;
    m_hints.Show(QStringLiteral("Type it here."), {.follow = [&] {
                     EXPECT_THAT(Texts(), IsEmpty());
                     ++followed;
                 }});
    EXPECT_EQ(followed, 0);
    Click(*Shown()[0]);
    EXPECT_EQ(followed, 1);
}

TEST_F(HintTest, TimeOfALeadIsOver_GoesNowhere) {
    Hints brief(m_window, *this, 30ms);
    ShowWindow();
    brief.Show(QStringLiteral("Type it here."), {.follow = [] { FAIL(); }});
    EXPECT_TRUE(QTest::qWaitFor([] { return Shown().empty(); }, 2000));
}

TEST_F(HintTest, SameTextWithAnotherLead_TheNewOneHolds) {
    ShowWindow();
    bool followed = false;
    m_hints.Show(QStringLiteral("Type it here."), {.follow = [] { FAIL(); }});
    m_hints.Show(QStringLiteral("Type it here."), {.follow = [&] { followed = true; }});
    Click(*Shown()[0]);
    EXPECT_TRUE(followed);
}

TEST_F(HintTest, GameOnTheRight_TheHintStandsOnTheOtherSide) {
    m_window.move(300, 100);
    ShowWindow();
    m_hints.SetGame([] { return QRect(483, 0, 317, 600); });
    m_hints.Show(QStringLiteral("Log in."));
    EXPECT_EQ(Shown()[0]->geometry().right() + 1, m_window.frameGeometry().left() - 6);
}

TEST_F(HintTest, UntilAClick_StandsWithoutTimeAndGoesAtAClickAnywhere) {
    Hints brief(m_window, *this, 30ms);
    ShowWindow();
    brief.Show(QStringLiteral("New here?"), {.follow = [] { FAIL(); }, .untilClick = true});
    ASSERT_THAT(Texts(), ElementsAre("New here?"));
    EXPECT_FALSE(static_cast<Hint*>(Shown()[0])->Time().isActive());
    QTest::qWait(100);
    EXPECT_THAT(Texts(), ElementsAre("New here?"));
    Click(m_window);
    EXPECT_THAT(Texts(), IsEmpty());
}

TEST_F(HintTest, UntilAClick_GoesAtAClickInAnotherWindowToo) {
    ShowWindow();
    m_hints.Show(QStringLiteral("New here?"), {.follow = [] { FAIL(); }, .untilClick = true});
    m_hints.Show(QStringLiteral("Log in to your game."));
    QWidget other;
    other.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&other));
    Click(other);
    EXPECT_THAT(Texts(), ElementsAre("Log in to your game.")) << "the others have their time";
}

TEST_F(HintTest, UntilAClick_AClickOnItselfIsFollowed) {
    ShowWindow();
    bool followed = false;
    m_hints.Show(QStringLiteral("New here?"),
                 {.follow = [&] { followed = true; }, .untilClick = true});
    Click(*Shown()[0]);
    EXPECT_THAT(Texts(), IsEmpty());
    EXPECT_TRUE(followed);
}

}  // namespace
}  // namespace spellwick
