// The counters of reagents: entries, keys, arrows, Enter.
#include <QClipboard>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <algorithm>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/main_window_fixture.h"
#include "tests/support/window_in_front.h"

namespace spellwick {
namespace {

using testing::ElementsAre;

const Box kRefused{.text = "You do not have that amount of reagents"};

class CountersTest : public MainWindowFixture {
  protected:
    i16& Cell() { return State().ReagentStock(3, 0); }
    void Hold(i16 stock) {
        Cell() = stock;
        Reagent(3).setText(QString::number(stock));
    }
    QWidget& Arrows() { return Named("UpDown1", 3); }
    void ClickArrow(bool up) {
        QTest::mouseClick(Form().windowHandle(), Qt::LeftButton, {},
                          Arrows().mapTo(&Form(), QPoint(5, up ? 3 : Arrows().height() - 3)));
    }
};

TEST_F(CountersTest, Entry_OnLeaving_IsWhatTheTableSays) {
    struct Row {
        const char* name;
        i16 before;
        const char* typed;
        const char* shown;
        i16 after;
        bool refused;
    };
    StartWithMira();
    for (const Row& row : {
             Row{"plus ten", 5, "+10", "15", 15, false},
             Row{"minus three", 5, "-3", "2", 2, false},
             Row{"all of it", 5, "-5", "0", 0, false},
             Row{"more than there is", 5, "-6", "5", 5, true},
             Row{"plus of five digits", 5, "+12345", "1239", 1239, false},
             Row{"minus of five digits", 2000, "-12345", "766", 766, false},
             Row{"minus of five digits refused", 5, "-12345", "5", 5, true},
             Row{"a sign alone", 5, "+", "5", 5, false},
             Row{"a minus alone", 5, "-", "5", 5, false},
             Row{"a sign within", 5, "12+3", "12+3", 12, false},
             Row{"a number", 5, "77", "77", 77, false},
             Row{"five digits", 5, "12345", "12345", 1234, false},
             Row{"nothing", 5, "", "", 0, false},
             Row{"two signs", 5, "--3", "8", 8, false},
         }) {
        SCOPED_TRACE(row.name);
        Hold(row.before);
        Enter(Reagent(3), row.typed);
        EXPECT_EQ(Cell(), row.before) << "typing alone does nothing";
        Leave();
        EXPECT_EQ(Text("Reagent", 3), row.shown);
        EXPECT_EQ(Cell(), row.after);
        const std::vector<Box> boxes = TakeBoxes();
        if (row.refused) {
            EXPECT_THAT(boxes, ElementsAre(kRefused));
        } else {
            EXPECT_TRUE(boxes.empty());
        }
        EXPECT_EQ(Shown().focusedReagent, 0);
    }
}

TEST_F(CountersTest, Entry_FiveDigits_AmountsWorkWithWhatTheBoxShows) {
    StartWithMira();
    Reagent(7).setText(QStringLiteral("30000"));
    Enter(Reagent(3), "12345");
    Leave();
    EXPECT_EQ(Text("LabelAmount", 0), " 12345");
    EXPECT_EQ(Cell(), 1234);
}

TEST_F(CountersTest, Entry_TypingAlone_MovesNoAmount) {
    StartWithMira();
    Enter(Reagent(3), "7");
    EXPECT_EQ(Text("LabelAmount", 0), " 50");
    Leave();
    EXPECT_EQ(Text("LabelAmount", 0), " 7");
}

TEST_F(CountersTest, Entry_BeyondThe16Bits_IsAnUncaughtFailure) {
    StartWithMira();
    Hold(32760);
    Enter(Reagent(3), "+8");
    Leave();
    EXPECT_THAT(TakeFailures(),
                ElementsAre(UncaughtFailure{FailureKind::kOverflow, "changing a counter"}));
    EXPECT_EQ(Cell(), 32760);
    EXPECT_EQ(Text("Reagent", 3), "+8");
}

TEST_F(CountersTest, Focus_SelectsTheWholeTextAndIsKnown) {
    StartWithMira();
    for (const bool byMouse : {true, false}) {
        SCOPED_TRACE(byMouse);
        if (byMouse) {
            Click(Reagent(3));
        } else {
            Reagent(2).setFocus(Qt::TabFocusReason);
            Press(Qt::Key_Tab);
        }
        EXPECT_EQ(FocusName(), "Reagent(3)");
        EXPECT_EQ(Reagent(3).selectedText(), QStringLiteral("50"));
        EXPECT_EQ(Shown().focusedReagent, 3);
        Leave();
        EXPECT_EQ(Shown().focusedReagent, 0);
    }
}

TEST_F(CountersTest, Focus_FromCounterToCounter_IsTheNewOnes) {
    StartWithMira();
    Enter(Reagent(3), "+1");
    Click(Reagent(5));
    EXPECT_EQ(Shown().focusedReagent, 5);
    EXPECT_EQ(Cell(), 51);
}

TEST_F(CountersTest, Focus_SwitchToAnotherProgram_LeavesTheEntryAsItIs) {
    StartWithMira();
    Enter(Reagent(3), "+10");
    const WindowInFront game;
    EXPECT_EQ(Text("Reagent", 3), "+10");
    EXPECT_EQ(Shown().focusedReagent, 3);
    Form().activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&Form()));
    EXPECT_EQ(FocusName(), "Reagent(3)");
    Type("0");
    EXPECT_EQ(Text("Reagent", 3), "+100");
    Leave();
    EXPECT_EQ(Text("Reagent", 3), "150");
}

