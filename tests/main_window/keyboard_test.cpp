// The main window without a mouse.
#include <QAbstractButton>
#include <QSignalSpy>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/main_window/page_fixture.h"

namespace spellwick {
namespace {

using testing::IsEmpty;

class KeyboardTest : public PageTest {
  protected:
    void FocusIcon() { Icon(0).setFocus(Qt::TabFocusReason); }
    void PressAt(int slot, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyPress(&Icon(slot), key, modifiers);
    }
    void ReleaseAt(int slot, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyRelease(&Icon(slot), key, modifiers);
    }
};

TEST_F(KeyboardTest, Icons_AreOneStopWithArrowsInside) {
    StartWithMira();
    struct Step {
        Qt::Key key;
        const char* focus;
    };
    for (const bool vertical : {false, true}) {
        if (vertical) {
            Program().LayoutVertical();
        }
        for (int slot = 7; slot > 0; --slot) {
            Press(Qt::Key_Left);
        }
        FocusIcon();
        const std::vector<Step> steps =
            vertical
                ? std::vector<Step>{{Qt::Key_Right, "SpellIcon(1)"}, {Qt::Key_Down, "SpellIcon(5)"},
                                    {Qt::Key_Down, "SpellIcon(5)"},  {Qt::Key_Left, "SpellIcon(4)"},
                                    {Qt::Key_Left, "SpellIcon(4)"},  {Qt::Key_Up, "SpellIcon(0)"}}
                : std::vector<Step>{{Qt::Key_Left, "SpellIcon(0)"},
                                    {Qt::Key_Right, "SpellIcon(1)"},
                                    {Qt::Key_Down, "SpellIcon(1)"},
                                    {Qt::Key_Right, "SpellIcon(2)"}};
        for (const Step& step : steps) {
            Press(step.key);
            EXPECT_EQ(FocusName(), step.focus) << vertical;
        }
    }
    Press(Qt::Key_Right);
    Press(Qt::Key_Tab);
    EXPECT_EQ(FocusName(), "CheckCircle(2)");
    Press(Qt::Key_Backtab);
    EXPECT_EQ(FocusName(), "SpellIcon(1)") << "the stop is where the focus was last";
}

TEST_F(KeyboardTest, Icon_WithTheFocus_TellsItsSpellAndShowsIt) {
    StartWithMira();
    const QImage before = Icon(1).grab().toImage();
    FocusIcon();
    Press(Qt::Key_Right);
    EXPECT_EQ(Text("LabelName"), "Create Food");
    EXPECT_NE(Icon(1).grab().toImage(), before);
}

TEST_F(KeyboardTest, SpaceAndEnter_CastWhenTheyComeUp) {
    StartWithMira();
    for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter}) {
        FocusIcon();
        PressAt(0, key);
        EXPECT_THAT(m_keys.sent, IsEmpty());
        ReleaseAt(0, key);
        EXPECT_EQ(m_keys.sent.size(), 1U);
        EXPECT_EQ(FocusName(), "CheckCircle(0)") << "as after any cast";
        m_keys.sent.clear();
    }
    TakeLog();
}

TEST_F(KeyboardTest, KeyThatWentDownElsewhere_CastsNothing) {
    StartWithMira();
    FocusIcon();
    ReleaseAt(0, Qt::Key_Space);
    PressAt(0, Qt::Key_Space);
    Named("CheckCircle", 4).setFocus(Qt::TabFocusReason);
    FocusIcon();
    ReleaseAt(0, Qt::Key_Space);
    EXPECT_THAT(m_keys.sent, IsEmpty());
}

TEST_F(KeyboardTest, CtrlSpace_CreditsAsACtrlClickDoes) {
    StartWithMira();
    FocusIcon();
    PressAt(0, Qt::Key_Space, Qt::ControlModifier);
    ReleaseAt(0, Qt::Key_Space, Qt::ControlModifier);
    EXPECT_EQ(Reagent(3).text(), QStringLiteral("51"));
    EXPECT_THAT(m_keys.sent, IsEmpty());
}

TEST_F(KeyboardTest, MenuKey_AsksForTheInformation) {
    StartWithMira();
    QSignalSpy info(&Form(), &FormMain::InfoWanted);
    FocusIcon();
    Press(Qt::Key_Right);
    PressAt(1, Qt::Key_Menu);
    ASSERT_EQ(info.size(), 1);
    EXPECT_EQ(info[0][0].toInt(), 1);
    EXPECT_THAT(m_keys.sent, IsEmpty());
}

