// The tab of the macro keys.
#include <QLabel>

#include "tests/support/settings_fixture.h"

namespace spellwick {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr int kRows[] = {0, 1, 2, 3, 4, 5, 6, 7, 9};
const Box kBlankBox{.text = "This field cannot be left blank", .icon = BoxIcon::kCritical};
const Box kNotValidBox{.text = "This entry is not valid", .icon = BoxIcon::kCritical};

class MacrosTabTest : public SettingsFixture {
  protected:
    FormSettings& OpenTab() {
        Open();
        ShowTab(2);
        TakeLog();
        return Form();
    }
    QComboBox& Page() { return Named<QComboBox>("ComboMacro"); }
    QLineEdit& Key(int row) { return Named<QLineEdit>("TextMacro", row); }
    bool IsTicked(const char* name, int row) { return Named<QCheckBox>(name, row).isChecked(); }
    void EnterAndLeave(int row, const std::string& text) {
        Enter(Key(row), text);
        Leave();
    }
    // The marks and the key of a line, in the form of a macro code.
    std::string Line(int row) {
        return std::string(IsTicked("CheckAlt", row) ? "A" : "-") +
               (IsTicked("CheckCtrl", row) ? "C" : "-") +
               (IsTicked("CheckShift", row) ? "S" : "-") + Key(row).text().toStdString();
    }
    void SetMark(i32 number, const char* alt, const char* ctrl, const char* shift) {
        m_state.MacroAlt(number) = alt;
        m_state.MacroCtrl(number) = ctrl;
        m_state.MacroShift(number) = shift;
    }
    // Another window takes the activation and closes again, as a message box does.
    void LoseTheFrontForAMoment() {
        QWidget other;
        other.show();
        other.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
        other.hide();
        Form().activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&Form()));
    }
};

