// The frame of the settings dialog: its keys and lists, closing, and what the end saves.
#include <QAbstractItemView>
#include <QApplication>
#include <QScrollBar>
#include <QWheelEvent>
#include <set>

#include "tests/settings_dialog/form_settings_fixture.h"
#include "tests/support/window_in_front.h"

namespace spellwick {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

TEST_F(FormSettingsTest, Ok_CommitsTheEntrySavesAllAndHides) {
    Open();
    Enter("Reagent", 2, "5");
    Click("Command1");
    EXPECT_EQ(m_state.Spells(1).Reagents(1), 5);
    EXPECT_THAT(TakeLog(), ElementsAre("save all"));
    EXPECT_EQ(Saved("Settings", "SpellRegs 2").substr(0, 2), "50");
    EXPECT_FALSE(Form().isVisible());
}

TEST_F(FormSettingsTest, Ok_HasItsLetter) {
    Open();
    EXPECT_EQ(Text("Command1"), "&OK");
    EXPECT_EQ(Form().Command1->shortcut(), QKeySequence(QStringLiteral("Alt+O")));
}

TEST_F(FormSettingsTest, Enter_CommitsTheEntryAndStaysOpen) {
    Open();
    Enter("Reagent", 1, "4");
    EXPECT_EQ(m_state.Spells(0).Reagents(1), 0);
    Press(Qt::Key_Return);
    EXPECT_EQ(m_state.Spells(0).Reagents(1), 4);
    EXPECT_EQ(FocusName(), "CommandDummy");
    EXPECT_TRUE(Form().isVisible());
    EXPECT_THAT(TakeLog(), Each(Not(testing::HasSubstr("save"))));
}

TEST_F(FormSettingsTest, Enter_OnAButtonPressesThatButton) {
    Open();
    Named<QPushButton>("Command2").setFocus();
    Press(Qt::Key_Return);
    EXPECT_EQ(m_state.Spellbook(0), 0);
}

TEST_F(FormSettingsTest, CommandDummy_LiesBelowTheVisibleArea) {
    Open();
    EXPECT_TRUE(Form().CommandDummy->isDefault());
    EXPECT_TRUE(Form().CommandDummy->isVisible());
    EXPECT_GE(Form().CommandDummy->y(), Form().height());
}

TEST_F(FormSettingsTest, Escape_TakesTheEntryAndClosesAsTheCloseButtonDoes) {
    Open();
    Enter("Reagent", 1, "6");
    Form().move(40, 30);
    Press(Qt::Key_Escape);
    EXPECT_FALSE(Form().isVisible());
    EXPECT_EQ(m_state.Spells(0).Reagents(1), 6);
    EXPECT_THAT(TakeLog(), ElementsAre("save place and macros"));
    EXPECT_EQ(Saved("Settings", "SettingsTop"), "450");
}

TEST_F(FormSettingsTest, Escape_InAnOpenList_ClosesTheListAlone) {
    Open();
    auto& list = Named<QComboBox>("ComboSpellLevel");
    list.setFocus();
    list.showPopup();
    QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_Escape);
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
    EXPECT_TRUE(Form().isVisible());
}

TEST_F(FormSettingsTest, CloseButton_DialogNotActive_CommitsTheEntryFirst) {
    Open();
    Enter("Reagent", 1, "6");
    const WindowInFront other;
    Form().close();
    EXPECT_EQ(m_state.Spells(0).Reagents(1), 6);
    EXPECT_FALSE(Form().isVisible());
}

TEST_F(FormSettingsTest, TabsByKey_GoRoundBothWaysAndMoveTheFocus) {
    Open();
    const struct {
        Qt::Key next = Qt::Key_unknown;
        Qt::KeyboardModifiers nextWith;
        Qt::Key last = Qt::Key_unknown;
        Qt::KeyboardModifiers lastWith;
    } rows[] = {{Qt::Key_Tab, Qt::ControlModifier, Qt::Key_Backtab,
                 Qt::ControlModifier | Qt::ShiftModifier},
                {Qt::Key_PageDown, Qt::ControlModifier, Qt::Key_PageUp, Qt::ControlModifier}};
    for (const auto& row : rows) {
        for (int tab = 1; tab <= kTabCount; ++tab) {
            Press(row.next, row.nextWith);
            EXPECT_THAT(TickedTabs(), ElementsAre(tab % kTabCount));
            EXPECT_THAT(ShownPanels(), ElementsAre(tab % kTabCount + 1));
        }
        EXPECT_EQ(FocusName(), "ComboSpellLevel");
        Press(row.last, row.lastWith);
        EXPECT_THAT(TickedTabs(), ElementsAre(8));
        Press(row.last, row.lastWith);
        EXPECT_THAT(TickedTabs(), ElementsAre(7));
        EXPECT_EQ(FocusName(), "ComboUOwindow");
        Press(row.last, row.lastWith);
        EXPECT_EQ(FocusName(), "CheckTab(6)");
        ShowTab(0);
    }
}

