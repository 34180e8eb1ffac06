// The Reagent Management tab: what it shows, its edits and arrows, and where changes go.
#include <QToolButton>

#include "tests/settings_dialog/reagents_tab_fixture.h"
#include "tests/support/failures.h"

namespace spellwick {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

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
    EXPECT_EQ(Tab().ReagentTotal(3), 41);
    EXPECT_EQ(Text("LabelTotal", 3), "41");
}

TEST_F(ReagentsTabTest, ReagentTotal_HasTheThirteenReagents) {
    OpenTab();
    const auto readTotal = [&](i32 reagent) { static_cast<void>(Tab().ReagentTotal(reagent)); };
    EXPECT_EQ(FailureOf([&] { readTotal(1); }), std::nullopt);
    EXPECT_EQ(FailureOf([&] { readTotal(13); }), std::nullopt);
    EXPECT_EQ(FailureOf([&] { readTotal(0); }), FailureKind::kSubscript);
    EXPECT_EQ(FailureOf([&] { readTotal(14); }), FailureKind::kSubscript);
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
        EXPECT_EQ(Tab().ReagentTotal(reagent), reagent * 100 + 45);
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

TEST_F(ReagentsTabTest, SavedNumberThatIsNoBag_ListAndCountsShowNothing) {
    for (const char* none : {"-1", "12", "10", "32767"}) {
        for (const int list : {0, 1}) {
            SCOPED_TRACE(std::string(none) + (list == 0 ? " left" : " right"));
            m_form.reset();
            m_state = SharedState{};
            m_store = MemorySettingsStore();
            SetSaved(kMira, "MR 0", "7");
            SetSaved(kMira, list == 0 ? "LeftReagentBag" : "RightReagentBag", none);
            SetSaved(kMira, list == 0 ? "RightReagentBag" : "LeftReagentBag", "0");
            OpenTab();
            const BagSide side = list == 0 ? kLeft : kRight;
            EXPECT_EQ(Bag(list).currentIndex(), -1);
            EXPECT_EQ(Bag(1 - list).currentIndex(), 0);
            EXPECT_EQ(Text(BoxName(side), 1), "");
            EXPECT_EQ(Text(BoxName(side == kLeft ? kRight : kLeft), 1), "7");
            EXPECT_EQ(Text("LabelTotal", 1), "7");
            for (const char* typed : {"", "9", "+3"}) {
                EnterAndLeave(side, typed);
                EXPECT_EQ(Text(BoxName(side), 1), "");
            }
            Click(BoxName(side), 1);
            Press(Qt::Key_Up);
            EXPECT_EQ(Text(BoxName(side), 1), "");
            EXPECT_EQ(m_state.ReagentStock(1, 0), 7);
            EnterAndLeave(side == kLeft ? kRight : kLeft, "8");
            EXPECT_EQ(m_state.ReagentStock(1, 0), 8);
            Bag(list).showPopup();
            Bag(list).hidePopup();
            Pick(Bag(list), 3);
            EXPECT_EQ(Text(BoxName(side), 1), "0");
            Click("Command1");
        }
    }
}

TEST_F(ReagentsTabTest, SignFormWithoutTheOtherBag_MovesNothing) {
    SetSaved(kMira, "MR 0", "7");
    SetSaved(kMira, "RightReagentBag", "12");
    OpenTab();
    for (const char* typed : {"+3", "-3"}) {
        EnterAndLeave(kLeft, typed);
        EXPECT_EQ(Text("ReagentLeft", 1), "7");
        EXPECT_EQ(m_state.ReagentStock(1, 0), 7);
    }
}

TEST_F(ReagentsTabTest, Spins_StoreTheWholeBoxAndAddTheTotalsUp) {
    OpenTab();
    SetCounts(10, 3);
    const auto step = [this](const char* name, bool up) {
        QWidget& spin = Named(name, 1);
        ClickSpot(spin, {spin.width() / 2, up ? 2 : spin.height() - 2});
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
        ClickSpot(arrows, {arrows.width() / 2, 2});
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
    m_companion.SavePlayer();
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
