// The list of bags: choosing one, and renaming one by typing over its name.
#include <QAbstractItemView>
#include <QComboBox>
#include <QGuiApplication>
#include <QLineEdit>
#include <QStyleHints>
#include <QWheelEvent>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/main_window_fixture.h"

namespace spellwick {
namespace {

class BagsTest : public MainWindowFixture {
  protected:
    QComboBox& Bags() { return Named<QComboBox>(QStringLiteral("ComboReagent")); }
    std::string Entry(int bag) { return Bags().itemText(bag).toStdString(); }
    std::string Shown() { return Bags().currentText().toStdString(); }
    void TypeName(const std::string& name) {
        Click(Bags());
        Press(Qt::Key_A, Qt::ControlModifier);
        Press(Qt::Key_Backspace);
        Type(name);
    }
    // Picks an entry of the open list with the mouse.
    void PickBag(int bag) {
        Bags().showPopup();
        QAbstractItemView& view = *Bags().view();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(view.window()));
        const QPoint place = view.visualRect(view.model()->index(bag, 0)).center();
        QTest::mouseMove(view.viewport(), place);
        // A quick release would end the click that opened the list.
        QTest::qWait(QGuiApplication::styleHints()->mouseDoubleClickInterval() + 50);
        QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, place);
    }
};

TEST_F(BagsTest, List_HasTheTenBagsByName) {
    StartWithMira();
    const std::vector<std::string> names{
        "Red Backpack", "Blue Backpack", "Green Backpack", "Yellow Backpack", "Purple Backpack",
        "Crate",        "Chest",         "Pouch",          "Wooden box",      "Bank Box"};
    ASSERT_EQ(Bags().count(), 10);
    for (int bag = 0; bag < 10; ++bag) {
        EXPECT_EQ(Entry(bag), names[static_cast<std::size_t>(bag)]);
    }
    EXPECT_EQ(Bags().currentIndex(), 0);
}

TEST_F(BagsTest, Pick_ShowsTheStockOfTheBagAndLeavesTheTithes) {
    StartWithMira();
    PickBag(1);
    EXPECT_EQ(State().CurrentReagentBag, 1);
    for (int reagent = 1; reagent <= 13; ++reagent) {
        EXPECT_EQ(Text("Reagent", reagent), "20");
    }
    EXPECT_EQ(Text("LabelAmount", 0), " 20");
    EXPECT_EQ(Text("LabelTithes"), "500");
    EXPECT_EQ(State().ReagentStock(1, 0), 50);
    EXPECT_EQ(State().ReagentStock(1, 1), 20);
}

TEST_F(BagsTest, Pick_UnfinishedEntryOfACounter_IsCommittedToTheFormerBag) {
    StartWithMira();
    Enter(Reagent(3), "+10");
    Click(Bags());
    Press(Qt::Key_Down);
    EXPECT_EQ(State().CurrentReagentBag, 1);
    EXPECT_EQ(State().ReagentStock(3, 0), 60);
    EXPECT_EQ(Text("Reagent", 3), "20");
}

TEST_F(BagsTest, Rename_LeftByAClickOnACounter_ShowsTheNewNameAndStaysSelected) {
    StartWithMira();
    TypeName("Belt pouch");
    EXPECT_EQ(State().BagName(0), "Belt pouch");
    EXPECT_EQ(Entry(0), "Red Backpack") << "the list follows when the box is left";
    Click(Reagent(1));
    EXPECT_EQ(Entry(0), "Belt pouch");
    EXPECT_EQ(Bags().currentIndex(), 0);
    EXPECT_EQ(Shown(), "Belt pouch");
    EXPECT_EQ(Bags().count(), 10);
    EXPECT_EQ(State().CurrentReagentBag, 0);
    EXPECT_FALSE(State().Updating);
}

TEST_F(BagsTest, Rename_ThenAnotherBagPicked_NamesTheOldAndSelectsTheNew) {
    StartWithMira();
    TypeName("Belt pouch");
    PickBag(3);
    EXPECT_EQ(Entry(0), "Belt pouch");
    EXPECT_EQ(State().BagName(0), "Belt pouch");
    EXPECT_EQ(State().BagName(3), "Yellow Backpack");
    EXPECT_EQ(State().CurrentReagentBag, 3);
    EXPECT_EQ(Bags().currentIndex(), 3);
    EXPECT_EQ(Shown(), "Yellow Backpack");
    EXPECT_EQ(Text("Reagent", 1), "0");
}

