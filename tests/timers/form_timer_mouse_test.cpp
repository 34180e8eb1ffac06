// The window of the running timers: its mouse events, and its place among other windows.
#include <QMouseEvent>

#include "tests/support/paintings.h"
#include "tests/timers/form_timer_fixture.h"

namespace spellwick {
namespace {

TEST_F(FormTimerTest, Window_NeverTakesTheKeyboardAndStaysOutOfTheTaskList) {
    Make();
    Start(3, 60);
    EXPECT_TRUE(m_form->isVisible());
    EXPECT_TRUE(m_form->windowFlags().testFlag(Qt::WindowDoesNotAcceptFocus));
    EXPECT_TRUE(m_form->windowFlags().testFlag(Qt::FramelessWindowHint));
    EXPECT_TRUE(m_form->testAttribute(Qt::WA_ShowWithoutActivating));
    EXPECT_EQ(m_desktop.outOfTaskList,
              (std::vector<WindowHandle>{static_cast<WindowHandle>(m_form->winId())}));
    // Once for each showing.
    SetMode(kTimersOff);
    SetMode(kTimersAsText);
    EXPECT_EQ(m_desktop.outOfTaskList.size(), 2U);
}

TEST_F(FormTimerTest, SavedPlaceOnNoScreen_ComesBackWhenItIsShown) {
    for (const QPoint place : {QPoint(5000, 60), QPoint(-1000000, 60), QPoint(40, 1000000)}) {
        Make(place);
        EXPECT_EQ(m_form->pos(), place) << "as long as nobody sees it, it is saved as it was";
        Start(7, 90);
        EXPECT_TRUE(m_form->screen()->availableGeometry().contains(m_form->geometry()));
        EXPECT_EQ(m_form->x() == 40 || m_form->y() == 60, true) << "only as far as it must";
    }
    Make({-10, 50});
    Start(7, 90);
    EXPECT_EQ(m_form->pos(), QPoint(-10, 50)) << "partly on the screen";
}

TEST_F(FormTimerTest, HiddenByUser_StaysAwayUntilTheNextTimer) {
    Make();
    Start(1, 60);
    QTest::mouseClick(&Picture(0), Qt::RightButton);
    EXPECT_FALSE(m_form->isVisible());
    TickAt(1001.0F);
    EXPECT_FALSE(m_form->isVisible());
    EXPECT_TRUE(m_timers->SpellsActive());
    EXPECT_FALSE(m_form->isVisible());
    SetMode(kTimersAsText);
    EXPECT_FALSE(m_form->isVisible());
    Start(2, 30);
    EXPECT_TRUE(m_form->isVisible());
}

TEST_F(FormTimerTest, Controls_HideAndToggle) {
    Make();
    Start(1, 60);
    EXPECT_EQ(Control(0).text(), "X");
    EXPECT_EQ(Control(0).toolTip(), "Hide");
    EXPECT_EQ(Control(1).text(), "H");
    EXPECT_EQ(Control(1).toolTip(), "Switch to Horizontal display");
    EXPECT_EQ(m_form->width(), 46);
    QTest::mouseClick(&Control(1), Qt::LeftButton);
    EXPECT_EQ(Control(1).text(), "V");
    EXPECT_EQ(Control(1).toolTip(), "Switch to Vertical display");
    EXPECT_EQ(m_form->height(), 49);
    QTest::mouseClick(&Control(1), Qt::LeftButton);
    EXPECT_EQ(Control(1).text(), "H");
    QTest::mouseClick(&Control(0), Qt::LeftButton);
    EXPECT_FALSE(m_form->isVisible());
    TickAt(1001.0F);
    EXPECT_FALSE(m_form->isVisible());
}

TEST_F(FormTimerTest, Controls_FitIntoTheWindow) {
    Make();
    Start(1, 60);
    EXPECT_GE(Control(1).x(), 0);
    EXPECT_TRUE(m_form->rect().contains(Control(0).geometry()));
    QTest::mouseClick(&Control(1), Qt::LeftButton);
    EXPECT_TRUE(m_form->rect().contains(Control(1).geometry()));
    EXPECT_FALSE(Control(1).geometry().intersects(Picture(0).geometry()));
}

TEST_F(FormTimerTest, Drag_MovesTheWindowFromEachPart) {
    for (const char* part : {"", "imgSpell", "picProg", "lblSpellName", "lblTimeRemaining"}) {
        SCOPED_TRACE(part);
        m_state.SpellTimerMode =
            std::string_view(part).starts_with("lbl") ? kTimersAsText : kTimersAsIcons;
        Make();
        Start(1, 60);
        QWidget& from = *part == 0 ? static_cast<QWidget&>(*m_form) : Named<QWidget>(part, 0);
        QTest::mousePress(&from, Qt::LeftButton, {}, {3, 3});
        QMouseEvent move(QEvent::MouseMove, QPointF(23, 8), from.mapToGlobal(QPoint(23, 8)),
                         Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&from, &move);
        EXPECT_EQ(m_form->pos(), QPoint(60, 55));
        QTest::mouseRelease(&from, Qt::LeftButton, {}, {3, 3});
        EXPECT_TRUE(m_form->isVisible());
        QMouseEvent after(QEvent::MouseMove, QPointF(99, 99), from.mapToGlobal(QPoint(99, 99)),
                          Qt::NoButton, Qt::NoButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&from, &after);
        EXPECT_EQ(m_form->pos(), QPoint(60, 55));
    }
}

TEST_F(FormTimerTest, Drag_EndsWhenTheButtonIsFoundUp) {
    Make();
    Start(1, 60);
    const auto moveTo = [&](QPoint place, Qt::MouseButtons buttons) {
        QMouseEvent move(QEvent::MouseMove, place, m_form->mapToGlobal(place), Qt::NoButton,
                         buttons, Qt::NoModifier);
        QCoreApplication::sendEvent(m_form.get(), &move);
    };
    QTest::mousePress(m_form.get(), Qt::LeftButton, {}, {3, 3});
    moveTo({13, 3}, Qt::NoButton);
    moveTo({23, 3}, Qt::LeftButton);
    EXPECT_EQ(m_form->pos(), QPoint(40, 50));
}

TEST_F(FormTimerTest, OtherButtons_DoNotDragAndHideWhenTheyGoUp) {
    for (const Qt::MouseButton button : {Qt::RightButton, Qt::MiddleButton}) {
        Make();
        Start(1, 60);
        QTest::mousePress(m_form.get(), button, {}, {3, 3});
        EXPECT_TRUE(m_form->isVisible());
        QMouseEvent move(QEvent::MouseMove, QPointF(23, 8), m_form->mapToGlobal(QPoint(23, 8)),
                         Qt::NoButton, button, Qt::NoModifier);
        QCoreApplication::sendEvent(m_form.get(), &move);
        EXPECT_EQ(m_form->pos(), QPoint(40, 50));
        QTest::mouseRelease(m_form.get(), button, {}, {3, 3});
        EXPECT_FALSE(m_form->isVisible());
    }
}

TEST_F(FormTimerTest, RightButton_HidesFromEachPart) {
    for (const char* part : {"imgSpell", "picProg", "lblSpellName", "lblTimeRemaining"}) {
        SCOPED_TRACE(part);
        m_state.SpellTimerMode =
            std::string_view(part).starts_with("lbl") ? kTimersAsText : kTimersAsIcons;
        Make();
        Start(1, 60);
        auto& from = Named<QWidget>(part, 0);
        ASSERT_TRUE(from.isVisible());
        QTest::mouseClick(&from, Qt::RightButton);
        EXPECT_FALSE(m_form->isVisible());
    }
}

TEST_F(FormTimerTest, ClosedByTheDesktop_IsHiddenUntilTheNextTimer) {
    Make();
    Start(1, 60);
    m_form->close();
    EXPECT_FALSE(m_form->isVisible());
    TickAt(1001.0F);
    EXPECT_FALSE(m_form->isVisible());
    EXPECT_TRUE(m_timers->SpellsActive());
    Start(2, 60);
    EXPECT_TRUE(m_form->isVisible());
}

class FormTimerPaints : public FormTimerTest {
  protected:
    // Waits until the window has been painted once more.
    void PaintAnew() {
        ASSERT_TRUE(QTest::qWaitForWindowExposed(m_form.get()));
        testing_support::Paintings paints({m_form.get()});
        m_form->update();
        ASSERT_TRUE(QTest::qWaitFor([&paints] { return paints.count > 0; }));
        // It was counted before the window had it.
        QCoreApplication::processEvents();
    }
};

TEST_F(FormTimerPaints, AlwaysOnTop_PutsEachShownWindowAboveTheOthers) {
    Make();
    Start(1, 60);
    PaintAnew();
    EXPECT_TRUE(m_desktop.topMostCalls.empty());
    m_state.AlwaysOnTop = true;
    SetMode(kTimersOff);
    SetMode(kTimersAsIcons);
    PaintAnew();
    ASSERT_EQ(m_desktop.topMostCalls.size(), 1U);
    EXPECT_TRUE(m_desktop.topMostCalls[0].topMost);
    EXPECT_EQ(m_desktop.topMostCalls[0].window, m_form->winId());
    // A window manager may have lost the first request.
    for (const std::size_t asked : {2U, 3U, 3U, 3U}) {
        TickAt(1010.0F);
        PaintAnew();
        EXPECT_EQ(m_desktop.topMostCalls.size(), asked);
    }
    QTest::mouseClick(m_form.get(), Qt::RightButton);
    Start(2, 60);
    PaintAnew();
    EXPECT_EQ(m_desktop.topMostCalls.size(), 4U);
}

TEST_F(FormTimerPaints, TaskList_IsLeftAgainAfterTheWindowIsShown) {
    Make();
    Start(1, 60);
    EXPECT_EQ(m_desktop.outOfTaskList.size(), 1U);
    PaintAnew();
    EXPECT_EQ(m_desktop.outOfTaskList.size(), 2U);
    for (const std::size_t asked : {3U, 4U, 4U}) {
        TickAt(1010.0F);
        EXPECT_EQ(m_desktop.outOfTaskList.size(), asked);
    }
}

}  // namespace
}  // namespace spellwick
