// The tab of the macro keys.
#include <QLabel>

#include "tests/settings_dialog/macros_tab_fixture.h"

namespace spellwick {
namespace {

using testing::IsEmpty;

class MacrosTabTest : public MacrosTabFixture {};

TEST_F(MacrosTabTest, Captions_AreAsTold) {
    OpenTab();
    EXPECT_EQ(Text("Label1", 9), "Enter letters, numbers, Fn/Fnn for function keys.");
    EXPECT_EQ(Text("Label1", 11),
              "Do not use only Shift with a letter or number as this will fire the macro when "
              "typing normal text.");
    EXPECT_EQ(Text("Label1", 10), "Macro key for Meditation skill");
    EXPECT_EQ(Text("CommandMacroWrite"), "Save Spell Macros to File");
    EXPECT_EQ(Text("CommandMacroRead"), "Load Spell Macros from File");
    for (const int row : kMacroRows) {
        EXPECT_EQ(Text("CheckAlt", row), "Alt");
        EXPECT_EQ(Text("CheckCtrl", row), "Ctrl");
        EXPECT_EQ(Text("CheckShift", row), "Shift");
    }
    EXPECT_EQ(Form().findChild<QWidget*>(QStringLiteral("TextMacro(8)")), nullptr);
}

TEST_F(MacrosTabTest, Pages_AreTheTwelve) {
    OpenTab();
    QStringList pages;
    for (int page = 0; page < Page().count(); ++page) {
        pages << Page().itemText(page);
    }
    EXPECT_EQ(pages,
              (QStringList{"Level 1 spells", "Level 2 spells", "Level 3 spells", "Level 4 spells",
                           "Level 5 spells", "Level 6 spells", "Level 7 spells", "Level 8 spells",
                           "Necromancer L1 spells", "Necromancer L2 spells", "Paladin L1 spells",
                           "Paladin L2 spells"}));
    EXPECT_EQ(Page().currentIndex(), 0);
}

TEST_F(MacrosTabTest, EveryPage_WithoutSavedMacros_ShowsTheDefaults) {
    const struct {
        const char* flags;
        const char* keys;
    } pages[] = {{"A--", "12345678"}, {"-C-", "12345678"}, {"AC-", "12345678"}, {"A-S", "12345678"},
                 {"-CS", "12345678"}, {"ACS", "12345678"}, {"ACS", "QWERTYUI"}, {"ACS", "ASDFGHJK"},
                 {"ACS", "ZXCVBNM,"}, {"AC-", "QWERTYUI"}, {"AC-", "ASDFGHJK"}};
    OpenTab();
    int page = 0;
    for (const auto& expected : pages) {
        Pick(Page(), page);
        for (int row = 0; row < 8; ++row) {
            EXPECT_EQ(Line(row), std::string(expected.flags) + expected.keys[row])
                << page << " " << row;
            EXPECT_EQ(Form().Macros().Image[static_cast<std::size_t>(row)]->Row(), page * 8 + row);
        }
        EXPECT_EQ(Line(9), "--- ");
        ++page;
    }
    Pick(Page(), 11);
    EXPECT_EQ(Line(0), "AC-L");
    EXPECT_EQ(Line(1), "AC-;");
    for (int row = 2; row < 8; ++row) {
        EXPECT_EQ(Line(row), "---AA") << row;
    }
}

TEST_F(MacrosTabTest, Load_ReadsTheSavedMacrosAgain_NotThatOfMeditation) {
    SetSaved("Settings", "Macro 1", "AC-{F9}");
    SetSaved("Settings", "Macro 2", "--");
    SetSaved("Settings", "Macro 3", "---AA");
    SetSaved("Settings", "Macro 4", "--Sxyz");
    SetSaved("Settings", "Macro 96", "A--u");
    SetSaved("Settings", "Macro-1", "-C-m");
    SetSaved("Settings", "Macro 0", "ACSz");
    OpenTab();
    EXPECT_EQ(Line(0), "AC-{F9}");
    EXPECT_EQ(Line(1), "--- ");
    EXPECT_EQ(Line(2), "A--3");
    EXPECT_EQ(Line(3), "--Sxyz");
    EXPECT_EQ(Line(9), "-C-m");
    EXPECT_EQ(m_state.MacroKey(0), "");
    Pick(Page(), 11);
    EXPECT_EQ(Line(7), "A--u");
}

TEST_F(MacrosTabTest, Page_ShowsEveryElementAndMeditationEachTime) {
    OpenTab();
    for (i32 number = -1; number <= 96; ++number) {
        m_state.MacroKey(number) = "k" + std::to_string(number);
        SetMark(number, number % 2 == 0 ? "%" : "", number % 3 == 0 ? "^" : "",
                number % 5 == 0 ? "+" : "");
    }
    for (int page = 0; page < 12; ++page) {
        m_state.MacroKey(-1) = "m" + std::to_string(page);
        Pick(Page(), page);
        for (int row = 0; row < 8; ++row) {
            const i32 number = page * 8 + row + 1;
            EXPECT_EQ(Key(row).text().toStdString(), "k" + std::to_string(number));
            EXPECT_EQ(IsTicked("CheckAlt", row), number % 2 == 0) << number;
            EXPECT_EQ(IsTicked("CheckCtrl", row), number % 3 == 0) << number;
            EXPECT_EQ(IsTicked("CheckShift", row), number % 5 == 0) << number;
        }
        EXPECT_EQ(Line(9), "---m" + std::to_string(page));
    }
    EXPECT_EQ(m_state.MacroKey(50), "k50");
    EXPECT_EQ(m_state.MacroKey(0), "k0");
}

TEST_F(MacrosTabTest, Marks_OnlyTheirOwnSignTicks) {
    OpenTab();
    SetMark(1, "^", "+", "%");
    SetMark(2, "1", "1", "1");
    Form().Macros().RefreshMacroPage();
    EXPECT_EQ(Line(0), "---1");
    EXPECT_EQ(Line(1), "---2");
}

TEST_F(MacrosTabTest, Marks_ClickStoresAtOnceInTheElementOfTheLine) {
    OpenTab();
    for (const int page : {0, 11}) {
        Pick(Page(), page);
        for (const int row : kMacroRows) {
            const i32 number = row == 9 ? -1 : page * 8 + row + 1;
            SetMark(number, "", "", "");
            Form().Macros().RefreshMacroPage();
            Click("CheckAlt", row);
            EXPECT_EQ(m_state.MacroAlt(number), "%") << number;
            Click("CheckCtrl", row);
            EXPECT_EQ(m_state.MacroCtrl(number), "^") << number;
            Click("CheckShift", row);
            EXPECT_EQ(m_state.MacroShift(number), "+") << number;
            Click("CheckCtrl", row);
            EXPECT_EQ(m_state.MacroCtrl(number), "") << number;
            Click("CheckAlt", row);
            EXPECT_EQ(m_state.MacroAlt(number), "") << number;
            EXPECT_EQ(m_state.MacroShift(number), "+") << number;
            Click("CheckShift", row);
            EXPECT_EQ(m_state.MacroShift(number), "") << number;
        }
    }
    EXPECT_THAT(TakeLog(), IsEmpty());
}

TEST_F(MacrosTabTest, PageChange_TheEntryGoesToThePageOnWhichItWasTyped) {
    OpenTab();
    Enter(Key(0), "z");
    Pick(Page(), 4);
    EXPECT_EQ(m_state.MacroKey(1), "z");
    EXPECT_EQ(m_state.MacroKey(33), "1");
    EXPECT_EQ(Key(0).text(), QStringLiteral("1"));
    Pick(Page(), 0);
    EXPECT_EQ(Key(0).text(), QStringLiteral("z"));
}

TEST_F(MacrosTabTest, PageChange_StoresNothing) {
    OpenTab();
    const auto keys = m_state.MacroKey;
    const auto alts = m_state.MacroAlt;
    for (int page = 11; page >= 0; --page) {
        Pick(Page(), page);
    }
    EXPECT_EQ(m_state.MacroKey, keys);
    EXPECT_EQ(m_state.MacroAlt, alts);
    EXPECT_THAT(TakeLog(), IsEmpty());
    EXPECT_THAT(m_store.Batches(), IsEmpty());
}

TEST_F(MacrosTabTest, EditsOfEveryKind_ReachTheStoreWhenTheDialogCloses) {
    OpenTab();
    EnterAndLeave(0, "f1");
    Click("CheckShift", 0);
    EnterAndLeave(9, "m");
    Pick(Page(), 11);
    EnterAndLeave(7, ";");
    EXPECT_THAT(m_store.Batches(), IsEmpty());
    Form().close();
    EXPECT_EQ(Saved("Settings", "Macro 1"), "A-S{F1}");
    EXPECT_EQ(Saved("Settings", "Macro-1"), "---m");
    EXPECT_EQ(Saved("Settings", "Macro 96"), "---;");
    EXPECT_EQ(Saved("Settings", "Macro 0"), "---");
    EXPECT_EQ(Saved("Settings", "Macro 95"), "---AA");
    m_form.reset();
    TakeLog();
    OpenTab();
    EXPECT_EQ(Line(0), "A-S{F1}");
    EXPECT_EQ(Line(9), "---m");
}

TEST_F(MacrosTabTest, TabKey_GoesLineByLineThenToTheButtons) {
    OpenTab();
    Page().setFocus();
    std::vector<std::string> expected{"ComboMacro"};
    for (const int row : kMacroRows) {
        for (const char* name : {"TextMacro", "CheckAlt", "CheckCtrl", "CheckShift"}) {
            expected.push_back(std::string(name) + "(" + std::to_string(row) + ")");
        }
    }
    for (const char* name : {"CommandMacroWrite", "CommandMacroRead", "Command1"}) {
        expected.emplace_back(name);
    }
    std::vector<std::string> order;
    for (std::size_t step = 0; step < expected.size(); ++step) {
        order.push_back(FocusName());
        Press(Qt::Key_Tab);
    }
    EXPECT_EQ(order, expected);
}

}  // namespace
}  // namespace spellwick