TEST_F(CountersTest, Focus_AtTheStart_IsInNoCounter) {
    StartWithMira();
    EXPECT_EQ(FocusName(), "CheckCircle(2)");
    EXPECT_EQ(Shown().focusedReagent, 0);
}

TEST_F(CountersTest, Keys_EveryPrintableKey_PassesOrIsDroppedWithABeep) {
    StartWithMira();
    for (int key = 32; key < 127; ++key) {
        const char character = static_cast<char>(key);
        const bool passes =
            (character >= '0' && character <= '9') || character == '+' || character == '-';
        Click(Reagent(3));
        Reagent(3).clear();
        m_desktop.beeps = 0;
        Type(std::string(1, character));
        EXPECT_EQ(Text("Reagent", 3), passes ? std::string(1, character) : "") << character;
        EXPECT_EQ(m_desktop.beeps, passes ? 0 : 1) << character;
    }
    Reagent(3).setText(QStringLiteral("50"));
}

TEST_F(CountersTest, Keys_TypedWithOtherModifiersOrBeyondAscii_AreDropped) {
    struct Row {
        const char* name = nullptr;
        Qt::KeyboardModifiers modifiers;
        QString text;
    };
    StartWithMira();
    Click(Reagent(3));
    for (const Row& row :
         {Row{"Alt and a letter", Qt::AltModifier, QStringLiteral("x")},
          Row{"AltGr", Qt::ControlModifier | Qt::AltModifier, QStringLiteral("@")},
          Row{"Meta and a letter", Qt::MetaModifier, QStringLiteral("x")},
          Row{"an umlaut", Qt::NoModifier, QStringLiteral("ä")},
          Row{"a sign of another script", Qt::NoModifier, QStringLiteral("٣")},
          Row{"an emoji", Qt::NoModifier, QStringLiteral("🧙")},
          Row{"a joiner", Qt::NoModifier, QStringLiteral("\u200d")},
          Row{"a digit with a letter behind", Qt::NoModifier, QStringLiteral("1a")},
          Row{"a letter on the keypad", Qt::KeypadModifier, QStringLiteral(".")}}) {
        SCOPED_TRACE(row.name);
        m_desktop.beeps = 0;
        QTest::sendKeyEvent(QTest::Click, Form().windowHandle(), Qt::Key_unknown, row.text,
                            row.modifiers);
        EXPECT_EQ(Text("Reagent", 3), "50");
        EXPECT_EQ(m_desktop.beeps, 1);
    }
}

TEST_F(CountersTest, Keys_DigitsOfTheKeypad_Pass) {
    StartWithMira();
    Click(Reagent(3));
    Press(Qt::Key_7, Qt::KeypadModifier);
    EXPECT_EQ(Text("Reagent", 3), "7");
    EXPECT_EQ(m_desktop.beeps, 0);
}

TEST_F(CountersTest, Keys_SignsPassInAnyPlace) {
    StartWithMira();
    Enter(Reagent(3), "1-2+3");
    EXPECT_EQ(Text("Reagent", 3), "1-2+3");
    Press(Qt::Key_Backspace);
    EXPECT_EQ(Text("Reagent", 3), "1-2+");
    EXPECT_EQ(m_desktop.beeps, 0);
}

TEST_F(CountersTest, Keys_ShortCutsWork) {
    StartWithMira();
    Click(Reagent(3));
    Press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("50"));
    Press(Qt::Key_End);
    Press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(Text("Reagent", 3), "5050");
    EXPECT_EQ(m_desktop.beeps, 0);
}

TEST_F(CountersTest, Enter_CommitsExactlyOnceAndKeepsTheFocusWithTheTextSelected) {
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) {
        StartWithMira();
        Enter(Reagent(3), "+10");
        Press(key);
        EXPECT_EQ(Cell(), 60);
        EXPECT_EQ(Text("Reagent", 3), "60");
        EXPECT_EQ(FocusName(), "Reagent(3)");
        EXPECT_EQ(Reagent(3).selectedText(), QStringLiteral("60"));
        EXPECT_EQ(Shown().focusedReagent, 3);
        EXPECT_EQ(Text("LabelAmount", 0), " 50");
        Press(key);
        EXPECT_EQ(Cell(), 60);
        m_state = SharedState();
    }
}

