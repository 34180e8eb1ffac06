// What happens during a cast: in its pause, and while one of its message boxes is open.
#include <QApplication>
#include <QComboBox>
#include <QElapsedTimer>
#include <QMenu>
#include <QSignalSpy>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/main_window_fixture.h"
#include "tests/support/window_in_front.h"

namespace spellwick {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// Our own window; the value does not matter as long as it is not the client's.
constexpr WindowHandle kOurs = 70;

class PauseTest : public MainWindowFixture {};

TEST_F(PauseTest, WaitTick_TakesOneTickOfATenthOfASecond) {
    StartWithMira();
    QSignalSpy ticks(&Form().Timer1(0), &QTimer::timeout);
    QElapsedTimer clock;
    clock.start();
    Form().Pause();
    EXPECT_GE(clock.elapsed(), 95);
    EXPECT_EQ(ticks.count(), 1);
    EXPECT_FALSE(Form().Timer1(0).isActive());
}

TEST_F(PauseTest, WaitTick_ServesTheEventQueue) {
    StartWithMira();
    bool waiting = false;
    InThePause([&] { waiting = Form().Timer1(0).isActive(); });
    ClickSpell(0);
    EXPECT_TRUE(waiting);
    EXPECT_THAT(m_keys.sent, ElementsAre("%1{ENTER}"));
}

TEST_F(PauseTest, OpenListOrMenu_IsClosedBeforeTheKeys) {
    StartWithMira();
    auto& bags = *Form().findChild<QComboBox*>(QStringLiteral("ComboReagent"));
    const int bag = bags.currentIndex();
    bags.showPopup();
    ASSERT_NE(QApplication::activePopupWidget(), nullptr);
    bool open = true;
    InThePause([&] { open = QApplication::activePopupWidget() != nullptr; });
    Form().Pause();
    EXPECT_FALSE(open);
    InThePause([&] { bags.showPopup(); });
    Form().Pause();
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
    EXPECT_EQ(bags.currentIndex(), bag);
    QMenu menu(&Form());
    menu.addAction(QStringLiteral("Paste"));
    menu.popup(Form().pos());
    ASSERT_EQ(QApplication::activePopupWidget(), &menu);
    Form().Pause();
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
}

// covers ODDITY(shared-send-string)
TEST_F(PauseTest, CastSpell_Oddity_OfTwoCastsInOnePauseTheSecondIsSentTwice) {
    StartWithMira();
    QSignalSpy ticks(&Form().Timer1(0), &QTimer::timeout);
    InThePause([&] { ClickSpell(1); });
    ClickSpell(0);
    EXPECT_THAT(m_keys.sent, ElementsAre("%2{ENTER}", "%2{ENTER}"));
    // The inner pause ended the outer one too: nothing is waited for after it.
    EXPECT_EQ(ticks.count(), 1);
    // Both casts are debited: Clumsy a Bloodmoss and a Nightshade, Create Food a Mandrake, a Garlic
    // and a Ginseng.
    for (const int reagent : {1, 3, 5, 7, 8}) {
        EXPECT_EQ(Text("Reagent", reagent), "49") << reagent;
    }
}

TEST_F(PauseTest, Meditate_InThePauseOfACast_SendsMeditationTwice) {
    StartWithMira();
    InThePause([&] { Click("Command", 4); });
    ClickSpell(0);
    EXPECT_THAT(m_keys.sent, ElementsAre(" {ENTER}", " {ENTER}"));
}

TEST_F(PauseTest, CastSpell_InThePauseOfMeditation_LosesNothing) {
    // Meditation builds its string after the pause.
    StartWithMira();
    InThePause([&] { ClickSpell(0); });
    Click("Command", 4);
    EXPECT_THAT(m_keys.sent, ElementsAre("%1{ENTER}", " {ENTER}"));
}

TEST_F(PauseTest, CastSpell_FrontGivenBackToUsInThePause_IsTakenAgainBeforeTheKeys) {
    StartWithMira();
    QElapsedTimer clock;
    InThePause([&] {
        clock.start();
        m_clients.foreground = kOurs;
    });
    ClickSpell(0);
    EXPECT_THAT(TakeLog(), ElementsAre("foreground 7", "focus 7", "foreground 7", "focus 7",
                                       "keys %1{ENTER}"));
    EXPECT_EQ(m_clients.foreground, 7U);
    // The client gets another full pause to take the focus; of the first a part was left at most.
    EXPECT_GE(clock.elapsed(), 100);
    EXPECT_EQ(Text("Reagent", 3), "49");
}

TEST_F(PauseTest, Meditate_FrontGivenBackToUsInThePause_IsTakenAgainBeforeTheKeys) {
    StartWithMira();
    InThePause([&] { m_clients.foreground = kOurs; });
    Click("Command", 4);
    EXPECT_THAT(TakeLog(), ElementsAre("find Ultima Online", "foreground 7", "focus 7",
                                       "foreground 7", "focus 7", "keys  {ENTER}"));
}

TEST_F(PauseTest, CastSpell_FrontLostAgainAndAgain_EndsTheCast) {
    StartWithMira();
    m_clients.afterSetForeground = [&] { m_clients.foreground = 0; };
    ClickSpell(0);
    EXPECT_THAT(TakeLog(), ElementsAre("foreground 7", "focus 7", "foreground 7", "focus 7"));
    EXPECT_EQ(Text("Reagent", 3), "50");
    EXPECT_THAT(TakeHints(), ElementsAre("Not cast: the game did not come to the front"));
}

TEST_F(PauseTest, CastSpell_FrontLostAgainAndAgainAndNotAskedFor_TheKeysAreNotPutOffForEver) {
    StartWithMira();
    State().CheckFront = false;
    m_clients.afterSetForeground = [&] { m_clients.foreground = 0; };
    ClickSpell(0);
    EXPECT_THAT(TakeLog(), ElementsAre("foreground 7", "focus 7", "foreground 7", "focus 7",
                                       "keys %1{ENTER}"));
}

// covers ODDITY(debit-after-switch)
TEST_F(PauseTest, CastSpell_Oddity_PlayerSwitchedInThePausePays) {
    StartWithMira();
    SavePlayer(kBran);
    SetSaved(kBran, "BM 0", "9");
    InThePause([&] {
        OpenClient(kBran);
        Tick(1);
    });
    ClickSpell(0);
    EXPECT_EQ(State().CurrentPlayerName, kBran);
    EXPECT_EQ(Text("Reagent", 3), "8");
    EXPECT_EQ(State().ReagentStock(3, 0), 8);
    EXPECT_EQ(Saved(kMira, "BM 0"), "50");
}

TEST_F(PauseTest, CastSpell_ClientClosesInThePause_EndsTheCast) {
    StartWithMira();
    InThePause([&] {
        OpenClient("");
        Tick(1);
    });
    ClickSpell(0);
    EXPECT_THAT(m_keys.sent, IsEmpty());
    EXPECT_EQ(Text("Reagent", 3), "50");
    EXPECT_EQ(State().ClientWindow, 0U);
    EXPECT_FALSE(Form().Timer1(0).isActive());
    EXPECT_THAT(TakeHints(), ElementsAre("Not cast: the game did not come to the front"));
}

TEST_F(PauseTest, CastSpell_ClientClosesInThePauseAndNotAskedFor_TypesAndDebitsAllTheSame) {
    StartWithMira();
    State().CheckFront = false;
    InThePause([&] {
        OpenClient("");
        Tick(1);
    });
    ClickSpell(0);
    EXPECT_THAT(m_keys.sent, ElementsAre("%1{ENTER}"));
    EXPECT_EQ(Text("Reagent", 3), "49");
    EXPECT_EQ(State().ClientWindow, 0U);
    EXPECT_FALSE(Form().Timer1(0).isActive());
}

TEST_F(PauseTest, CastSpell_ClientGoneBeforeIt_NothingSticks) {
    StartWithMira();
    m_clients.windows.clear();
    ClickSpell(0);
    EXPECT_THAT(TakeLog(), ElementsAre("foreground 7", "focus 7"));
    EXPECT_FALSE(Form().Timer1(0).isActive());
    EXPECT_EQ(TakeHints().size(), 1U);
}

TEST_F(PauseTest, CastSpell_BagSwitchedInThePause_TheNewBagPays) {
    StartWithMira();
    InThePause([&] {
        auto& bags = Named<QComboBox>(QStringLiteral("ComboReagent"));
        bags.setFocus(Qt::TabFocusReason);
        Press(Qt::Key_Down);
    });
    ClickSpell(0);
    EXPECT_EQ(State().CurrentReagentBag, 1);
    EXPECT_EQ(State().ReagentStock(3, 0), 50);
    EXPECT_EQ(State().ReagentStock(3, 1), 19);
}

TEST_F(PauseTest, CastSpell_PageTurnedInThePause_DebitsTheSpellThatWasClicked) {
    StartWithMira();
    InThePause([&] { ShowPage(13); });
    ClickSpell(0);
    EXPECT_THAT(m_keys.sent, ElementsAre("%1{ENTER}"));
    EXPECT_EQ(Text("Reagent", 3), "49");
    EXPECT_EQ(State().CurrentTithing, 500);
}

TEST_F(PauseTest, CastSpell_DoubleClick_CastsTwice) {
    StartWithMira();
    DoubleClick(Named("SpellIcon", 0));
    EXPECT_EQ(m_keys.sent.size(), 2U);
    EXPECT_EQ(Text("Reagent", 3), "48");
}

// covers ODDITY(double-click-casts-twice)
TEST_F(PauseTest, CastSpell_Oddity_SecondClickOfADoubleClickFallsIntoThePauseAndCasts) {
    StartWithMira();
    QWidget& icon = Named("SpellIcon", 0);
    const QPoint place = icon.mapTo(&Form(), icon.rect().center());
    QWindow* window = Form().windowHandle();
    InThePause([&] {
        QTest::mousePress(window, Qt::LeftButton, {}, place);
        QTest::mouseRelease(window, Qt::LeftButton, {}, place);
    });
    QTest::mousePress(window, Qt::LeftButton, {}, place);
    QTest::mouseRelease(window, Qt::LeftButton, {}, place);
    EXPECT_EQ(m_keys.sent.size(), 2U);
    EXPECT_EQ(Text("Reagent", 3), "48");
}

TEST_F(PauseTest, CastSpell_PlayerSwitchedWhileTheBookBoxStands_GoesOnWithTheNewPlayer) {
    StartWithMira();
    SavePlayer(kBran);
    State().Spellbook(0) = 1;
    m_boxes.answers = {BoxAnswer::kYes};
    m_boxes.whileStanding = [&] {
        OpenClient(kBran);
        Tick(1);
    };
    ClickSpell(0);
    EXPECT_EQ(TakeBoxes().size(), 1U);
    EXPECT_EQ(State().CurrentPlayerName, kBran);
    EXPECT_EQ(Saved(kMira, "Spellbook 0"), "1");
    EXPECT_THAT(m_keys.sent, ElementsAre("%1{ENTER}"));
    EXPECT_EQ(State().ReagentStock(3, 0), 49);
}

TEST_F(PauseTest, CastSpell_ClientGoneWhileTheBookBoxStands_StillSendsUnlessTheFrontIsAskedFor) {
    // The client is looked for before the question about the book, and not after it.
    StartWithMira();
    State().CheckFront = false;
    State().Spellbook(0) = 1;
    const auto closeTheClient = [&] {
        OpenClient("");
        Tick(1);
    };
    m_boxes.answers = {BoxAnswer::kYes};
    m_boxes.whileStanding = closeTheClient;
    ClickSpell(0);
    EXPECT_EQ(TakeBoxes().size(), 1U);
    EXPECT_EQ(m_keys.sent.size(), 1U);

    OpenClient(kMira);
    Tick(1);
    State().CheckFront = true;
    State().Spellbook(0) = 1;
    m_boxes.answers = {BoxAnswer::kYes};
    m_boxes.whileStanding = closeTheClient;
    ClickSpell(0);
    EXPECT_EQ(TakeBoxes().size(), 1U);
    EXPECT_EQ(m_keys.sent.size(), 1U);
    EXPECT_EQ(TakeHints().size(), 1U);
}

TEST_F(PauseTest, CastSpell_AnotherCastWhileABoxStands_BothGoOut) {
    StartWithMira();
    State().Spellbook(0) = 1;
    m_boxes.answers = {BoxAnswer::kYes};
    m_boxes.whileStanding = [&] { Program().ClickSlot(1); };
    ClickSpell(0);
    TakeBoxes();
    EXPECT_THAT(m_keys.sent, ElementsAre("%2{ENTER}", "%1{ENTER}"));
}

TEST_F(PauseTest, Counter_PlayerSwitchedWhileItsBoxStands_ShowsTheNewPlayersStock) {
    StartWithMira();
    SavePlayer(kBran);
    SetSaved(kBran, "MR 0", "9");
    Enter(Reagent(1), "-60");
    m_boxes.whileStanding = [&] {
        OpenClient(kBran);
        Tick(1);
    };
    Leave();
    EXPECT_EQ(TakeBoxes().size(), 1U);
    EXPECT_EQ(Text("Reagent", 1), "9");
    EXPECT_EQ(State().ReagentStock(1, 0), 9);
    EXPECT_EQ(Saved(kMira, "MR 0"), "50");
}

TEST_F(PauseTest, CastSpell_CommitOfAnEntryRefused_TheBoxComesBeforeTheKeys) {
    StartWithMira();
    Enter(Reagent(1), "-60");
    ClickSpell(0);
    EXPECT_THAT(TakeLog(), ElementsAre("box You do not have that amount of reagents",
                                       "foreground 7", "focus 7", "keys %1{ENTER}"));
    TakeBoxes();
}

TEST_F(PauseTest, CastSpell_UnfinishedEntry_IsCommittedBeforeTheKeysAndThenDebited) {
    StartWithMira();
    Enter(Reagent(3), "+10");
    std::string atTheKeys;
    m_keys.duringSend = [&] { atTheKeys = Text("Reagent", 3); };
    ClickSpell(0);
    EXPECT_EQ(atTheKeys, "60");
    EXPECT_EQ(Text("Reagent", 3), "59");
    EXPECT_EQ(State().ReagentStock(3, 0), 59);
    EXPECT_EQ(FocusName(), "CheckCircle(0)");
}

TEST_F(PauseTest, CastSpell_WindowNotActive_CommitsAllTheSame) {
    StartWithMira();
    Enter(Reagent(3), "+10");
    const WindowInFront game;
    // A switch to another program leaves the entry as it is.
    EXPECT_EQ(Text("Reagent", 3), "+10");
    EXPECT_EQ(State().ReagentStock(3, 0), 50);
    ClickSpell(0);
    EXPECT_EQ(Text("Reagent", 3), "59");
    EXPECT_EQ(State().ReagentStock(3, 0), 59);
}

TEST_F(PauseTest, CastSpell_TithesUnderEdit_AreCommittedBeforeTheKeys) {
    StartWithMira();
    DoubleClick(Named(QStringLiteral("LabelTithes")));
    Type("300");
    ClickSpell(0);
    EXPECT_EQ(State().CurrentTithing, 300);
    EXPECT_FALSE(Named(QStringLiteral("TxtTithes")).isVisible());
}

TEST_F(PauseTest, CastSpell_RefusedBeforeTheKeys_LeavesTheEntryUnfinished) {
    StartWithMira();
    OpenClient("");
    Tick(1);
    Enter(Reagent(3), "+10");
    ClickSpell(0);
    EXPECT_EQ(TakeBoxes().size(), 1U);
    EXPECT_EQ(Text("Reagent", 3), "+10");
    EXPECT_EQ(FocusName(), "Reagent(3)");
}

TEST_F(PauseTest, CastSpell_OverflowOfTheEntryItCommits_IsAnUncaughtFailureOfTheCounter) {
    StartWithMira();
    State().ReagentStock(3, 0) = 32000;
    Enter(Reagent(3), "+9999");
    ClickSpell(0);
    EXPECT_THAT(TakeFailures(),
                ElementsAre(UncaughtFailure{FailureKind::kOverflow, "changing a counter"}));
}

}  // namespace
}  // namespace spellwick
