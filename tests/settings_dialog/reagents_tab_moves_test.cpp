// Moves between two bags with arrows and signs, plain counts, and totals.

#include "tests/settings_dialog/reagents_tab_fixture.h"

namespace spellwick {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const Box kTwoBagsBox{.text = "Please select two different containers before transferring reagents",
                      .icon = BoxIcon::kExclamation};
const Box kNotThatManyBox{.text = "You do not have that amount of reagents to move"};

TEST_F(ReagentsTabTest, Arrows_MoveOneToTheirSideInEveryRow) {
    OpenTab();
    FillStock();
    Form().RefreshDialog();
    for (int reagent = 1; reagent <= 13; ++reagent) {
        if (reagent == 9) {
            Click("RegType", 1);
        }
        ClickArrow(reagent, kLeft);
        EXPECT_EQ(m_state.ReagentStock(reagent, 0), reagent * 10 + 1);
        EXPECT_EQ(m_state.ReagentStock(reagent, 1), reagent * 10);
        EXPECT_EQ(Text("ReagentLeft", reagent), std::to_string(reagent * 10 + 1));
        EXPECT_EQ(Text("ReagentRight", reagent), std::to_string(reagent * 10));
        ClickArrow(reagent, kRight);
        ClickArrow(reagent, kRight);
        EXPECT_EQ(m_state.ReagentStock(reagent, 0), reagent * 10 - 1);
        EXPECT_EQ(m_state.ReagentStock(reagent, 1), reagent * 10 + 2);
    }
}

// covers ODDITY(silent-arrow)
TEST_F(ReagentsTabTest, Arrows_Oddity_AtAnEmptySource_DoNothingAndSayNothing) {
    OpenTab();
    for (const i16 count : {i16{0}, i16{-3}}) {
        SetCounts(count, count);
        ClickArrow(1, kLeft);
        ClickArrow(1, kRight);
        ExpectCounts(count, count, "empty");
        EXPECT_THAT(TakeBoxes(), IsEmpty());
    }
}

TEST_F(ReagentsTabTest, Arrows_SameBag_GiveTheBoxAndChangeNothing) {
    OpenTab();
    Pick(Bag(1), 0);
    m_state.ReagentStock(1, 0) = 5;
    for (const BagSide to : {kLeft, kRight}) {
        ClickArrow(1, to);
        EXPECT_THAT(TakeBoxes(), ElementsAre(kTwoBagsBox));
        EXPECT_EQ(m_state.ReagentStock(1, 0), 5);
        EXPECT_EQ(Text("ReagentLeft", 1), "5");
    }
    m_state.ReagentStock(1, 0) = 0;
    ClickArrow(1, kLeft);
    EXPECT_THAT(TakeBoxes(), ElementsAre(kTwoBagsBox)) << "also at an empty source";
}

TEST_F(ReagentsTabTest, Arrows_WithoutABag_GiveTheBoxAndThenEndTheProgram) {
    OpenTab();
    for (const int list : {0, 1}) {
        Bag(0).setCurrentIndex(list == 0 ? -1 : 0);
        Bag(1).setCurrentIndex(list == 1 ? -1 : 1);
        m_state.ReagentStock(1, 0) = m_state.ReagentStock(1, 1) = 5;
        ClickArrow(1, kLeft);
        EXPECT_THAT(TakeBoxes(), ElementsAre(kTwoBagsBox));
        EXPECT_THAT(TakeFailures(),
                    ElementsAre(UncaughtFailure{FailureKind::kSubscript, "moving a reagent"}));
    }
}

TEST_F(ReagentsTabTest, Arrows_ByTheKeyboard) {
    OpenTab();
    SetCounts(5, 5);
    Named("UpDown1", 1).setFocus();
    Press(Qt::Key_Left);
    ExpectCounts(6, 4, "left key");
    Press(Qt::Key_Right);
    ExpectCounts(5, 5, "right key");
}

TEST_F(ReagentsTabTest, Arrows_HeldDown_GoOnButNotWhileABoxStands) {
    OpenTab();
    SetCounts(5, 5);
    QWidget& arrows = Named("UpDown1", 1);
    const QPoint left = arrows.mapTo(&Form(), QPoint(4, 4));
    const auto taken = [this] { return m_state.ReagentStock(1, 0); };
    QTest::mousePress(Form().windowHandle(), Qt::LeftButton, Qt::NoModifier, left);
    ExpectCounts(6, 4, "one step");
    EXPECT_TRUE(QTest::qWaitFor([&] { return taken() > 6; }, 2000));
    QTest::mouseRelease(Form().windowHandle(), Qt::LeftButton, Qt::NoModifier, left);
    const i16 reached = taken();
    QTest::qWait(500);
    EXPECT_EQ(taken(), reached);

    Pick(Bag(1), 0);
    m_boxes.whileStanding = [] { QTest::qWait(600); };
    QTest::mousePress(Form().windowHandle(), Qt::LeftButton, Qt::NoModifier, left);
    EXPECT_THAT(TakeBoxes(), ElementsAre(kTwoBagsBox));
    QTest::mouseRelease(Form().windowHandle(), Qt::LeftButton, Qt::NoModifier, left);
}

TEST_F(ReagentsTabTest, Arrows_HeldDown_GoOnWhenTheMouseSlidesOff) {
    OpenTab();
    SetCounts(5, 5);
    QWidget& arrows = Named("UpDown1", 1);
    const QPoint left = arrows.mapTo(&Form(), QPoint(4, 4));
    QTest::mousePress(Form().windowHandle(), Qt::LeftButton, Qt::NoModifier, left);
    QTest::mouseMove(Form().windowHandle(), left - QPoint(0, 60));
    EXPECT_TRUE(QTest::qWaitFor([&] { return m_state.ReagentStock(1, 0) > 6; }, 2000));
    QTest::mouseRelease(Form().windowHandle(), Qt::LeftButton, Qt::NoModifier, left);
}

TEST_F(ReagentsTabTest, Arrows_OtherButtons_MoveNothing) {
    OpenTab();
    SetCounts(5, 5);
    QWidget& arrows = Named("UpDown1", 1);
    const QPoint left = arrows.mapTo(&Form(), QPoint(4, 4));
    for (const Qt::MouseButton button : {Qt::RightButton, Qt::MiddleButton}) {
        QTest::mouseClick(Form().windowHandle(), button, Qt::NoModifier, left);
        ExpectCounts(5, 5, "another button");
    }
}

TEST_F(ReagentsTabTest, Arrows_DoNotAddTheTotalsUp) {
    OpenTab();
    SetCounts(5, 5);
    m_state.ReagentStock(1, 9) = 100;
    ClickArrow(1, kLeft);
    EXPECT_EQ(Text("LabelTotal", 1), "10");
}

struct SignRow {
    const char* name;
    BagSide side;
    const char* typed;
    int left;   // 10 before
    int right;  // 3 before
    bool refused;
};

TEST_F(ReagentsTabTest, SignTable_MovesRefusalsAndBothBoxesRewritten) {
    OpenTab();
    for (const SignRow& row :
         std::initializer_list<SignRow>{{"left fetches", kLeft, "+2", 12, 1, false},
                                        {"left fetches all", kLeft, "+3", 13, 0, false},
                                        {"left fetches five of three", kLeft, "+5", 10, 3, true},
                                        {"left gives", kLeft, "-4", 6, 7, false},
                                        {"left gives too much", kLeft, "-11", 10, 3, true},
                                        {"right fetches", kRight, "+4", 6, 7, false},
                                        {"right fetches too much", kRight, "+11", 10, 3, true},
                                        {"right gives", kRight, "-2", 12, 1, false},
                                        {"right gives too much", kRight, "-4", 10, 3, true},
                                        {"plus nought", kLeft, "+0", 10, 3, false},
                                        {"plus alone", kLeft, "+", 10, 3, false},
                                        {"minus alone", kRight, "-", 10, 3, false},
                                        {"backwards", kLeft, "+-5", 5, 8, false},
                                        {"backwards below nought", kRight, "--12", -2, 15, false},
                                        {"ten digits", kLeft, "+1234567890", 10, 3, true}}) {
        SetCounts(10, 3);
        EnterAndLeave(row.side, row.typed);
        EXPECT_EQ(TakeBoxes(), row.refused ? std::vector<Box>{kNotThatManyBox} : std::vector<Box>{})
            << row.name;
        ExpectCounts(row.left, row.right, row.name);
        ExpectShown(std::to_string(row.left), std::to_string(row.right), row.name);
    }
}

TEST_F(ReagentsTabTest, SignForms_DoNotAddTheTotalsUp) {
    OpenTab();
    SetCounts(10, 3);
    m_state.ReagentStock(1, 9) = 100;
    EnterAndLeave(kLeft, "+2");
    EXPECT_EQ(Text("LabelTotal", 1), "13");
    EnterAndLeave(kLeft, "20");
    EXPECT_EQ(Text("LabelTotal", 1), "121");
    EXPECT_EQ(Tab().ReagentTotal(1), 121);
}

TEST_F(ReagentsTabTest, SignForm_OfNought_ChangesNothingButRewritesBothBoxes) {
    OpenTab();
    EnterAndLeave(kRight, "12345");
    EXPECT_EQ(Text("ReagentRight", 1), "12345");
    EnterAndLeave(kLeft, "+0");
    ExpectCounts(0, 1234, "+0");
    ExpectShown("0", "1234", "+0");
}

TEST_F(ReagentsTabTest, SignForm_Refused_TheBoxComesBeforeTheRewrite) {
    OpenTab();
    SetCounts(10, 3);
    std::string shownBehind;
    m_boxes.whileStanding = [&] { shownBehind = Text("ReagentLeft", 1); };
    EnterAndLeave(kLeft, "+5");
    EXPECT_THAT(TakeBoxes(), ElementsAre(kNotThatManyBox));
    EXPECT_EQ(shownBehind, "+5");
    ExpectShown("10", "3", "refused");
}

TEST_F(ReagentsTabTest, SignForm_SameBag_IsTakenWithoutABox) {
    OpenTab();
    Pick(Bag(1), 0);
    m_state.ReagentStock(1, 0) = 5;
    EnterAndLeave(kLeft, "+5");
    EXPECT_EQ(m_state.ReagentStock(1, 0), 5);
    EXPECT_EQ(Text("ReagentLeft", 1), "5");
    EnterAndLeave(kRight, "+6");
    EXPECT_THAT(TakeBoxes(), ElementsAre(kNotThatManyBox));
    EXPECT_EQ(m_state.ReagentStock(1, 0), 5);
}

struct PlainRow {
    const char* text;
    int stored;
};

TEST_F(ReagentsTabTest, PlainEntries_SetTheOwnBagAndTheBoxKeepsThem) {
    OpenTab();
    for (const PlainRow& row : std::initializer_list<PlainRow>{{"42", 42},
                                                               {"", 0},
                                                               {"0", 0},
                                                               {"12345", 1234},
                                                               {"1234567890", 1234},
                                                               {"9999", 9999},
                                                               {"7+3", 7},
                                                               {"7-3", 7}}) {
        for (const BagSide side : {kLeft, kRight}) {
            SetCounts(10, 3);
            EnterAndLeave(side, row.text);
            ExpectCounts(side == kLeft ? row.stored : 10, side == kRight ? row.stored : 3,
                         row.text);
            EXPECT_EQ(Text(BoxName(side), 1), row.text);
            EXPECT_EQ(Text("LabelTotal", 1), std::to_string(row.stored + (side == kLeft ? 3 : 10)));
        }
    }
}

TEST_F(ReagentsTabTest, PastedEntries_AreTakenByTheirFirstFourCharacters) {
    OpenTab();
    const QString novel = QStringLiteral("12 angry men ").repeated(50000);
    const struct {
        QString text;
        int stored;
    } rows[] = {{"abc", 0}, {"2.5", 2}, {"3.5", 4}, {" -5", -5}, {novel, 12}};
    for (const auto& row : rows) {
        SetCounts(10, 3);
        Paste(Named<QLineEdit>("ReagentLeft", 1), row.text);
        Leave();
        ExpectCounts(row.stored, 3, row.text.left(20).toStdString());
    }
    SetCounts(10, 3);
    Paste(Named<QLineEdit>("ReagentRight", 1), QStringLiteral("+") + novel);
    Leave();
    EXPECT_THAT(TakeBoxes(), ElementsAre(kNotThatManyBox));
    ExpectCounts(10, 3, "a novel behind a sign");
}

TEST_F(ReagentsTabTest, Entry_BeyondACell_EndsTheProgramWithTheOldCount) {
    OpenTab();
    SetCounts(10, 3);
    Paste(Named<QLineEdit>("ReagentLeft", 1), QStringLiteral("9e9"));
    Leave();
    EXPECT_THAT(TakeFailures(), ElementsAre(UncaughtFailure{FailureKind::kOverflow,
                                                            "changing the count of a reagent"}));
    ExpectCounts(10, 3, "9e9");
}

// covers ODDITY(stock-total)
TEST_F(ReagentsTabTest, Total_Oddity_BeyondACell_EndsTheProgram) {
    OpenTab();
    m_state.ReagentStock(1, 5) = 32767;
    EnterAndLeave(kLeft, "1");
    EXPECT_THAT(TakeFailures(), ElementsAre(UncaughtFailure{FailureKind::kOverflow,
                                                            "changing the count of a reagent"}));
    EXPECT_EQ(m_state.ReagentStock(1, 0), 1);
    m_state.ReagentStock(1, 5) = 0;
}

// covers ODDITY(stock-total)
TEST_F(ReagentsTabTest, Total_Oddity_BeyondACell_EndsTheProgramWhenTheDialogOpens) {
    Load();
    m_state.ReagentStock(1, 5) = m_state.ReagentStock(1, 6) = 20000;
    Show();
    EXPECT_THAT(TakeFailures(),
                testing::Contains(UncaughtFailure{FailureKind::kOverflow, "showing the settings"}));
}

TEST_F(ReagentsTabTest, EveryBox_WritesItsReagentAndBag) {
    OpenTab();
    Pick(Bag(0), 2);
    Pick(Bag(1), 8);
    for (int reagent = 1; reagent <= 13; ++reagent) {
        if (reagent == 9) {
            Click("RegType", 1);
        }
        Enter("ReagentLeft", reagent, std::to_string(100 + reagent));
        Enter("ReagentRight", reagent, std::to_string(200 + reagent));
        Leave();
        EXPECT_EQ(m_state.ReagentStock(reagent, 2), 100 + reagent);
        EXPECT_EQ(m_state.ReagentStock(reagent, 8), 200 + reagent);
        EXPECT_EQ(Text("LabelTotal", reagent), std::to_string(300 + 2 * reagent));
    }
}

}  // namespace
}  // namespace spellwick
