// The tab of the stock of ten bags.
#include <QLabel>
#include <QTimer>
#include <QToolButton>

#include "tests/support/settings_fixture.h"

namespace spellwick {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const Box kTwoBagsBox{.text = "Please select two different containers before transferring reagents",
                      .icon = BoxIcon::kExclamation};
const Box kNotThatManyBox{.text = "You do not have that amount of reagents to move"};
constexpr BagSide kLeft = BagSide::kLeft;
constexpr BagSide kRight = BagSide::kRight;

class ReagentsTabTest : public SettingsFixture {
  protected:
    FormSettings& OpenTab() {
        SetSaved("Settings", "CurrentPlayerName", kMira);
        Open();
        ShowTab(4);
        TakeLog();
        return Form();
    }
    ReagentsTab& Tab() { return Form().Reagents(); }
    QComboBox& Bag(int list) { return Named<QComboBox>("ComboTransfer", list); }
    static const char* BoxName(BagSide side) {
        return side == kLeft ? "ReagentLeft" : "ReagentRight";
    }
    // Sets the counts of the first reagent in the two bags and shows them.
    void SetCounts(i16 left, i16 right) {
        m_state.ReagentStock(1, 0) = left;
        m_state.ReagentStock(1, 1) = right;
        Form().RefreshDialog();
    }
    void ExpectCounts(int left, int right, const std::string& of) {
        EXPECT_EQ(m_state.ReagentStock(1, 0), left) << of;
        EXPECT_EQ(m_state.ReagentStock(1, 1), right) << of;
    }
    void ExpectShown(const std::string& left, const std::string& right, const std::string& of) {
        EXPECT_EQ(Text("ReagentLeft", 1), left) << of;
        EXPECT_EQ(Text("ReagentRight", 1), right) << of;
    }
    void EnterAndLeave(BagSide side, const std::string& text) {
        Enter(BoxName(side), 1, text);
        Leave();
    }
    void ClickArrow(int reagent, BagSide to) {
        QWidget& arrows = Named("UpDown1", reagent);
        QTest::mouseClick(&arrows, Qt::LeftButton, Qt::NoModifier,
                          QPoint(to == kLeft ? 4 : arrows.width() - 4, arrows.height() / 2));
    }
    // A different count in every cell.
    void FillStock() {
        for (i32 reagent = 1; reagent <= 13; ++reagent) {
            for (i32 bag = 0; bag < 10; ++bag) {
                m_state.ReagentStock(reagent, bag) = static_cast<i16>(reagent * 10 + bag);
            }
        }
    }
};

TEST_F(ReagentsTabTest, Captions_AreAsTold) {
    OpenTab();
    EXPECT_EQ(Text("LabelTotal", 0), "Total");
    EXPECT_EQ(Text("RegType", 0), "Magery Reagents");
    EXPECT_EQ(Text("RegType", 1), "Necromancy Reagents");
    EXPECT_EQ(Text("Label1", 1),
              "Click the arrows in the middle to transfer reagents between containers ");
    EXPECT_TRUE(Named<QToolButton>("RegType", 0).isChecked());
}

TEST_F(ReagentsTabTest, Types_ShowTheirRowsAlone) {
    OpenTab();
    for (const int type : {0, 1, 0}) {
        Click("RegType", type);
        for (int reagent = 1; reagent <= 13; ++reagent) {
            const bool shown = (reagent <= 8) == (type == 0);
            for (const char* name : {"lblRegMan1", "UpDownLeft", "ReagentLeft", "UpDown1",
                                     "ReagentRight", "UpDownRight", "lblRegMan2", "LabelTotal"}) {
                EXPECT_EQ(Named(name, reagent).isVisible(), shown) << name << reagent;
            }
            EXPECT_EQ(Text("lblRegMan1", reagent), m_state.ReagentName(reagent));
            EXPECT_EQ(Text("lblRegMan2", reagent), m_state.ReagentName(reagent));
        }
    }
}

TEST_F(ReagentsTabTest, Types_ClickAddsTheTotalsUp) {
    OpenTab();
    m_state.ReagentStock(3, 7) = 41;
    EXPECT_EQ(Text("LabelTotal", 3), "0");
    Click("RegType", 1);
    EXPECT_EQ(m_state.ReagentTotal(3), 41);
    EXPECT_EQ(Text("LabelTotal", 3), "41");
}

TEST_F(ReagentsTabTest, Pictures_StandBesideTheRows) {
    OpenTab();
    const auto pictureRow = [&](const char* column, int line) {
        const int pitch = Named("ReagentLeft", 2).y() - Named("ReagentLeft", 1).y();
        QWidget& pictures = Named(QLatin1String(column));
        const QImage drawn = pictures.grab().toImage();
        const double ratio = drawn.devicePixelRatio();
        return drawn.copy(QRect(QPoint(0, qRound((pitch * line + 2) * ratio)),
                                QSize(drawn.width(), qRound(20 * ratio))));
    };
    const QImage empty = [&] {
        QImage ground = pictureRow("PicRegsL", 0);
        ground.fill(Named("PicRegsL").grab().toImage().pixel(0, 0));
        return ground;
    }();
    for (const char* column : {"PicRegsL", "PicRegsR"}) {
        Click("RegType", 0);
        const QImage first = pictureRow(column, 0);
        for (int line = 0; line < 8; ++line) {
            EXPECT_NE(pictureRow(column, line), empty) << line;
        }
        Click("RegType", 1);
        EXPECT_NE(pictureRow(column, 0), first);
        EXPECT_NE(pictureRow(column, 4), empty);
        EXPECT_EQ(pictureRow(column, 5), empty);
    }
}

TEST_F(ReagentsTabTest, Refresh_FillsListsCountsAndTotals) {
    OpenTab();
    FillStock();
    for (i32 bag = 0; bag < 10; ++bag) {
        m_state.BagName(bag) = "Bag " + std::to_string(bag);
    }
    m_state.LeftReagentBag = 4;
    m_state.RightReagentBag = 9;
    Form().RefreshDialog();
    for (const int list : {0, 1}) {
        ASSERT_EQ(Bag(list).count(), 10);
        for (int bag = 0; bag < 10; ++bag) {
            EXPECT_EQ(Bag(list).itemText(bag).toStdString(), "Bag " + std::to_string(bag));
        }
    }
    EXPECT_EQ(Bag(0).currentIndex(), 4);
    EXPECT_EQ(Bag(1).currentIndex(), 9);
    for (int reagent = 1; reagent <= 13; ++reagent) {
        EXPECT_EQ(Text("ReagentLeft", reagent), std::to_string(reagent * 10 + 4));
        EXPECT_EQ(Text("ReagentRight", reagent), std::to_string(reagent * 10 + 9));
        EXPECT_EQ(m_state.ReagentTotal(reagent), reagent * 100 + 45);
        EXPECT_EQ(Text("LabelTotal", reagent), std::to_string(reagent * 100 + 45));
    }
}

TEST_F(ReagentsTabTest, Start_TheFirstTwoBags) {
    OpenTab();
    EXPECT_EQ(Bag(0).currentIndex(), 0);
    EXPECT_EQ(Bag(1).currentIndex(), 1);
}

TEST_F(ReagentsTabTest, Bags_ClickStoresTheChoiceAndShowsItsSideAlone) {
    OpenTab();
    FillStock();
    Pick(Bag(0), 7);
    EXPECT_EQ(m_state.LeftReagentBag, 7);
    EXPECT_EQ(m_state.RightReagentBag, 1);
    for (int reagent = 1; reagent <= 13; ++reagent) {
        EXPECT_EQ(Text("ReagentLeft", reagent), std::to_string(reagent * 10 + 7));
        EXPECT_EQ(Text("ReagentRight", reagent), "0");
    }
    Pick(Bag(1), 3);
    EXPECT_EQ(m_state.LeftReagentBag, 7);
    EXPECT_EQ(m_state.RightReagentBag, 3);
    for (int reagent = 1; reagent <= 13; ++reagent) {
        EXPECT_EQ(Text("ReagentRight", reagent), std::to_string(reagent * 10 + 3));
    }
    EXPECT_THAT(TakeLog(), IsEmpty());
}

TEST_F(ReagentsTabTest, Bags_NoneChosen_DoesNothing) {
    OpenTab();
    for (const int list : {0, 1}) {
        Bag(list).setCurrentIndex(-1);
        Tab().ClickTransfer(list);
    }
    EXPECT_EQ(m_state.LeftReagentBag, 0);
    EXPECT_EQ(m_state.RightReagentBag, 1);
}

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
    const QTimer& repeat = *arrows.findChild<QTimer*>();
    const QPoint left = arrows.mapTo(&Form(), QPoint(4, 4));
    QTest::mousePress(Form().windowHandle(), Qt::LeftButton, Qt::NoModifier, left);
    EXPECT_TRUE(repeat.isActive());
    QTest::mouseRelease(Form().windowHandle(), Qt::LeftButton, Qt::NoModifier, left);
    EXPECT_FALSE(repeat.isActive());
    ExpectCounts(6, 4, "one step");