TEST_F(MacrosTabTest, Captions_AreAsTold) {
    OpenTab();
    EXPECT_EQ(Text("Label1", 9), "Enter letters, numbers, Fn/Fnn for function keys.");
    EXPECT_EQ(Text("Label1", 11),
              "Do not use only Shift with a letter or number as this will fire the macro when "
              "typing normal text.");
    EXPECT_EQ(Text("Label1", 10), "Macro key for Meditation skill");
    EXPECT_EQ(Text("CommandMacroWrite"), "Save Spell Macros to File");
    EXPECT_EQ(Text("CommandMacroRead"), "Load Spell Macros from File");
    for (const int row : kRows) {
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
        for (const int row : kRows) {
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

TEST_F(MacrosTabTest, Key_GotFocus_SelectsTheWholeText) {
    OpenTab();
    m_state.MacroKey(3) = "{F11}";
    Form().Macros().RefreshMacroPage();
    Click(Key(2));
    EXPECT_EQ(Key(2).selectedText(), QStringLiteral("{F11}"));
}

struct EntryRow {
    const char* typed;
    const char* shown;
    const char* stored;
};

TEST_F(MacrosTabTest, Key_GoodEntries_AreStoredWhenTheBoxIsLeft) {
    OpenTab();
    for (const EntryRow& row : std::initializer_list<EntryRow>{{"q", "q", "q"},
                                                               {"Q", "Q", "Q"},
                                                               {"7", "7", "7"},
                                                               {" ", " ", " "},
                                                               {"-", "-", "-"},
                                                               {"+", "+", "+"},
                                                               {"{", "{", "{"},
                                                               {"F", "F", "F"},
                                                               {"f7", "{F7}", "{F7}"},
                                                               {"F7", "{F7}", "{F7}"},
                                                               {"{F7}", "{F7}", "{F7}"},
                                                               {"f12", "{F12}", "{F12}"},
                                                               {"F10", "{F10}", "{F10}"}}) {
        for (const int line : {4, 9}) {
            const i32 number = line == 9 ? -1 : 5;
            m_state.MacroKey(number) = "old";
            Enter(Key(line), row.typed);
            EXPECT_EQ(m_state.MacroKey(number), "old") << row.typed;
            Leave();
            EXPECT_EQ(m_state.MacroKey(number), row.stored) << row.typed;
            EXPECT_EQ(Key(line).text().toStdString(), row.shown);
        }
    }
    EXPECT_THAT(TakeLog(), IsEmpty());
}

TEST_F(MacrosTabTest, Key_EveryLineWritesItsElement) {
    OpenTab();
    for (const int page : {0, 5, 11}) {
        Pick(Page(), page);
        for (const int row : kRows) {
            EnterAndLeave(row, "f" + std::to_string(row + 1));
            EXPECT_EQ(m_state.MacroKey(row == 9 ? -1 : page * 8 + row + 1),
                      "{F" + std::to_string(row + 1) + "}");
        }
    }
    EXPECT_EQ(m_state.MacroKey(0), "");
}

TEST_F(MacrosTabTest, Key_SameKeyOfTwoSpells_IsTaken) {
    OpenTab();
    EnterAndLeave(0, "x");
    EnterAndLeave(1, "x");
    EXPECT_EQ(m_state.MacroKey(1), "x");
    EXPECT_EQ(m_state.MacroKey(2), "x");
}

TEST_F(MacrosTabTest, Key_BadEntries_AreRefusedByABoxThenTheFocusComesBack) {
    OpenTab();
    for (const char* typed :
         {"{f1}", "F13", "F0", "ab", "  ", "AA", "1234567890", "-5", "+-", "hello"}) {
        for (const int line : {3, 9}) {
            const i32 number = line == 9 ? -1 : 4;
            const std::string before = m_state.MacroKey(number);
            Enter(Key(line), typed);
            std::string focusBehindTheBox;
            m_boxes.whileStanding = [&] { focusBehindTheBox = FocusName(); };
            Leave();
            EXPECT_THAT(TakeBoxes(), ElementsAre(kNotValidBox)) << typed;
            EXPECT_EQ(focusBehindTheBox, "CheckTab(2)") << "the box comes first";
            EXPECT_EQ(FocusName(), Key(line).objectName().toStdString()) << typed;
            EXPECT_EQ(Key(line).text().toStdString(), typed);
            EXPECT_EQ(m_state.MacroKey(number), before) << typed;
            Leave();
            EXPECT_THAT(TakeBoxes(), ElementsAre(kNotValidBox)) << "the check runs again";
            EnterAndLeave(line, before);
        }
    }
}

TEST_F(MacrosTabTest, Key_ANovel_IsRefused) {
    OpenTab();
    Paste(Key(0), QStringLiteral("Once upon a midnight dreary ").repeated(30000));
    Leave();
    EXPECT_THAT(TakeBoxes(), ElementsAre(kNotValidBox));
    EXPECT_EQ(m_state.MacroKey(1), "1");
    EnterAndLeave(0, "1");
}

// covers ODDITY(blank-key-two-boxes)
TEST_F(MacrosTabTest, Key_Oddity_ClearedOne_GivesTwoBoxes_ThatOfMeditationOne) {
    OpenTab();
    for (int line = 0; line < 8; ++line) {
        EnterAndLeave(line, "");
        EXPECT_THAT(TakeBoxes(), ElementsAre(kBlankBox, kNotValidBox)) << line;
        EXPECT_EQ(FocusName(), Key(line).objectName().toStdString());
        EXPECT_EQ(Key(line).text(), QString());
        EXPECT_EQ(m_state.MacroKey(line + 1), std::to_string(line + 1));
        EnterAndLeave(line, std::to_string(line + 1));
    }
    EnterAndLeave(9, "");
    EXPECT_THAT(TakeBoxes(), ElementsAre(kNotValidBox));
    EXPECT_EQ(FocusName(), "TextMacro(9)");
    EXPECT_EQ(m_state.MacroKey(-1), " ");
    EnterAndLeave(9, " ");
}

TEST_F(MacrosTabTest, Key_ClearedOne_ReadsItsTextAgainBehindTheFirstBox) {
    OpenTab();
    Enter(Key(0), "");
    m_boxes.whileStanding = [&] { Key(0).setText(QStringLiteral("f3")); };
    Leave();
    EXPECT_THAT(TakeBoxes(), ElementsAre(kBlankBox));
    EXPECT_EQ(m_state.MacroKey(1), "{F3}");
    EXPECT_EQ(Key(0).text(), QStringLiteral("{F3}"));
}

TEST_F(MacrosTabTest, Key_RefusedOnTheWayToAnotherBadBox_GivesOneBox) {
    OpenTab();
    Pick(Page(), 11);
    Click(Key(2));
    m_boxes.whileStanding = [this] { LoseTheFrontForAMoment(); };
    Click(Key(3));
    EXPECT_THAT(TakeBoxes(), ElementsAre(kNotValidBox));
    EXPECT_EQ(FocusName(), "TextMacro(2)");
    EXPECT_EQ(m_state.MacroKey(91), "AA");
    EnterAndLeave(2, "a");
    EXPECT_EQ(m_state.MacroKey(91), "a");
}

TEST_F(MacrosTabTest, Key_EnterKeyChecksIt) {
    OpenTab();
    Enter(Key(6), "f4");
    Press(Qt::Key_Return);
    EXPECT_EQ(m_state.MacroKey(7), "{F4}");
    EXPECT_EQ(FocusName(), "CommandDummy");
    Enter(Key(6), "no");
    Press(Qt::Key_Return);
    EXPECT_THAT(TakeBoxes(), ElementsAre(kNotValidBox));
    EXPECT_EQ(FocusName(), "TextMacro(6)");
    EnterAndLeave(6, "7");
}

TEST_F(MacrosTabTest, Key_Refused_NoWayOfClosingButEscapeGoesOn) {
    OpenTab();
    const struct {
        const char* name;
        std::function<void()> close;
    } ways[] = {{"OK", [this] { Click("Command1"); }},
                {"Alt+O",
                 [this] {
                     Press(Qt::Key_O, Qt::AltModifier);
                     QTest::qWait(150);
                 }},
                {"X", [this] { Form().close(); }}};
    for (const int line : {0, 9}) {
        const i32 number = line == 9 ? -1 : 1;
        const std::string before = m_state.MacroKey(number);
        Enter(Key(line), "no");
        TakeLog();
        for (const auto& way : ways) {
            for (const char* attempt : {"first", "second"}) {
                SCOPED_TRACE(std::string(way.name) + ", " + attempt);
                way.close();
                EXPECT_THAT(TakeBoxes(), ElementsAre(kNotValidBox));
                EXPECT_TRUE(Form().isVisible());
                EXPECT_EQ(FocusName(), Key(line).objectName().toStdString());
                EXPECT_EQ(Key(line).text(), QStringLiteral("no"));
                EXPECT_FALSE(Form().Command1->isDown());
                EXPECT_THAT(TakeLog(), ElementsAre("box This entry is not valid"));
            }
        }
        Press(Qt::Key_Escape);
        EXPECT_THAT(TakeBoxes(), IsEmpty());
        EXPECT_FALSE(Form().isVisible());
        EXPECT_THAT(TakeLog(), ElementsAre("save place and macros"));
        EXPECT_EQ(m_state.MacroKey(number), before);
        Reopen();
        EXPECT_EQ(Key(line).text().toStdString(), before);
        EXPECT_EQ(Saved("Settings", line == 9 ? "Macro-1" : "Macro 1").substr(3), before);
    }
}

TEST_F(MacrosTabTest, Key_NotYetChecked_EscapeTakesAGoodOneAndDropsABadOne) {
    OpenTab();
    Enter(Key(0), "f7");
    Press(Qt::Key_Escape);
    EXPECT_FALSE(Form().isVisible());
    EXPECT_EQ(m_state.MacroKey(1), "{F7}");
    EXPECT_EQ(Saved("Settings", "Macro 1"), "A--{F7}");
    Reopen();
    Enter(Key(0), "no");
    Press(Qt::Key_Escape);
    EXPECT_FALSE(Form().isVisible());
    EXPECT_EQ(m_state.MacroKey(1), "{F7}");
    Reopen();
    EXPECT_EQ(Key(0).text(), QStringLiteral("{F7}"));
    EnterAndLeave(0, "no");
    EXPECT_THAT(TakeBoxes(), ElementsAre(kNotValidBox)) << "the next one is checked again";
    EnterAndLeave(0, "1");
}

TEST_F(MacrosTabTest, Key_CornerOfAA_IsLeftByEscapeUnchanged) {
    OpenTab();
    Pick(Page(), 11);
    Click(Key(4));
    Form().close();
    EXPECT_THAT(TakeBoxes(), ElementsAre(kNotValidBox));
    EXPECT_TRUE(Form().isVisible());
    Press(Qt::Key_Escape);
    EXPECT_FALSE(Form().isVisible());
    EXPECT_EQ(m_state.MacroKey(93), "AA");
}

TEST_F(MacrosTabTest, Key_RefusedWhileTheDialogIsNotActive_IsRefusedAllTheSame) {
    OpenTab();
    Enter(Key(0), "no");
    QWidget other;
    other.show();
    other.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
    Form().close();
    EXPECT_THAT(TakeBoxes(), ElementsAre(kNotValidBox));
    EXPECT_TRUE(Form().isVisible());
    other.hide();
    Form().activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&Form()));
    EXPECT_EQ(FocusName(), "TextMacro(0)");
    Form().close();
    EXPECT_THAT(TakeBoxes(), ElementsAre(kNotValidBox));
    EnterAndLeave(0, "1");
}

TEST_F(MacrosTabTest, Key_Refused_TheTabStays) {
    OpenTab();
    Enter(Key(0), "no");
    Press(Qt::Key_PageDown, Qt::ControlModifier);
    EXPECT_THAT(TakeBoxes(), ElementsAre(kNotValidBox));
    EXPECT_TRUE(Form().CheckTab[2]->isChecked());
    EXPECT_EQ(FocusName(), "TextMacro(0)");
    ShowTab(3);
    EXPECT_THAT(TakeBoxes(), ElementsAre(kNotValidBox));
    EXPECT_TRUE(Form().CheckTab[2]->isChecked());
    EXPECT_EQ(FocusName(), "TextMacro(0)");
    EnterAndLeave(0, "1");
}

TEST_F(MacrosTabTest, Opened_TheEditsShowWhatIsInForce) {
    OpenTab();
    Click("Command1");
    Key(3).setText(QStringLiteral("stale"));
    Reopen();
    EXPECT_EQ(Key(3).text(), QStringLiteral("4"));
}

TEST_F(MacrosTabTest, Key_SwitchToAnotherProgram_ChecksNothing) {
    OpenTab();
    Enter(Key(0), "no");
    LoseTheFrontForAMoment();
    EXPECT_EQ(Key(0).text(), QStringLiteral("no"));
    EXPECT_EQ(FocusName(), "TextMacro(0)");
    EnterAndLeave(0, "n");
    EXPECT_EQ(m_state.MacroKey(1), "n");
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
    for (const int row : kRows) {
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