TEST_F(BagsTest, Rename_ThenTheSameBagPicked_KeepsTheNewName) {
    StartWithMira();
    TypeName("Belt pouch");
    PickBag(0);
    EXPECT_EQ(Entry(0), "Belt pouch");
    EXPECT_EQ(Shown(), "Belt pouch");
    EXPECT_EQ(State().CurrentReagentBag, 0);
}

TEST_F(BagsTest, Rename_EndedByEnter_ShowsTheNewName) {
    StartWithMira();
    TypeName("Belt pouch");
    Press(Qt::Key_Return);
    EXPECT_EQ(Entry(0), "Belt pouch");
    EXPECT_EQ(Bags().currentIndex(), 0);
    EXPECT_EQ(FocusName(), "CheckCircle(0)");
}

TEST_F(BagsTest, Rename_ToTheNameOfAnotherBag_DoesNotTurnToIt) {
    StartWithMira();
    for (const bool byEnter : {true, false}) {
        TypeName("Crate");
        if (byEnter) {
            Press(Qt::Key_Return);
        } else {
            Leave();
        }
        EXPECT_EQ(State().CurrentReagentBag, 0);
        EXPECT_EQ(Bags().currentIndex(), 0);
        EXPECT_EQ(Entry(0), "Crate");
        EXPECT_EQ(Text("Reagent", 1), "50");
    }
}

TEST_F(BagsTest, Rename_BeginningOfAnotherName_IsNotCompleted) {
    StartWithMira();
    TypeName("Blue");
    Leave();
    EXPECT_EQ(State().BagName(0), "Blue");
    EXPECT_EQ(Shown(), "Blue");
}

TEST_F(BagsTest, Rename_ToNothing_IsANameToo) {
    StartWithMira();
    TypeName("");
    Leave();
    EXPECT_EQ(State().BagName(0), "");
    EXPECT_EQ(Entry(0), "");
    EXPECT_EQ(Bags().count(), 10);
    EXPECT_EQ(State().CurrentReagentBag, 0);
}

TEST_F(BagsTest, Rename_ThenACast_CommitsTheName) {
    StartWithMira();
    TypeName("Belt pouch");
    ClickSpell(0);
    EXPECT_EQ(Entry(0), "Belt pouch");
}

TEST_F(BagsTest, Rename_ThenTheMenuOfTheBox_DoesNotCommitYet) {
    StartWithMira();
    TypeName("Belt");
    QFocusEvent menu(QEvent::FocusOut, Qt::PopupFocusReason);
    QApplication::sendEvent(&Bags(), &menu);
    EXPECT_EQ(Entry(0), "Red Backpack");
}

TEST_F(BagsTest, Rename_IsSavedWithThePlayer) {
    StartWithMira();
    TypeName("Belt pouch");
    Leave();
    Form().close();
    EXPECT_EQ(Saved(kMira, "Bag 0"), "Belt pouch");
}

TEST_F(BagsTest, LoadOfAPlayer_FillsTheListWithoutRunningItsHandlers) {
    StartWithMira();
    SavePlayer(kBran);
    SetSaved(kBran, "CurrentReagentBag", "1");
    OpenClient(kBran);
    Tick(1);
    EXPECT_EQ(Bags().currentIndex(), 1);
    EXPECT_EQ(State().CurrentReagentBag, 1);
    EXPECT_EQ(Text("Reagent", 1), "20");
    EXPECT_FALSE(State().Updating);
}

TEST_F(BagsTest, Pick_WhileUpdating_DoesNothing) {
    StartWithMira();
    State().Updating = true;
    Click(Bags());
    Press(Qt::Key_Down);
    State().Updating = false;
    EXPECT_EQ(State().CurrentReagentBag, 0);
    EXPECT_EQ(Text("Reagent", 1), "50");
}

TEST_F(BagsTest, Wheel_OverTheClosedList_TurnsNothing) {
    StartWithMira();
    Leave();
    const auto turn = [&] {
        const QPointF place = Bags().rect().center();
        QWheelEvent wheel(place, Bags().mapToGlobal(place), {}, QPoint(0, -120), Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(&Bags(), &wheel);
    };
    turn();
    EXPECT_EQ(State().CurrentReagentBag, 0);
    Click(Bags());
    turn();
    EXPECT_EQ(State().CurrentReagentBag, 0);
    EXPECT_EQ(Bags().currentIndex(), 0);
}

}  // namespace
}  // namespace spellwick
