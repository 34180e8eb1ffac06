// The tithing points and their editor.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/main_window_fixture.h"
#include "tests/support/window_in_front.h"

namespace spellwick {
namespace {

class TithesTest : public MainWindowFixture {
  protected:
    QLabel& Label() { return Named<QLabel>(QStringLiteral("LabelTithes")); }
    QLineEdit& Box() { return Named<QLineEdit>(QStringLiteral("TxtTithes")); }
    QWidget& Ankh() { return Named(QStringLiteral("ImageAnkh")); }
};

TEST_F(TithesTest, Edit_ByDoubleClickOrAnkh_ShowsTheBoxSelectedAndFocused) {
    StartWithMira();
    for (const bool byAnkh : {false, true}) {
        EXPECT_FALSE(Box().isVisible());
        if (byAnkh) {
            Click(Ankh());
        } else {
            DoubleClick(Label());
        }
        EXPECT_TRUE(Box().isVisible());
        EXPECT_EQ(Box().text(), QStringLiteral("500"));
        EXPECT_EQ(Box().selectedText(), QStringLiteral("500"));
        EXPECT_EQ(FocusName(), "TxtTithes");
        Leave();
        EXPECT_FALSE(Box().isVisible());
    }
}

TEST_F(TithesTest, Edit_BySingleClickOnTheLabel_DoesNotBegin) {
    StartWithMira();
    Click(Label());
    EXPECT_FALSE(Box().isVisible());
}

TEST_F(TithesTest, Edit_StartsFromTheLabelNotThePoints) {
    StartWithMira();
    State().Spells(80).Reagents(kTithes) = 10;
    ShowPage(12);
    ClickSpell(0);
    // Undo writes the label alone.
    Program().Undo();
    ASSERT_EQ(State().CurrentTithing, 490);
    Click(Ankh());
    EXPECT_EQ(Box().text(), QStringLiteral("500"));
    Leave();
    EXPECT_EQ(State().CurrentTithing, 500);
}

TEST_F(TithesTest, Entry_OnLeaving_IsWhatTheTableSays) {
    struct Row {
        const char* name;
        i32 before;
        const char* typed;
        i32 after;
    };
    StartWithMira();
    for (const Row& row : {
             Row{"a number", 500, "321", 321},
             Row{"plus", 500, "+20", 520},
             Row{"minus", 500, "-20", 480},
             Row{"more than there are", 3, "-5", 0},
             Row{"all of them", 3, "-3", 0},
             Row{"over the ceiling", 9000, "+5000", 10000},
             Row{"up to the ceiling", 9000, "+1000", 10000},
             Row{"a number over the ceiling", 500, "10001", 10000},
             Row{"nine digits", 500, "123456789", 10000},
             Row{"eleven digits lose two", 500, "99000000123", 123},
             Row{"a sign and eight digits", 500, "+00000012", 501},
             Row{"a minus and eight digits", 500, "-00000019", 499},
             Row{"a sign and nine digits lose the sign", 500, "+000000123", 123},
             Row{"nothing", 500, "", 0},
             Row{"a sign alone", 500, "+", 500},
             Row{"two signs", 500, "+-20", 480},
             Row{"beyond the ceiling before, by a sign", 20000, "+0", 10000},
         }) {
        SCOPED_TRACE(row.name);
        State().CurrentTithing = row.before;
        Label().setText(QString::number(row.before));
        DoubleClick(Label());
        Press(Qt::Key_Backspace);
        Type(row.typed);
        EXPECT_EQ(State().CurrentTithing, row.before);
        Leave();
        EXPECT_EQ(State().CurrentTithing, row.after);
        EXPECT_EQ(Text("LabelTithes"), std::to_string(row.after));
        EXPECT_EQ(Text("TxtTithes"), std::to_string(row.after));
        EXPECT_FALSE(Box().isVisible());
    }
}

TEST_F(TithesTest, Entry_RefreshesTheAmounts) {
    StartWithMira();
    State().Spells(80).Reagents(kTithes) = 10;
    ShowPage(12);
    ASSERT_EQ(Text("LabelAmount", 0), " 50");
    DoubleClick(Label());
    Type("40");
    EXPECT_EQ(Text("LabelAmount", 0), " 50");
    Leave();
    EXPECT_EQ(Text("LabelAmount", 0), " 4");
}

TEST_F(TithesTest, Keys_EveryPrintableKey_PassesOrIsDroppedWithABeep) {
    StartWithMira();
    DoubleClick(Label());
    for (int key = 32; key < 127; ++key) {
        const char character = static_cast<char>(key);
        const bool passes =
            (character >= '0' && character <= '9') || character == '+' || character == '-';
        Box().clear();
        m_desktop.beeps = 0;
        Type(std::string(1, character));
        EXPECT_EQ(Text("TxtTithes"), passes ? std::string(1, character) : "") << character;
        EXPECT_EQ(m_desktop.beeps, passes ? 0 : 1) << character;
    }
}

TEST_F(TithesTest, Enter_CommitsOnce) {
    StartWithMira();
    DoubleClick(Label());
    Type("+10");
    Press(Qt::Key_Return);
    EXPECT_EQ(State().CurrentTithing, 510);
    EXPECT_FALSE(Box().isVisible());
    EXPECT_EQ(FocusName(), "CheckCircle(0)");
}

TEST_F(TithesTest, Edit_BegunFromACounter_CommitsTheCounter) {
    StartWithMira();
    Enter(Reagent(3), "+10");
    Click(Ankh());
    EXPECT_EQ(State().ReagentStock(3, 0), 60);
    EXPECT_EQ(FocusName(), "TxtTithes");
}

TEST_F(TithesTest, Commit_ByTheMouseOverASpell_LeavesNoEntryBehind) {
    StartWithMira();
    Click(Ankh());
    Type("+10");
    MoveTo(Named("SpellIcon", 0));
    EXPECT_EQ(State().CurrentTithing, 510);
    EXPECT_FALSE(Box().isVisible());
    // A second commit of the same entry would add it again.
    Leave();
    EXPECT_EQ(State().CurrentTithing, 510);
}

TEST_F(TithesTest, SwitchToAnotherProgram_LeavesTheEditOpen) {
    StartWithMira();
    Click(Ankh());
    Type("+10");
    const WindowInFront game;
    EXPECT_TRUE(Box().isVisible());
    EXPECT_EQ(State().CurrentTithing, 500);
}

TEST_F(TithesTest, LoadOfAPlayer_WritesLabelAndBox) {
    SavePlayer(kMira);
    SetSaved(kMira, "CurrentTithing", " 77");
    Make();
    Start();
    EXPECT_EQ(Text("LabelTithes"), "77");
    EXPECT_EQ(Text("TxtTithes"), "77");
}

}  // namespace
}  // namespace spellwick