TEST_F(KeyboardTest, ClickOnAnIcon_LeavesTheFocusWhereItWouldBe) {
    StartWithMira();
    Named("CheckCircle", 5).setFocus(Qt::TabFocusReason);
    QTest::mousePress(Form().windowHandle(), Qt::RightButton, {},
                      Icon(0).pos() + Icon(0).rect().center());
    EXPECT_EQ(FocusName(), "CheckCircle(5)");
    QTest::mouseRelease(Form().windowHandle(), Qt::RightButton, {},
                        Icon(0).pos() + Icon(0).rect().center());
}

TEST_F(KeyboardTest, Cast_LeavesNoFocusInACounter) {
    StartWithMira();
    Enter(Reagent(3), "40");
    ClickSpell(0);
    EXPECT_EQ(FocusName(), "CheckCircle(0)");
    EXPECT_EQ(Shown().focusedReagent, 0);
    TakeLog();
}

TEST_F(KeyboardTest, F1AndCtrlComma_OpenHelpAndSettings_FromEveryControl) {
    StartWithMira();
    QSignalSpy settings(&Form(), &FormMain::SettingsWanted);
    for (const char* control :
         {"CheckCircle(3)", "Reagent(2)", "ComboReagent", "SpellIcon(0)", "Command(0)"}) {
        m_desktop.opened.clear();
        settings.clear();
        Named(QLatin1String(control)).setFocus(Qt::TabFocusReason);
        Press(Qt::Key_F1);
        EXPECT_EQ(m_desktop.opened.size(), 1U) << control;
        Press(Qt::Key_Comma, Qt::ControlModifier);
        EXPECT_EQ(settings.size(), 1) << control;
    }
}

TEST_F(KeyboardTest, CtrlZ_UndoesTheDebit_ButInAnEditTheEntry) {
    StartWithMira();
    ClickSpell(0);
    ASSERT_EQ(Reagent(3).text(), QStringLiteral("49"));
    Named("CheckCircle", 3).setFocus(Qt::TabFocusReason);
    Press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(Reagent(3).text(), QStringLiteral("50"));
    Enter(Reagent(3), "7");
    Press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_NE(Reagent(3).text(), QStringLiteral("7"));
    EXPECT_EQ(Reagent(7).text(), QStringLiteral("50")) << "nothing was credited";
    TakeLog();
}

TEST_F(KeyboardTest, Ankh_WithSpaceOrEnter_OpensTheTithes) {
    StartWithMira();
    for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Return}) {
        Named(QStringLiteral("ImageAnkh")).setFocus(Qt::TabFocusReason);
        Press(key);
        EXPECT_EQ(FocusName(), "TxtTithes");
        Type("77");
        Press(Qt::Key_Tab);
        EXPECT_EQ(State().CurrentTithing, 77);
        State().CurrentTithing = 0;
    }
}

TEST_F(KeyboardTest, PageButton_FocusByTheKeyboard_IsSeen) {
    StartWithMira();
    QWidget& button = Named("CheckCircle", 4);
    QWidget& other = Named("CheckCircle", 3);
    other.setFocus(Qt::TabFocusReason);
    const QImage before = button.grab().toImage();
    Press(Qt::Key_Tab);
    ASSERT_EQ(FocusName(), "CheckCircle(4)");
    EXPECT_NE(button.grab().toImage(), before);
}

TEST_F(KeyboardTest, KeysOnIcons_AreDrawnWhenTheOptionIsOn) {
    StartWithMira();
    State().MacroAlt(1) = "";
    State().MacroCtrl(1) = "^";
    State().MacroShift(1) = "";
    State().MacroKey(1) = "4";
    Program().UpdatePage();
    EXPECT_EQ(Icon(0).Corner(), QString());
    const QImage before = Icon(0).grab().toImage();
    State().KeysOnIcons = true;
    Program().UpdatePage();
    EXPECT_EQ(Icon(0).Corner(), QStringLiteral("Ctrl+4"));
    const QImage after = Icon(0).grab().toImage();
    EXPECT_NE(after, before);
    EXPECT_EQ(after.copy(0, 0, 42, 20), before.copy(0, 0, 42, 20)) << "in the lower corner only";
    State().MacroAlt(1) = "%";
    State().MacroShift(1) = "+";
    State().MacroKey(1) = "{F12}";
    Program().UpdatePage();
    EXPECT_EQ(Icon(0).Corner(), QStringLiteral("CASF12"));
    EXPECT_LE(Icon(0).CornerWidth(Icon(0).Corner()), Icon(0).width());
}

}  // namespace
}  // namespace spellwick