TEST_F(FormSettingsTest, TabsByKey_TheEntryIsTakenFirst) {
    Open();
    Enter("Reagent", 1, "6");
    Press(Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_EQ(m_state.Spells(0).Reagents(1), 6);
    EXPECT_THAT(TickedTabs(), ElementsAre(1));
}

// In every list of the dialog: the wheel over a closed list would change data unseen.
TEST_F(FormSettingsTest, Wheel_OverAClosedList_ChangesNothing) {
    SetSaved("Settings", "CurrentPlayerName", kMira);
    SetSaved(kMira, "MR 0", "5");
    SetSaved("Other", "MR 0", "7");
    Open();
    std::set<std::string> turned;
    for (int tab = 0; tab < kTabCount; ++tab) {
        ShowTab(tab);
        for (QComboBox* list : Form().Tab(tab).findChildren<QComboBox*>()) {
            turned.insert(list->objectName().toStdString());
            const int before = list->currentIndex();
            list->setFocus();
            for (const int turn : {-120, 120}) {
                const QPointF place = list->rect().center();
                QWheelEvent wheel(place, list->mapToGlobal(place), {}, QPoint(0, turn),
                                  Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
                QApplication::sendEvent(list, &wheel);
                EXPECT_EQ(list->currentIndex(), before) << list->objectName().toStdString();
            }
        }
    }
    EXPECT_EQ(turned.size(), 23U);
    EXPECT_THAT(TakeLog(), Each(Not(testing::HasSubstr("load"))));
    EXPECT_EQ(m_state.CurrentPlayerName, kMira);
}

TEST_F(FormSettingsTest, Wheel_OverAnOpenList_Turns) {
    Open();
    ShowTab(1);
    auto& list = Named<QComboBox>("ComboUserSpell", 0);
    list.showPopup();
    QScrollBar& bar = *list.view()->verticalScrollBar();
    const int before = bar.value();
    ASSERT_GT(bar.maximum(), before);
    QWidget& seen = *list.view()->viewport();
    const QPointF place = seen.rect().center();
    QWheelEvent wheel(place, seen.mapToGlobal(place), {}, QPoint(0, -120), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&seen, &wheel);
    EXPECT_GT(bar.value(), before);
    list.hidePopup();
}

TEST_F(FormSettingsTest, CloseButton_SavesPlaceAndMacrosAndHides) {
    Open();
    m_state.MacroKey(5) = "Z";
    Form().move(40, 30);
    Form().close();
    EXPECT_FALSE(Form().isVisible());
    EXPECT_THAT(TakeLog(), ElementsAre("save place and macros"));
    EXPECT_EQ(Saved("Settings", "SettingsTop"), "450");
    EXPECT_EQ(Saved("Settings", "SettingsLeft"), "600");
    EXPECT_EQ(Saved("Settings", "Macro 5").substr(3), "Z");
    EXPECT_NE(Saved("Settings", "Macro-1"), "(none)");
    EXPECT_NE(Saved("Settings", "Macro 0"), "(none)");
    EXPECT_NE(Saved("Settings", "Macro 96"), "(none)");
}

TEST_F(FormSettingsTest, CloseButton_CommitsTheEntryFirst) {
    Open();
    Enter("Reagent", 1, "6");
    Form().close();
    EXPECT_EQ(m_state.Spells(0).Reagents(1), 6);
}

TEST_F(FormSettingsTest, CloseButton_TellsOfASaveThatFailed) {
    Open();
    m_store.FailWith("The disk is full.");
    Form().close();
    EXPECT_THAT(TakeLog(), ElementsAre("save place and macros", "report The disk is full."));
}

TEST_F(FormSettingsTest, Unload_Minimised_LeavesThePlaceButSavesTheMacros) {
    SetSaved("Settings", "SettingsTop", "1500");
    Open();
    Form().showMinimized();
    m_state.MacroKey(1) = "B";
    EXPECT_TRUE(Form().Form_Unload().ok);
    EXPECT_EQ(Saved("Settings", "SettingsTop"), "1500");
    EXPECT_EQ(Saved("Settings", "SettingsLeft"), "(none)");
    EXPECT_EQ(Saved("Settings", "Macro 1").substr(3), "B");
}

TEST_F(FormSettingsTest, Unload_AfterOk_SavesWhereTheDialogStood) {
    Open();
    Form().move(20, 10);
    Click("Command1");
    EXPECT_TRUE(Form().Form_Unload().ok);
    EXPECT_EQ(Saved("Settings", "SettingsTop"), "150");
    EXPECT_EQ(Saved("Settings", "SettingsLeft"), "300");
}

TEST_F(FormSettingsTest, Place_NeverMoved_OpensClearOfTheMainWindowAndStaysUnsaved) {
    QWidget main;
    main.setGeometry(0, 0, 200, 150);
    main.show();
    Load();
    Form().setParent(&main, Form().windowFlags());
    Show();
    EXPECT_FALSE(Form().frameGeometry().intersects(main.frameGeometry()));
    const QPoint aside = Form().pos();
    Form().close();
    EXPECT_EQ(Saved("Settings", "SettingsTop"), "0");
    EXPECT_EQ(Saved("Settings", "SettingsLeft"), "0");
    Reopen();
    Form().move(aside + QPoint(20, 10));
    Form().close();
    EXPECT_EQ(Saved("Settings", "SettingsTop"), std::to_string((aside.y() + 10) * 15));
    Reopen();
    EXPECT_EQ(Form().pos(), aside + QPoint(20, 10));
    Form().setParent(nullptr, Form().windowFlags());
}

TEST_F(FormSettingsTest, Place_NeverMoved_OpensClearOfTheGameWhereThereIsRoom) {
    QWidget main;
    main.setGeometry(0, 0, 20, 15);
    main.show();
    for (const int height : {60, 5000}) {
        SettingsServices services = Services();
        const QRect game(0, 20, 780, height);
        services.gameArea = [game] { return game; };
        m_form = std::make_unique<FormSettings>(services, &main);
        Form().Form_Load();
        EXPECT_FALSE(Form().frameGeometry().intersects(main.frameGeometry()));
        EXPECT_EQ(Form().frameGeometry().intersects(game), height > 1000);
        m_form.reset();
    }
}

TEST_F(FormSettingsTest, Unload_NeverShown_KeepsTheSavedPlaceToTheFraction) {
    SetSaved("Settings", "SettingsTop", "1500.5");
    SetSaved("Settings", "SettingsLeft", "7.25");
    Load();
    EXPECT_TRUE(Form().Form_Unload().ok);
    EXPECT_EQ(Saved("Settings", "SettingsTop"), "1500.5");
    EXPECT_EQ(Saved("Settings", "SettingsLeft"), "7.25");
}

TEST_F(FormSettingsTest, Unload_WritesAll98MacrosInOneTransaction) {
    Open();
    EXPECT_TRUE(Form().Form_Unload().ok);
    ASSERT_EQ(m_store.Batches().size(), 1U);
    int macros = 0;
    for (const SettingChange& change : m_store.Batches()[0]) {
        macros += change.key.starts_with("Macro") ? 1 : 0;
    }
    EXPECT_EQ(macros, 98);
}

TEST_F(FormSettingsTest, EndOfProgram_TakesTheEntryAndDropsARefusedKey) {
    SetSaved("Settings", "CurrentPlayerName", kMira);
    SetSaved(kMira, "MR 0", "5");
    SetSaved(kMira, "MR 1", "20");
    Open();
    ShowTab(4);
    Enter("ReagentLeft", 1, "+10");
    Form().TakeEntryAtEnd();
    EXPECT_EQ(m_state.ReagentStock(1, 0), 15);
    EXPECT_EQ(m_state.ReagentStock(1, 1), 10);
    ShowTab(2);
    Enter("TextMacro", 0, "f7");
    Form().TakeEntryAtEnd();
    EXPECT_EQ(m_state.MacroKey(1), "{F7}");
    Enter("TextMacro", 0, "no");
    Form().TakeEntryAtEnd();
    EXPECT_EQ(m_state.MacroKey(1), "{F7}");
    Click("Command1");
    TakeLog();
    Form().TakeEntryAtEnd();
    EXPECT_THAT(TakeLog(), IsEmpty()) << "while it is hidden there is none";
}

TEST_F(FormSettingsTest, TabKey_GoesThroughTheStripThePanelAndOk) {
    Open();
    ShowTab(7);
    Form().CheckTab[0]->setFocus();
    std::vector<std::string> order;
    for (int step = 0; step < 18; ++step) {
        order.push_back(FocusName());
        Press(Qt::Key_Tab);
    }
    EXPECT_THAT(order, ElementsAre("CheckTab(0)", "CheckTab(1)", "CheckTab(2)", "CheckTab(3)",
                                   "CheckTab(4)", "CheckTab(5)", "CheckTab(6)", "CheckTab(7)",
                                   "CheckTab(8)", "ComboUOwindow", "CheckAlwaysOnTop",
                                   "CheckDisplayVertical", "CheckShowNecroRegs", "CheckCasting",
                                   "CheckMeditation", "TextMana", "TextYellow", "LabelColor"));
    EXPECT_EQ(FocusName(), "Command1");
    Press(Qt::Key_Tab);
    EXPECT_EQ(FocusName(), "CheckTab(0)");
}

TEST_F(FormSettingsTest, EveryControlHasANameAndWordsToReadOut) {
    Open();
    for (const QWidget* control : Form().findChildren<QWidget*>()) {
        const bool isPartOfAList =
            control->window() != &Form() || control->parentWidget()->inherits("QComboBox");
        if (control->focusPolicy() == Qt::NoFocus || isPartOfAList) {
            continue;
        }
        EXPECT_FALSE(control->objectName().isEmpty()) << control->metaObject()->className();
        const bool reads =
            !control->accessibleName().isEmpty() || !control->property("text").toString().isEmpty();
        EXPECT_TRUE(reads) << control->objectName().toStdString();
    }
}

}  // namespace
}  // namespace spellwick