TEST_F(CountersTest, Enter_RefusedEntry_ShowsOneBoxAndStays) {
    StartWithMira();
    Enter(Reagent(3), "-60");
    Press(Qt::Key_Return);
    EXPECT_THAT(TakeBoxes(), ElementsAre(kRefused));
    EXPECT_EQ(Text("Reagent", 3), "50");
    EXPECT_EQ(FocusName(), "Reagent(3)");
}

TEST_F(CountersTest, Enter_InTheBoxThatHasTheFocusAtTheStart_KeepsIt) {
    SavePlayer(kMira);
    Make();
    ASSERT_EQ(Form().Form_Load(), LoadOutcome::kReady);
    Form().Form_Activate();
    Reagent(3).setFocus();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&Form()));
    Type("+10");
    Press(Qt::Key_Return);
    EXPECT_EQ(Text("Reagent", 3), "60");
    EXPECT_EQ(FocusName(), "Reagent(3)");
}

TEST_F(CountersTest, Enter_NoBoxInFocus_RefreshesTheAmountsOnly) {
    StartWithMira();
    Named("CheckCircle", 4).setFocus(Qt::TabFocusReason);
    Reagent(3).setText(QStringLiteral("7"));
    ASSERT_EQ(Text("LabelAmount", 0), " 50");
    Press(Qt::Key_Return);
    EXPECT_EQ(Text("LabelAmount", 0), " 7");
    EXPECT_EQ(Cell(), 50);
    EXPECT_EQ(FocusName(), "CheckCircle(0)");
}

TEST_F(CountersTest, Arrows_StepStoreAndRefresh) {
    StartWithMira();
    ClickArrow(true);
    EXPECT_EQ(Text("Reagent", 3), "51");
    EXPECT_EQ(Cell(), 51);
    ClickArrow(false);
    ClickArrow(false);
    EXPECT_EQ(Cell(), 49);
    EXPECT_EQ(Text("LabelAmount", 0), " 49");
    EXPECT_EQ(State().ReagentStock(3, 1), 20);
}

TEST_F(CountersTest, Arrows_StopAtTheEndsOfTheirRange) {
    struct Row {
        i16 before;
        bool up;
        i16 after;
    };
    StartWithMira();
    for (const Row& row :
         {Row{998, true, 999}, Row{999, true, 999}, Row{1, false, 0}, Row{0, false, 0},
          Row{5000, true, 999}, Row{5000, false, 999}, Row{-3, false, 0}, Row{-3, true, 0}}) {
        SCOPED_TRACE(row.before);
        Hold(row.before);
        ClickArrow(row.up);
        EXPECT_EQ(Text("Reagent", 3), std::to_string(row.after));
        EXPECT_EQ(Cell(), row.after);
    }
}

TEST_F(CountersTest, Arrows_LargerNumberTyped_StandsUntilTheyTouchIt) {
    StartWithMira();
    Enter(Reagent(3), "5000");
    Leave();
    EXPECT_EQ(Text("Reagent", 3), "5000");
    EXPECT_EQ(Cell(), 5000);
    ClickArrow(false);
    EXPECT_EQ(Text("Reagent", 3), "999");
}

TEST_F(CountersTest, Arrows_ByTheKeysOfTheBox) {
    StartWithMira();
    Click(Reagent(3));
    Press(Qt::Key_Up);
    Press(Qt::Key_Up);
    Press(Qt::Key_Down);
    EXPECT_EQ(Text("Reagent", 3), "51");
    EXPECT_EQ(Cell(), 51);
}

TEST_F(CountersTest, Arrows_Held_GoOn) {
    StartWithMira();
    QWindow* window = Form().windowHandle();
    const QPoint place = Arrows().mapTo(&Form(), QPoint(5, 3));
    QTest::mousePress(window, Qt::LeftButton, {}, place);
    QElapsedTimer clock;
    clock.start();
    EXPECT_TRUE(QTest::qWaitFor([&] { return Reagent(3).text().toInt() >= 53; }));
    QTest::mouseRelease(window, Qt::LeftButton, {}, place);
    const int reached = Reagent(3).text().toInt();
    // One at once, then one each 60 ms from 400 ms on.
    EXPECT_GE(clock.elapsed(), 350);
    EXPECT_LE(reached, 53 + std::max<qint64>(0, clock.elapsed() - 400) / 60);
    EXPECT_EQ(Cell(), reached);
    QTest::qWait(200);
    EXPECT_EQ(Reagent(3).text().toInt(), reached);
}

}  // namespace
}  // namespace spellwick
