// The User Spells tab.
#include <QAbstractItemView>
#include <QApplication>
#include <QScreen>
#include <QWheelEvent>

#include "tests/support/settings_fixture.h"

namespace spellwick {
namespace {

class UserSpellsTabTest : public SettingsFixture {
  protected:
    FormSettings& OpenTab() { return OpenAt(1); }
    QComboBox& List(int list) { return Named<QComboBox>("ComboUserSpell", list); }
};

TEST_F(UserSpellsTabTest, Frames_HoldEightListsEach) {
    OpenTab();
    EXPECT_EQ(Named<QGroupBox>("Frame1", 0).title(), QStringLiteral("User Spells - Tab 1"));
    EXPECT_EQ(Named<QGroupBox>("Frame1", 1).title(), QStringLiteral("User Spells - Tab 2"));
    for (int list = 0; list < 16; ++list) {
        EXPECT_EQ(List(list).parentWidget(), &Named("Frame1", list / 8));
    }
}

TEST_F(UserSpellsTabTest, Lists_HoldOneEntryForEachRow) {
    OpenTab();
    for (int list = 0; list < 16; ++list) {
        ASSERT_EQ(List(list).count(), 97);
    }
    for (int row = 0; row < 97; ++row) {
        std::string prefix = " " + std::to_string(row / 8 + 1);
        if (row >= 64) {
            prefix = row >= 80 ? "P" : "N";
        }
        EXPECT_EQ(List(15).itemText(row).toStdString(), prefix + " - " + m_state.Spells(row).Name);
    }
}

TEST_F(UserSpellsTabTest, Entries_AreWrittenOut) {
    EXPECT_EQ(UserSpellEntry(0, "Clumsy"), " 1 - Clumsy");
    EXPECT_EQ(UserSpellEntry(7, "x"), " 1 - x");
    EXPECT_EQ(UserSpellEntry(8, "x"), " 2 - x");
    EXPECT_EQ(UserSpellEntry(63, "x"), " 8 - x");
    EXPECT_EQ(UserSpellEntry(64, "x"), "N - x");
    EXPECT_EQ(UserSpellEntry(79, "x"), "N - x");
    EXPECT_EQ(UserSpellEntry(80, "x"), "P - x");
    EXPECT_EQ(UserSpellEntry(96, ""), "P - ");
}

TEST_F(UserSpellsTabTest, Click_StoresTheRowInTheListsOwnCellAndNothingElse) {
    OpenTab();
    for (int list = 0; list < 16; ++list) {
        Pick(List(list), 20 + list);
        EXPECT_EQ(m_state.UserSpells(list), 20 + list);
    }
    EXPECT_EQ(m_state.UserSpells(16), 0);
    EXPECT_THAT(TakeLog(), testing::IsEmpty());
}

TEST_F(UserSpellsTabTest, SameSpellInTwoLists_IsAllowed) {
    OpenTab();
    Pick(List(0), 42);
    Pick(List(9), 42);
    EXPECT_EQ(m_state.UserSpells(0), 42);
    EXPECT_EQ(m_state.UserSpells(9), 42);
}

TEST_F(UserSpellsTabTest, RowWithoutASpell_ShowsAnEntryWithoutAName) {
    OpenTab();
    ASSERT_EQ(m_state.Spells(91).Name, "");
    m_state.UserSpells(4) = 91;
    Form().RefreshDialog();
    EXPECT_EQ(List(4).currentText(), QStringLiteral("P - "));
}

TEST_F(UserSpellsTabTest, Row96_CanBeChosen) {
    OpenTab();
    Pick(List(3), 96);
    EXPECT_EQ(m_state.UserSpells(3), 96);
}

TEST_F(UserSpellsTabTest, CellOutsideTheTable_SelectsNoneAndIsKept) {
    OpenTab();
    m_state.UserSpells(2) = 200;
    m_state.UserSpells(5) = -7;
    Form().RefreshDialog();
    EXPECT_EQ(List(2).currentIndex(), -1);
    EXPECT_EQ(List(5).currentIndex(), -1);
    EXPECT_EQ(m_state.UserSpells(2), 200);
    EXPECT_EQ(m_state.UserSpells(5), -7);
}

TEST_F(UserSpellsTabTest, Wheel_PassingByChangesNothing) {
    OpenTab();
    m_state.UserSpells(6) = 10;
    Form().RefreshDialog();
    QComboBox& list = List(6);
    QWheelEvent wheel(QPointF(5, 5), list.mapToGlobal(QPointF(5, 5)), QPoint(), QPoint(0, -120),
                      Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&list, &wheel);
    EXPECT_EQ(m_state.UserSpells(6), 10);
    EXPECT_EQ(list.currentIndex(), 10);
}

TEST_F(UserSpellsTabTest, Keys_ChooseInTheListThatHasTheFocus) {
    OpenTab();
    List(0).setFocus();
    Press(Qt::Key_Down);
    EXPECT_EQ(m_state.UserSpells(0), 1);
}

TEST_F(UserSpellsTabTest, LongList_OpensAtMostTwentyRowsHigh) {
    Open();
    ShowTab(1);
    auto& list = Named<QComboBox>("ComboUserSpell", 15);
    ASSERT_GT(list.count(), 90);
    list.setCurrentIndex(90);
    list.showPopup();
    QWidget& popup = *list.view()->window();
    EXPECT_LE(popup.height(), 21 * list.view()->sizeHintForRow(0));
    EXPECT_GE(popup.height(), 15 * list.view()->sizeHintForRow(0));
    EXPECT_TRUE(list.screen()->availableGeometry().contains(popup.geometry()));
    const QRect chosen = list.view()->visualRect(list.view()->currentIndex());
    EXPECT_TRUE(list.view()->viewport()->rect().intersects(chosen)) << "the choice is in sight";
    list.hidePopup();
}

}  // namespace
}  // namespace spellwick
