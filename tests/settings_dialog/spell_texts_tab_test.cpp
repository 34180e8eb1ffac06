// The Spell texts tab.
#include <QLabel>

#include "tests/support/pace.h"
#include "tests/support/settings_fixture.h"

namespace spellwick {
namespace {

class SpellTextsTabTest : public SettingsFixture {
  protected:
    FormSettings& OpenTab() { return OpenAt(5); }
    QComboBox& Page() { return Named<QComboBox>("ComboSpellText"); }
    QLineEdit& Box(int row) { return Named<QLineEdit>("TextSpell", row); }
};

constexpr const char* kTextPages[] = {"Level 1 spells", "Level 2 spells", "Level 3 spells",
                                      "Level 4 spells", "Level 5 spells", "Level 6 spells",
                                      "Level 7 spells", "Level 8 spells", "Necromancer 1",
                                      "Necromancer 2",  "Paladin 1",      "Paladin 2"};

TEST_F(SpellTextsTabTest, Captions_AreAsTold) {
    OpenTab();
    EXPECT_EQ(Text("CheckSpellText"), "Send texts when casting spells");
    EXPECT_EQ(Text("CheckSendSuffix"), "Send suffix");
    EXPECT_EQ(Text("Label1", 26),
              "Enter text here that you want to say while you are casting the spell");
    EXPECT_EQ(Text("Label1", 81),
              "Prefix with : and a space to emote, ! and a space to yell, ; and a space to "
              "whisper");
}

TEST_F(SpellTextsTabTest, EveryPage_ShowsItsNamesAndTexts) {
    OpenTab();
    ASSERT_EQ(Page().count(), 12);
    for (int row = 0; row <= 95; ++row) {
        m_state.Spells(row).SpellText = "text " + std::to_string(row);
    }
    for (int page = 0; page < 12; ++page) {
        EXPECT_EQ(Page().itemText(page).toStdString(), kTextPages[page]);
        Pick(Page(), page);
        for (int row = 0; row < 8; ++row) {
            EXPECT_EQ(Text("LabelSpell", row + 8), m_state.Spells(page * 8 + row).Name);
            EXPECT_EQ(Text("TextSpell", row), "text " + std::to_string(page * 8 + row));
        }
    }
    for (int row = 0; row <= 95; ++row) {
        EXPECT_EQ(m_state.Spells(row).SpellText, "text " + std::to_string(row));
    }
}

TEST_F(SpellTextsTabTest, Typing_StoresAtOnceInTheRowOfThePage) {
    OpenTab();
    Pick(Page(), 11);
    Enter("TextSpell", 7, ": waves");
    EXPECT_EQ(m_state.Spells(95).SpellText, ": waves");
}

TEST_F(SpellTextsTabTest, PageChange_KeepsTheOldPagesTexts) {
    OpenTab();
    Enter("TextSpell", 0, "Wither!");
    Pick(Page(), 1);
    EXPECT_EQ(Text("TextSpell", 0), "");
    EXPECT_EQ(m_state.Spells(0).SpellText, "Wither!");
    EXPECT_EQ(m_state.Spells(8).SpellText, "");
    Pick(Page(), 0);
    EXPECT_EQ(Text("TextSpell", 0), "Wither!");
}

TEST_F(SpellTextsTabTest, EmptiedBox_StoresTheEmptyText) {
    OpenTab();
    Enter("TextSpell", 2, "x");
    Enter("TextSpell", 2, "");
    EXPECT_EQ(m_state.Spells(2).SpellText, "");
}

TEST_F(SpellTextsTabTest, RowWithoutASpell_TakesAText) {
    OpenTab();
    ASSERT_EQ(m_state.Spells(91).Name, "");
    Pick(Page(), 11);
    Enter("TextSpell", 3, "nothing to cast");
    EXPECT_EQ(m_state.Spells(91).SpellText, "nothing to cast");
}

TEST_F(SpellTextsTabTest, Length_76ShowsNoSelectionAnd77SelectsTheLastCharacter) {
    OpenTab();
    Paste(Box(0), QString(76, QLatin1Char('a')));
    EXPECT_FALSE(Box(0).hasSelectedText());
    Paste(Box(0), QString(77, QLatin1Char('a')));
    EXPECT_EQ(Box(0).selectionStart(), 76);
    EXPECT_EQ(Box(0).selectionLength(), 1);
    EXPECT_EQ(m_state.Spells(0).SpellText.size(), 77U);
    Paste(Box(0), QString(100, QLatin1Char('a')));
    EXPECT_EQ(Box(0).selectionStart(), 76);
    EXPECT_EQ(Box(0).selectionLength(), 24);
    EXPECT_EQ(m_state.Spells(0).SpellText.size(), 100U);
}

// covers ODDITY(long-text-marked)
TEST_F(SpellTextsTabTest, LongText_Oddity_TheNextKeyReplacesWhatIsTooLong) {
    OpenTab();
    Enter("TextSpell", 0, std::string(77, 'a') + "bc");
    EXPECT_EQ(m_state.Spells(0).SpellText, std::string(76, 'a') + "c");
}

TEST_F(SpellTextsTabTest, Novel_IsStoredWholeWithoutAHang) {
    OpenTab();
    const QString novel = QStringLiteral("Call me Ishmael. ").repeated(30000);
    const testing_support::ProcessorTime time;
    Paste(Box(1), novel);
    EXPECT_EQ(m_state.Spells(1).SpellText, novel.toStdString());
    Pick(Page(), 1);
    Pick(Page(), 0);
    EXPECT_EQ(Box(1).text(), novel);
    EXPECT_EQ(m_state.Spells(1).SpellText, novel.toStdString());
    EXPECT_LT(time.Seconds(), 5.0 * testing_support::kPace);
}

TEST_F(SpellTextsTabTest, OddEntries_AreStoredAsTyped) {
    OpenTab();
    for (const char* text : {"-", "+5", "abc", "1234567890", "-17", "! Hear me", "{ENTER}"}) {
        Enter("TextSpell", 5, text);
        EXPECT_EQ(m_state.Spells(5).SpellText, text);
        Enter(Named<QLineEdit>("SpellSuffix"), text);
        EXPECT_EQ(m_state.SpellTextSuffix, text);
    }
}

TEST_F(SpellTextsTabTest, TabKey_GoesThroughThePageThenTheSwitchesAndTheSuffix) {
    OpenTab();
    Page().setFocus();
    std::vector<std::string> order;
    for (int step = 0; step < 13; ++step) {
        order.push_back(FocusName());
        Press(Qt::Key_Tab);
    }
    EXPECT_THAT(order,
                testing::ElementsAre("ComboSpellText", "TextSpell(0)", "TextSpell(1)",
                                     "TextSpell(2)", "TextSpell(3)", "TextSpell(4)", "TextSpell(5)",
                                     "TextSpell(6)", "TextSpell(7)", "CheckSpellText",
                                     "CheckSendSuffix", "SpellSuffix", "Command1"));
}

TEST_F(SpellTextsTabTest, Switches_StoreOneAndZero) {
    OpenTab();
    m_state.SendSpellText = 0;
    Form().RefreshDialog();
    Click("CheckSpellText");
    EXPECT_EQ(m_state.SendSpellText, 1);
    Click("CheckSpellText");
    EXPECT_EQ(m_state.SendSpellText, 0);
    Click("CheckSendSuffix");
    EXPECT_EQ(m_state.SendSpellSuffix, 1);
    Click("CheckSendSuffix");
    EXPECT_EQ(m_state.SendSpellSuffix, 0);
}

TEST_F(SpellTextsTabTest, Load_ShowsTheSwitchesAndTheSuffixOfThePlayer) {
    SetSaved("Settings", "CurrentPlayerName", kMira);
    SetSaved(kMira, "SendSpellSuffix", "1");
    OpenTab();
    EXPECT_TRUE(Named<QCheckBox>("CheckSpellText").isChecked());
    EXPECT_TRUE(Named<QCheckBox>("CheckSendSuffix").isChecked());
    EXPECT_EQ(Text("SpellSuffix"), "... Alakazam ...");
    EXPECT_EQ(Page().currentIndex(), 0);
}

}  // namespace
}  // namespace spellwick