    Pick(Bag(1), 0);
    bool repeatsBehindTheBox = true;
    m_boxes.whileStanding = [&] { repeatsBehindTheBox = repeat.isActive(); };
    QTest::mousePress(Form().windowHandle(), Qt::LeftButton, Qt::NoModifier, left);
    EXPECT_THAT(TakeBoxes(), ElementsAre(kTwoBagsBox));
    EXPECT_FALSE(repeatsBehindTheBox);
    QTest::mouseRelease(Form().windowHandle(), Qt::LeftButton, Qt::NoModifier, left);
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
    EXPECT_EQ(m_state.ReagentTotal(1), 121);
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

TEST_F(ReagentsTabTest, Spins_StoreTheWholeBoxAndAddTheTotalsUp) {
    OpenTab();
    SetCounts(10, 3);
    const auto step = [this](const char* name, bool up) {
        QWidget& spin = Named(name, 1);
        QTest::mouseClick(&spin, Qt::LeftButton, Qt::NoModifier,
                          QPoint(spin.width() / 2, up ? 2 : spin.height() - 2));
    };
    step("UpDownLeft", true);
    ExpectCounts(11, 3, "left up");
    EXPECT_EQ(Text("LabelTotal", 1), "14");
    step("UpDownRight", false);
    ExpectCounts(11, 2, "right down");
    EXPECT_EQ(Text("LabelTotal", 1), "13");
    SetCounts(999, 0);
    step("UpDownLeft", true);
    step("UpDownRight", false);
    ExpectCounts(999, 0, "ends of the range");
    EXPECT_EQ(Text("LabelTotal", 1), "999");
}

TEST_F(ReagentsTabTest, ArrowKeys_StepTheBox) {
    OpenTab();
    SetCounts(10, 3);
    Click("ReagentRight", 1);
    Press(Qt::Key_Up);
    ExpectCounts(10, 4, "up");
    Press(Qt::Key_Down);
    ExpectCounts(10, 3, "down");
}

TEST_F(ReagentsTabTest, KeyFilter_DropsAllButDigitsAndSignsWithABeep) {
    OpenTab();
    for (const char* name : {"ReagentLeft", "ReagentRight"}) {
        m_desktop.beeps = 0;
        Enter(name, 2, "1a.b-+ 3");
        EXPECT_EQ(Text(name, 2), "1-+3");
        EXPECT_EQ(m_desktop.beeps, 4);
        Press(Qt::Key_Backspace);
        EXPECT_EQ(Text(name, 2), "1-+");
        EXPECT_EQ(m_desktop.beeps, 4);
        Leave();
    }
}

TEST_F(ReagentsTabTest, Boxes_GotFocus_SelectTheWholeText) {
    OpenTab();
    SetCounts(123, 456);
    Click("ReagentLeft", 1);
    EXPECT_EQ(Named<QLineEdit>("ReagentLeft", 1).selectedText(), QStringLiteral("123"));
    Click("ReagentRight", 1);
    EXPECT_EQ(Named<QLineEdit>("ReagentRight", 1).selectedText(), QStringLiteral("456"));
}

TEST_F(ReagentsTabTest, BagChange_AnUnfinishedEntryGoesToTheOldBag) {
    OpenTab();
    Enter("ReagentLeft", 1, "77");
    Pick(Bag(0), 5);
    EXPECT_EQ(m_state.ReagentStock(1, 0), 77);
    EXPECT_EQ(m_state.ReagentStock(1, 5), 0);
    EXPECT_EQ(Text("ReagentLeft", 1), "0");
}

TEST_F(ReagentsTabTest, Edits_OfTheBagInUse_ShowInTheMainWindowAtOnce) {
    OpenTab();
    SetCounts(10, 3);
    const auto spin = [this] {
        QWidget& arrows = Named("UpDownRight", 1);
        QTest::mouseClick(&arrows, Qt::LeftButton, Qt::NoModifier, QPoint(arrows.width() / 2, 2));
    };
    for (const i16 bag : {i16{0}, i16{1}}) {
        m_state.CurrentReagentBag = bag;
        EnterAndLeave(kLeft, "12");
        EXPECT_THAT(TakeLog(), ElementsAre("counter 1")) << "number";
        EnterAndLeave(kRight, "+2");
        EXPECT_THAT(TakeLog(), ElementsAre("counter 1")) << "move";
        ClickArrow(1, kLeft);
        EXPECT_THAT(TakeLog(), ElementsAre("counter 1")) << "arrow";
        spin();
        EXPECT_THAT(TakeLog(), ElementsAre("counter 1")) << "spin";
    }
    for (const i16 bag : {i16{2}, i16{-1}}) {
        m_state.CurrentReagentBag = bag;
        EnterAndLeave(kLeft, "12");
        ClickArrow(1, kLeft);
        spin();
        EXPECT_THAT(TakeLog(), IsEmpty()) << "another bag";
    }
}

TEST_F(ReagentsTabTest, Edits_ReachTheStoreAsThePlayersData) {
    OpenTab();
    Pick(Bag(0), 6);
    Enter("ReagentLeft", 1, "77");
    Leave();
    m_mainWindow.SavePlayer();
    EXPECT_EQ(Saved(kMira, "LeftReagentBag"), "6");
    m_form.reset();
    m_state = SharedState{};
    TakeLog();
    OpenTab();
    EXPECT_EQ(Bag(0).currentIndex(), 6);
    EXPECT_EQ(Text("ReagentLeft", 1), "77");
}

}  // namespace
}  // namespace spellwick
