// The row of Command buttons: help, settings, count.
#include <QPushButton>
#include <QSignalSpy>
#include <fstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/main_window_fixture.h"

namespace spellwick {
namespace {

using testing::ElementsAre;

const Box kNoToolBox{
    .text = "Could not find UO Assist. Without UO Assist the count function does not work.",
    .icon = BoxIcon::kInformation};
const Box kNoClientBox{.text = "Could not find Ultima Online.", .icon = BoxIcon::kCritical};

class CommandsTest : public MainWindowFixture {
  protected:
    QPushButton& Command(int index) { return Named<QPushButton>("Command", index); }
};

TEST_F(CommandsTest, CaptionsAndToolTips) {
    struct Row {
        const char* caption;
        const char* toolTip;
    };
    StartWithMira();
    const std::vector<Row> rows{{"Undo", ""},
                                {"?", "Click me for help"},
                                {"Settings", ""},
                                {"Count", ""},
                                {"Meditate", "Click this to use the Meditation skill"}};
    for (int index = 0; index < 5; ++index) {
        const Row& row = rows[static_cast<std::size_t>(index)];
        EXPECT_EQ(Text("Command", index), row.caption);
        EXPECT_EQ(Command(index).toolTip().toStdString(), row.toolTip);
    }
}

TEST_F(CommandsTest, Help_OpensTheTextBesideTheProgram) {
    StartWithMira();
    Click("Command", 1);
    ASSERT_EQ(m_desktop.opened.size(), 1U);
    EXPECT_EQ(m_desktop.opened[0], m_folder.Path() / "ReadMe.wri");
}

TEST_F(CommandsTest, Help_NoProgramForTheText_IsShownInAWindowOfOurs) {
    StartWithMira();
    std::ofstream(m_folder.Path() / "ReadMe.wri") << "{}";
    m_showsHelp = true;
    m_desktop.hasProgram = false;
    Click("Command", 1);
    EXPECT_THAT(m_desktop.opened, testing::IsEmpty());
    EXPECT_THAT(TakeLog(), ElementsAre("show help"));
    // An opener that is not there, though a program is known.
    m_desktop.hasProgram = true;
    m_desktop.opens = false;
    Click("Command", 1);
    EXPECT_THAT(TakeLog(), ElementsAre("open ReadMe.wri", "show help"));
}

TEST_F(CommandsTest, Help_WindowFailsOrTextIsMissing_EndsTheRun) {
    StartWithMira();
    m_desktop.hasProgram = false;
    m_showsHelp = true;
    Click("Command", 1);
    EXPECT_THAT(TakeFailures(), ElementsAre(UncaughtFailure{FailureKind::kFile, "pressing Help"}));
    std::ofstream(m_folder.Path() / "ReadMe.wri") << "{}";
    m_showsHelp = false;
    Click("Command", 1);
    EXPECT_THAT(TakeFailures(), ElementsAre(UncaughtFailure{FailureKind::kFile, "pressing Help"}));
    TakeLog();
}

// covers ODDITY(help-fails)
TEST_F(CommandsTest, Help_Oddity_NoTextOrNoOpenerEndsTheRun) {
    StartWithMira();
    m_desktop.opens = false;
    Click("Command", 1);
    EXPECT_THAT(TakeFailures(), ElementsAre(UncaughtFailure{FailureKind::kFile, "pressing Help"}));
}

TEST_F(CommandsTest, Settings_ShowsTheDialogUnderAnHourglassAndRefreshesThePage) {
    StartWithMira();
    Qt::CursorShape during = Qt::ArrowCursor;
    m_parts.hooked = "show settings";
    m_parts.hook = [&] {
        during = Form().cursor().shape();
        State().Spells(0).Name = "Renamed";
    };
    Click("Command", 2);
    EXPECT_EQ(during, Qt::WaitCursor);
    EXPECT_EQ(Form().cursor().shape(), Qt::ArrowCursor);
    EXPECT_THAT(TakeLog(), ElementsAre("show settings", "update chance"));
    EXPECT_EQ(Named("SpellIcon", 0).accessibleName(), QStringLiteral("Renamed"));
}

TEST_F(CommandsTest, Settings_AreToldOfTheMouseBeforeTheClick) {
    StartWithMira();
    const QSignalSpy near(&Form(), &FormMain::SettingsNear);
    QEnterEvent entered(QPointF(5, 5), QPointF(5, 5), QPointF(5, 5));
    QCoreApplication::sendEvent(&Command(3), &entered);
    EXPECT_EQ(near.size(), 0);
    QCoreApplication::sendEvent(&Command(2), &entered);
    EXPECT_EQ(near.size(), 1);
    EXPECT_THAT(TakeLog(), testing::IsEmpty());
}

TEST_F(CommandsTest, Count_WithTheTool_AsksItAndBringsTheClientForward) {
    StartWithMira();
    State().AssistLinked = true;
    Click("Command", 3);
    EXPECT_THAT(TakeLog(),
                ElementsAre("find assist", "request count", "find Ultima Online", "foreground 7"));
    EXPECT_FALSE(Command(3).isEnabled());
    EXPECT_EQ(Text("Command", 3), "Wait..");
}

TEST_F(CommandsTest, Count_ReportDuringTheRequest_PutsTheButtonBack) {
    StartWithMira();
    State().AssistLinked = true;
    m_parts.hooked = "request count";
    std::string caption;
    m_parts.hook = [&] {
        caption = Text("Command", 3);
        Command(3).setEnabled(true);
        Command(3).setText(QStringLiteral("Count"));
    };
    Click("Command", 3);
    EXPECT_EQ(caption, "Wait..");
    EXPECT_TRUE(Command(3).isEnabled());
    EXPECT_EQ(Text("Command", 3), "Count");
}

TEST_F(CommandsTest, Count_ToolFoundByThePress_IsAsked) {
    StartWithMira();
    m_parts.hooked = "find assist";
    m_parts.hook = [&] { State().AssistLinked = true; };
    Click("Command", 3);
    EXPECT_THAT(TakeLog(), testing::Contains("request count"));
}

TEST_F(CommandsTest, Count_WithoutTheTool_SaysSoAndBringsTheClientForward) {
    StartWithMira();
    Click("Command", 3);
    EXPECT_THAT(TakeBoxes(), ElementsAre(kNoToolBox));
    EXPECT_THAT(TakeLog(), ElementsAre("find assist", "box " + kNoToolBox.text,
                                       "find Ultima Online", "foreground 7"));
    EXPECT_TRUE(Command(3).isEnabled());
    EXPECT_EQ(Text("Command", 3), "Count");
}

TEST_F(CommandsTest, Count_NeitherToolNorClient_TwoBoxesInOrder) {
    StartWithMira();
    OpenClient("");
    Click("Command", 3);
    EXPECT_THAT(TakeBoxes(), ElementsAre(kNoToolBox, kNoClientBox));
    EXPECT_EQ(State().ClientWindow, 0U);
}

TEST_F(CommandsTest, Count_ThirdDawnClient_IsBroughtForward) {
    StartWithMira();
    State().AssistLinked = true;
    m_clients.windows = {{9, "Ultima Online Third Dawn", kMira}};
    Click("Command", 3);
    EXPECT_EQ(m_clients.foreground, 9U);
}

TEST_F(CommandsTest, Count_LetsPendingEventsRunAfterTheClientIsInFront) {
    StartWithMira();
    State().AssistLinked = true;
    bool ran = false;
    m_clients.afterSetForeground = [&] {
        QMetaObject::invokeMethod(
            &Form(), [&] { ran = true; }, Qt::QueuedConnection);
    };
    Click("Command", 3);
    EXPECT_TRUE(ran);
}

TEST_F(CommandsTest, Enter_OnAFocusedButton_PressesIt) {
    StartWithMira();
    Command(1).setFocus(Qt::TabFocusReason);
    Press(Qt::Key_Return);
    EXPECT_EQ(m_desktop.opened.size(), 1U);
}

TEST_F(CommandsTest, Press_CommitsTheEntryFirst) {
    StartWithMira();
    Enter(Reagent(3), "+10");
    Click("Command", 2);
    EXPECT_EQ(State().ReagentStock(3, 0), 60);
}

}  // namespace
}  // namespace spellwick
