// Tooltips that are made when they are shown, and the note of an undo.
#include <QElapsedTimer>
#include <QHelpEvent>
#include <QMenu>
#include <QPushButton>
#include <QToolTip>
#include <QWindow>

#include <gtest/gtest.h>

#include "companion/spell_tip.h"
#include "tests/main_window/page_fixture.h"
#include "tests/support/window_in_front.h"
#include "widgets/texts.h"

namespace spellwick {
namespace {

class TipsTest : public PageTest {
  protected:
    void TearDown() override {
        QToolTip::hideText();
        PageTest::TearDown();
    }

    // What the toolkit would show for a control on which the mouse rests.
    QString TipOf(QWidget& control) {
        QToolTip::hideText();
        const QPoint middle = control.rect().center();
        QHelpEvent help(QEvent::ToolTip, middle, control.mapToGlobal(middle));
        QCoreApplication::sendEvent(&control, &help);
        return QToolTip::isVisible() ? QToolTip::text() : QString();
    }
    std::string Expected(int slot) { return SpellTip(State(), Program().Shown(), slot); }
    Hint* Note() { return Form().findChild<Hint*>(QStringLiteral("UndoNote")); }
};

TEST_F(TipsTest, SpellIcon_TellsItsSpellAsItStandsNow) {
    StartWithMira();
    EXPECT_EQ(TipOf(Icon(3)).toStdString(), Expected(3));
    Enter(Reagent(5), "12");
    EXPECT_NE(TipOf(Icon(3)).indexOf(QStringLiteral("1 of 12 Garlic")), -1);
    ShowPage(4);
    EXPECT_EQ(TipOf(Icon(3)).toStdString(), Expected(3));
    EXPECT_TRUE(TipOf(Icon(0)).startsWith(ToQString(State().Spells(16).Name)));
}

TEST_F(TipsTest, SpellIcon_ItsTipComesAfter700Milliseconds_AlsoInAnInactiveWindow) {
    constexpr int kSoonest = 600;
    constexpr int kLatest = 5000;
    StartWithMira();
    const WindowInFront other;
    ASSERT_FALSE(Form().isActiveWindow());
    QElapsedTimer time;
    time.start();
    QTest::mouseMove(Form().windowHandle(), Icon(2).pos() + QPoint(9, 9));
    QTest::mouseMove(Form().windowHandle(), Icon(2).pos() + QPoint(10, 10));
    ASSERT_TRUE(QTest::qWaitFor([] { return QToolTip::isVisible(); }, kLatest));
    EXPECT_GE(time.elapsed(), kSoonest);
    EXPECT_EQ(QToolTip::text().toStdString(), Expected(2));
}

TEST_F(TipsTest, Tip_LetsClicksThrough) {
    StartWithMira();
    for (const char* control : {"SpellIcon(1)", "LabelAmount(1)"}) {
        ASSERT_NE(TipOf(Named(QLatin1String(control))), QString());
        int tips = 0;
        for (const QWidget* window : QApplication::topLevelWidgets()) {
            if (window->inherits("QTipLabel") && window->isVisible()) {
                ++tips;
                EXPECT_TRUE(
                    window->windowHandle()->flags().testFlag(Qt::WindowTransparentForInput));
            }
        }
        EXPECT_EQ(tips, 1);
    }
}

TEST_F(TipsTest, SpellIcon_TellsNothingWhileAButtonIsHeld) {
    StartWithMira();
    const QPoint place = Icon(1).rect().center();
    QTest::mousePress(Form().windowHandle(), Qt::RightButton, {}, Icon(1).pos() + place);
    EXPECT_EQ(TipOf(Icon(1)), QString());
    QTest::mouseRelease(Form().windowHandle(), Qt::RightButton, {}, Icon(1).pos() + place);
    EXPECT_NE(TipOf(Icon(1)), QString());
}

TEST_F(TipsTest, ControlsWithoutATooltipOfTheirOwn_HaveASentence) {
    StartWithMira();
    const struct {
        const char* control;
        const char* tip;
    } rows[] = {
        {"CheckCircle(0)",
         "Your own page 1: eight spells that you choose in the settings, User Spells."},
        {"CheckCircle(2)", "Shows the spells of Magery, circle 1."},
        {"CheckCircle(9)", "Shows the spells of Magery, circle 8."},
        {"CheckCircle(11)", "Shows page 2 of the Necromancer's spells."},
        {"CheckCircle(13)", "Shows page 2 of the Paladin's abilities."},
        {"Reagent(5)", "Garlic in this bag: type how many, or a change such as +10 or -3."},
        {"UpDown1(5)", "One Garlic more or less."},
        {"Command(0)", "Gives back to the counters what the last cast has taken."},
        {"Command(1)", "Click me for help"},
        {"LabelAmount(0)", "Amount castable"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(TipOf(Named(QLatin1String(row.control))).toStdString(), row.tip) << row.control;
    }
    for (QWidget* control : Form().findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
        if (control->isVisible()) {
            EXPECT_NE(TipOf(*control), QString()) << control->objectName().toStdString();
        }
    }
}

TEST_F(TipsTest, Undo_SaysForThreeSecondsWhatItGaveBack) {
    StartWithMira();
    EXPECT_EQ(Note(), nullptr);
    ClickSpell(0);
    Click("Command", 0);
    ASSERT_NE(Note(), nullptr);
    EXPECT_TRUE(Note()->isVisible());
    EXPECT_EQ(Note()->text(), QStringLiteral("back: 1 Bloodmoss, 1 Nightshade"));
    EXPECT_EQ(Note()->Time().interval(), 3000);
    EXPECT_TRUE(Note()->Time().isActive());
    EXPECT_FALSE(Note()->geometry().intersects(Form().frameGeometry()));
    EXPECT_TRUE(Note()->windowFlags().testFlag(Qt::WindowTransparentForInput));
    EXPECT_TRUE(Note()->windowFlags().testFlag(Qt::WindowDoesNotAcceptFocus));
    Note()->Time().setInterval(0);
    EXPECT_TRUE(QTest::qWaitFor([this] { return !Note()->isVisible(); }));
}

TEST_F(TipsTest, RightClickOnTheGround_OffersTheOtherArrangement) {
    StartWithMira();
    for (const bool vertical : {true, false}) {
        QContextMenuEvent click(QContextMenuEvent::Mouse, BareForm(),
                                Form().mapToGlobal(BareForm()));
        QCoreApplication::sendEvent(&Form(), &click);
        auto* menu = Form().findChild<QMenu*>(QStringLiteral("MenuArrangement"));
        ASSERT_NE(menu, nullptr);
        EXPECT_EQ(menu->actions().first()->text(), vertical
                                                       ? QStringLiteral("Display vertically")
                                                       : QStringLiteral("Display horizontally"));
        menu->actions().first()->trigger();
        menu->close();
        QCoreApplication::sendPostedEvents(menu, QEvent::DeferredDelete);
        EXPECT_EQ(State().DisplayVertical, vertical);
        EXPECT_EQ(Saved("Settings", "DisplayVertical"), vertical ? "True" : "False");
    }
    QContextMenuEvent onACounter(QContextMenuEvent::Mouse, Named("CheckCircle", 4).pos(),
                                 Form().mapToGlobal(Named("CheckCircle", 4).pos()));
    QCoreApplication::sendEvent(&Form(), &onACounter);
    EXPECT_EQ(Form().findChild<QMenu*>(QStringLiteral("MenuArrangement")), nullptr);
}

TEST(PlaceOfNote, IsOutsideOfTheWindowNearTheButtonAndOnTheScreen) {
    const QRect room(0, 0, 1000, 800);
    const QSize size(200, 30);
    struct Row {
        const char* name = "";
        QRect window;
        QRect button;
        QPoint place;
    };
    for (const Row& row :
         {Row{"column", {100, 100, 183, 500}, {200, 450, 40, 23}, {287, 446}},
          Row{"strip", {100, 100, 700, 110}, {300, 130, 40, 23}, {300, 66}},
          Row{"column at the right edge", {817, 100, 183, 500}, {917, 450, 40, 23}, {613, 446}},
          Row{"strip at the lower edge", {100, 690, 700, 110}, {300, 720, 40, 23}, {300, 656}},
          Row{"no room", {0, 0, 1000, 800}, {300, 130, 40, 23}, {300, 157}}}) {
        EXPECT_EQ(PlaceOfNote(row.button, row.window, size, room), row.place) << row.name;
    }
}

}  // namespace
}  // namespace spellwick
