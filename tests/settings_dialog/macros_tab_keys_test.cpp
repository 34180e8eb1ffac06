// Entries in the edits of the macro keys: what is taken, what is refused, and what comes of it.
#include "tests/settings_dialog/macros_tab_fixture.h"
#include "tests/support/window_in_front.h"

namespace spellwick {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const Box kBlankBox{.text = "This field cannot be left blank", .icon = BoxIcon::kCritical};
const Box kNotValidBox{.text = "This entry is not valid", .icon = BoxIcon::kCritical};

class MacrosTabKeysTest : public MacrosTabFixture {};

TEST_F(MacrosTabKeysTest, Key_GotFocus_SelectsTheWholeText) {
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

TEST_F(MacrosTabKeysTest, Key_GoodEntries_AreStoredWhenTheBoxIsLeft) {
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

TEST_F(MacrosTabKeysTest, Key_EveryLineWritesItsElement) {
    OpenTab();
    for (const int page : {0, 5, 11}) {
        Pick(Page(), page);
        for (const int row : kMacroRows) {
            EnterAndLeave(row, "f" + std::to_string(row + 1));
            EXPECT_EQ(m_state.MacroKey(row == 9 ? -1 : page * 8 + row + 1),
                      "{F" + std::to_string(row + 1) + "}");
        }
    }
    EXPECT_EQ(m_state.MacroKey(0), "");
}

TEST_F(MacrosTabKeysTest, Key_SameKeyOfTwoSpells_IsTaken) {
    OpenTab();
    EnterAndLeave(0, "x");
    EnterAndLeave(1, "x");
    EXPECT_EQ(m_state.MacroKey(1), "x");
    EXPECT_EQ(m_state.MacroKey(2), "x");
}

TEST_F(MacrosTabKeysTest, Key_BadEntries_AreRefusedByABoxThenTheFocusComesBack) {
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

TEST_F(MacrosTabKeysTest, Key_ANovel_IsRefused) {
    OpenTab();
    Paste(Key(0), QStringLiteral("Once upon a midnight dreary ").repeated(30000));
    Leave();
    EXPECT_THAT(TakeBoxes(), ElementsAre(kNotValidBox));
    EXPECT_EQ(m_state.MacroKey(1), "1");
    EnterAndLeave(0, "1");
}

// covers ODDITY(blank-key-two-boxes)
TEST_F(MacrosTabKeysTest, Key_Oddity_ClearedOne_GivesTwoBoxes_ThatOfMeditationOne) {
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

TEST_F(MacrosTabKeysTest, Key_ClearedOne_ReadsItsTextAgainBehindTheFirstBox) {
    OpenTab();
    Enter(Key(0), "");
    m_boxes.whileStanding = [&] { Key(0).setText(QStringLiteral("f3")); };
    Leave();
    EXPECT_THAT(TakeBoxes(), ElementsAre(kBlankBox));
    EXPECT_EQ(m_state.MacroKey(1), "{F3}");
    EXPECT_EQ(Key(0).text(), QStringLiteral("{F3}"));
}

TEST_F(MacrosTabKeysTest, Key_RefusedOnTheWayToAnotherBadBox_GivesOneBox) {
    OpenTab();
    Pick(Page(), 11);
    Click(Key(2));
    m_boxes.whileStanding = [this] { LeaveAndComeBack(); };
    Click(Key(3));
    EXPECT_THAT(TakeBoxes(), ElementsAre(kNotValidBox));
    EXPECT_EQ(FocusName(), "TextMacro(2)");
    EXPECT_EQ(m_state.MacroKey(91), "AA");
    EnterAndLeave(2, "a");
    EXPECT_EQ(m_state.MacroKey(91), "a");
}

TEST_F(MacrosTabKeysTest, Key_EnterKeyChecksIt) {
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

TEST_F(MacrosTabKeysTest, Key_Refused_NoWayOfClosingButEscapeGoesOn) {
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

TEST_F(MacrosTabKeysTest, Key_NotYetChecked_EscapeTakesAGoodOneAndDropsABadOne) {
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

TEST_F(MacrosTabKeysTest, Key_CornerOfAA_IsLeftByEscapeUnchanged) {
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

TEST_F(MacrosTabKeysTest, Key_RefusedWhileTheDialogIsNotActive_IsRefusedAllTheSame) {
    OpenTab();
    Enter(Key(0), "no");
    WindowInFront other;
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

TEST_F(MacrosTabKeysTest, Key_Refused_TheTabStays) {
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

TEST_F(MacrosTabKeysTest, Opened_TheEditsShowWhatIsInForce) {
    OpenTab();
    Click("Command1");
    Key(3).setText(QStringLiteral("stale"));
    Reopen();
    EXPECT_EQ(Key(3).text(), QStringLiteral("4"));
}

TEST_F(MacrosTabKeysTest, Key_SwitchToAnotherProgram_ChecksNothing) {
    OpenTab();
    Enter(Key(0), "no");
    LeaveAndComeBack();
    EXPECT_EQ(Key(0).text(), QStringLiteral("no"));
    EXPECT_EQ(FocusName(), "TextMacro(0)");
    EnterAndLeave(0, "n");
    EXPECT_EQ(m_state.MacroKey(1), "n");
}

}  // namespace
}  // namespace spellwick
