// The tab of general options, the About tab and the web buttons.
#include <QClipboard>
#include <QGuiApplication>
#include <QLabel>
#include <QPlainTextEdit>

#include "settings_dialog/web_pages.h"
#include "tests/support/settings_fixture.h"
#include "widgets/hint.h"

namespace spellwick {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

class GeneralTabTest : public SettingsFixture {
  protected:
    FormSettings& OpenTab() { return OpenAt(7); }
    QComboBox& Players() { return Named<QComboBox>("ComboUOwindow"); }
};

struct CaptionRow {
    const char* control;
    const char* caption;
};

TEST_F(GeneralTabTest, Captions_AreAsTold) {
    OpenTab();
    for (const CaptionRow& row : std::initializer_list<CaptionRow>{
             {"Label1(8)", "UO window name"},
             {"CheckAlwaysOnTop", "Always on Top"},
             {"CheckDisplayVertical", "Display main window vertically"},
             {"CheckCasting", "Disable casting if not enough reagents or tithes"},
             {"CheckMeditation", "Start to Meditate when mana drops below"},
             {"CheckShowNecroRegs", "Show Necromancer Reagents"},
             {"Label1(39)", "Reagent/Spell indicator changes color at "},
             {"Label1(0)", "to"},
             {"Label1(41)", "(Click color to change)"},
             {"optSpellTimer(0)", "Off"},
             {"optSpellTimer(1)", "Text"},
             {"optSpellTimer(2)", "Graphic"}}) {
        EXPECT_EQ(Text(row.control), row.caption);
    }
    EXPECT_EQ(Named<QGroupBox>("Frame2").title(), QStringLiteral("Spell Timer"));
}

struct SwitchRow {
    const char* control;
    const char* key;
    bool SharedState::*cell;
};

TEST_F(GeneralTabTest, Switches_StoreAndSaveAtOnce) {
    OpenTab();
    for (const SwitchRow& row : std::initializer_list<SwitchRow>{
             {"CheckAlwaysOnTop", "AlwaysOnTop", &SharedState::AlwaysOnTop},
             {"CheckCasting", "DisableCasting", &SharedState::DisableCasting},
             {"CheckMeditation", "Meditate", &SharedState::Meditate}}) {
        const bool before = m_state.*row.cell;
        Click(row.control);
        EXPECT_EQ(m_state.*row.cell, !before) << row.control;
        const std::string now = before ? "False" : "True";
        EXPECT_THAT(TakeLog(), ElementsAre(std::string("option ") + row.key + " " + now));
        Click(row.control);
        EXPECT_EQ(m_state.*row.cell, before) << row.control;
        TakeLog();
    }
}

TEST_F(GeneralTabTest, DisplayVertical_ArrangesTheMainWindowAndSaves) {
    OpenTab();
    Click("CheckDisplayVertical");
    EXPECT_THAT(TakeLog(), ElementsAre("vertical", "option DisplayVertical True"));
    Click("CheckDisplayVertical");
    EXPECT_THAT(TakeLog(), ElementsAre("horizontal", "option DisplayVertical False"));
}

TEST_F(GeneralTabTest, DisplayVertical_WhileUpdating_DoesNothing) {
    OpenTab();
    m_state.Updating = true;
    Form().General().ClickDisplayVertical();
    EXPECT_THAT(TakeLog(), IsEmpty());
    m_state.Updating = false;
}

TEST_F(GeneralTabTest, ShowNecroRegs_SavesThenArrangesTheMainWindow) {
    OpenTab();
    Click("CheckShowNecroRegs");
    EXPECT_FALSE(m_state.ShowNecroRegs);
    EXPECT_THAT(TakeLog(), ElementsAre("option ShowNecroRegs False", "horizontal",
                                       "option DisplayVertical False"));
}

struct OptionNumberRow {
    const char* text;
    i16 value;
};

constexpr OptionNumberRow kOptionNumbers[] = {
    {"7", 7},     {"", 0},      {"-", 0},      {"abc", 0},
    {"-3", -3},   {"12.5", 12}, {"13.5", 14},  {"1234567890", 1234},
    {"  42", 42}, {"+5", 5},    {"5x", 5},     {".5", 0},
    {"1.5", 2},   {"0", 0},     {"9999", 9999}};

TEST_F(GeneralTabTest, TextMana_ReadsTheNumberInItsFirstFourCharacters) {
    OpenTab();
    for (const OptionNumberRow& row : kOptionNumbers) {
        Paste(Named<QLineEdit>("TextMana"), QString::fromLatin1(row.text));
        EXPECT_EQ(m_state.MeditateLevel, row.value) << row.text;
    }
    EXPECT_THAT(TakeLog(), IsEmpty());
}

TEST_F(GeneralTabTest, TextYellow_ReadsTheSameWayAndUpdatesTheAmounts) {
    OpenTab();
    for (const OptionNumberRow& row : kOptionNumbers) {
        Paste(Named<QLineEdit>("TextYellow"), QString::fromLatin1(row.text));
        EXPECT_EQ(m_state.RegYellow, row.value) << row.text;
        EXPECT_THAT(TakeLog(), Contains("update amounts")) << row.text;
    }
}

TEST_F(GeneralTabTest, NumberBoxes_HaveNoKeyFilter_LettersReadAsZero) {
    OpenTab();
    Enter(Named<QLineEdit>("TextMana"), "lots");
    EXPECT_EQ(Text("TextMana"), "lots");
    EXPECT_EQ(m_state.MeditateLevel, 0);
    Enter(Named<QLineEdit>("TextYellow"), "few");
    EXPECT_EQ(m_state.RegYellow, 0);
    EXPECT_EQ(m_desktop.beeps, 0);
}

TEST_F(GeneralTabTest, NumberBoxes_TakeANovel) {
    OpenTab();
    const QString novel = QStringLiteral("It was the best of times. ").repeated(20000);
    Paste(Named<QLineEdit>("TextMana"), novel);
    Paste(Named<QLineEdit>("TextYellow"), novel);
    EXPECT_EQ(m_state.MeditateLevel, 0);
    EXPECT_EQ(m_state.RegYellow, 0);
}

// covers ODDITY(limit-digits)
TEST_F(GeneralTabTest, Limit_Oddity_OnlyFourCharactersCountOfALongerNumber) {
    OpenTab();
    Enter(Named<QLineEdit>("TextMana"), "12345");
    EXPECT_EQ(Text("TextMana"), "12345");
    EXPECT_EQ(m_state.MeditateLevel, 1234);
}

// covers ODDITY(limit-exponent)
TEST_F(GeneralTabTest, Limit_Oddity_AnExponentEndsTheProgram) {
    OpenTab();
    Paste(Named<QLineEdit>("TextMana"), QStringLiteral("9e9"));
    EXPECT_EQ(m_state.MeditateLevel, 20);
    EXPECT_THAT(TakeFailures(),
                ElementsAre(UncaughtFailure{FailureKind::kOverflow, "changing an option"}));
}

TEST_F(GeneralTabTest, Load_ShowsTheNumbersAndTheColour) {
    SetSaved("Settings", "MeditateLevel", "33");
    SetSaved("Settings", "RegYellow", "8");
    SetSaved("Settings", "ColorWarn", "255");
    OpenTab();
    EXPECT_EQ(Text("TextMana"), "33");
    EXPECT_EQ(Text("TextYellow"), "8");
    EXPECT_EQ(Form().General().LabelColor->BackColour(), kRed);
}

TEST_F(GeneralTabTest, LabelColor_Click_TakesTheChosenColour) {
    OpenTab();
    m_dialogs.colours.push_back(0x123456);
    Click("LabelColor");
    EXPECT_THAT(m_dialogs.colourStarts, ElementsAre(65535));
    EXPECT_EQ(m_state.ColorWarn, 0x123456);
    EXPECT_EQ(Form().General().LabelColor->BackColour(), 0x123456);
}

TEST_F(GeneralTabTest, LabelColor_Cancelled_ChangesNothing) {
    OpenTab();
    Click("LabelColor");
    EXPECT_EQ(m_dialogs.colourStarts.size(), 1U);
    EXPECT_EQ(m_state.ColorWarn, 65535);
    EXPECT_EQ(Form().General().LabelColor->BackColour(), 65535);
}

TEST_F(GeneralTabTest, LabelColor_ByTheKeyboard) {
    OpenTab();
    m_dialogs.colours.push_back(0x0000FF);
    Form().General().LabelColor->setFocus();
    Press(Qt::Key_Space);
    EXPECT_EQ(m_state.ColorWarn, 0x0000FF);
}

TEST_F(GeneralTabTest, SpellTimer_FrameIsHiddenEachTime) {
    OpenTab();
    EXPECT_FALSE(Named("Frame2").isVisible());
    Named("Frame2").show();
    Click("Command1");
    Reopen();
    EXPECT_FALSE(Named("Frame2").isVisible());
}

TEST_F(GeneralTabTest, SpellTimer_OptionShowsTheModeAndItsClickSavesIt) {
    SetSaved("Settings", "SpellTimerMode", "1");
    OpenTab();
    auto& options = Form().General().optSpellTimer;
    EXPECT_TRUE(options[1]->isChecked());
    for (int mode : {0, 2, 1}) {
        options[static_cast<std::size_t>(mode)]->click();
        EXPECT_EQ(m_state.SpellTimerMode, mode);
        EXPECT_THAT(TakeLog(), ElementsAre("timer mode " + std::to_string(mode),
                                           "option SpellTimerMode " + std::to_string(mode)));
    }
}

TEST_F(GeneralTabTest, SpellTimer_ModeThatHasNoOption_TurnsNoneOn) {
    SetSaved("Settings", "SpellTimerMode", "7");
    OpenTab();
    for (const QRadioButton* option : Form().General().optSpellTimer) {
        EXPECT_FALSE(option->isChecked());
    }
}

TEST_F(GeneralTabTest, Players_AllSectionsButTheGlobalOneInTheirOrder) {
    SetSaved("Settings", "CurrentPlayerName", kMira);
    SetSaved(kMira, "Magery", "90");
    SetSaved(kBran, "Magery", "10");
    SetSaved("=Settings", "Magery", "5");
    OpenTab();
    QStringList names;
    for (int entry = 0; entry < Players().count(); ++entry) {
        names << Players().itemText(entry);
    }
    QStringList sections;
    for (const std::string& section : m_store.Sections()) {
        if (section != "Settings") {
            sections << QString::fromStdString(section == "=Settings" ? "Settings" : section);
        }
    }
    EXPECT_EQ(names, sections);
    EXPECT_EQ(names.size(), 3);
    EXPECT_EQ(Players().currentText(), QLatin1String(kMira));
}

TEST_F(GeneralTabTest, Players_UnknownCurrentOne_NoneIsSelected) {
    SetSaved(kBran, "Magery", "10");
    OpenTab();
    m_state.CurrentPlayerName = "somebody";
    Click("Command1");
    Reopen();
    EXPECT_EQ(Players().currentIndex(), -1);
    EXPECT_EQ(m_state.CurrentPlayerName, "somebody");
}

TEST_F(GeneralTabTest, Players_Pick_SavesTheOldOneAndLoadsTheNewOne) {
    SetSaved("Settings", "CurrentPlayerName", kMira);
    SetSaved(kMira, "SpellText 0 0", "Mira speaks");
    SetSaved(kBran, "SpellText 0 0", "Bran speaks");
    SetSaved(kBran, "SpellTextSuffix", "says Bran");
    SetSaved(kBran, "SendSpellSuffix", "1");
    SetSaved(kBran, "User1", "9");
    OpenTab();
    m_state.Magery = 77;
    Pick(Players(), Players().findText(QLatin1String(kBran)));
    EXPECT_THAT(TakeLog(), ElementsAre(std::string("save ") + kMira, "parse title",
                                       std::string("load ") + kBran, "update page"));
    EXPECT_EQ(m_state.CurrentPlayerName, kBran);
    EXPECT_EQ(Saved(kMira, "Magery"), "77");
    EXPECT_EQ(Text("TextSpell", 0), "Bran speaks");
    EXPECT_EQ(Text("SpellSuffix"), "says Bran");
    EXPECT_TRUE(Named<QCheckBox>("CheckSendSuffix").isChecked());
    EXPECT_EQ(Named<QComboBox>("ComboUserSpell", 0).currentIndex(), 9);
}

TEST_F(GeneralTabTest, Players_TheListSaysWhyAChoiceMayNotLast) {
    OpenTab();
    EXPECT_EQ(Named("ComboUOwindow").toolTip(),
              QStringLiteral("While the game is running, Spellwick follows the character in it. "
                             "Another one chosen here gives way to it within a second."));
}

TEST_F(GeneralTabTest, Players_NoneSelected_ReloadsTheSamePlayer) {
    SetSaved("Settings", "CurrentPlayerName", kMira);
    SetSaved(kMira, "Magery", "50");
    OpenTab();
    Players().setCurrentIndex(-1);
    Form().General().ClickUOwindow();
    EXPECT_THAT(TakeLog(), ElementsAre(std::string("save ") + kMira, "parse title",
                                       std::string("load ") + kMira, "update page"));
    EXPECT_EQ(m_state.CurrentPlayerName, kMira);
}

TEST_F(GeneralTabTest, Players_EmptyList_LeavesTheCurrentName) {
    OpenTab();
    ASSERT_EQ(Players().count(), 0);
    m_state.CurrentPlayerName = kMira;
    Form().Form_Activate();
    EXPECT_EQ(m_state.CurrentPlayerName, kMira);
    Form().General().ClickUOwindow();
    EXPECT_EQ(m_state.CurrentPlayerName, kMira);
}

TEST_F(GeneralTabTest, Players_WhileUpdating_ClickDoesNothing) {
    OpenTab();
    m_state.Updating = true;
    Form().General().ClickUOwindow();
    EXPECT_THAT(TakeLog(), IsEmpty());
    m_state.Updating = false;
}

// covers ODDITY(player-list)
TEST_F(GeneralTabTest, Players_Oddity_ANewOneIsListedOnlyAfterTheNextStart) {
    OpenTab();
    SetSaved(kBran, "Magery", "10");
    Click("Command1");
    Reopen();
    EXPECT_EQ(Players().findText(QLatin1String(kBran)), -1);
    m_form.reset();
    OpenTab();
    EXPECT_NE(Players().findText(QLatin1String(kBran)), -1);
}

TEST_F(GeneralTabTest, About_ShowsThePictureTheVersionAndTheCredits) {
    Open();
    ShowTab(6);
    EXPECT_EQ(Text("LabelVersion"), "Version: 7.5");
    EXPECT_EQ(Text("CommandWeb"), "Click this to go to the Mira Talon website");
    EXPECT_FALSE(Named<QLabel>("Image1").pixmap(Qt::ReturnByValue).isNull());
    for (const char* credit : {"Label1(5)", "Label3", "Label4"}) {
        EXPECT_NE(Text(credit), "") << credit;
    }
}

TEST_F(GeneralTabTest, About_CopiesVersionDataAndLicences) {
    Open();
    ShowTab(6);
    const std::string text = "Spellwick 7.5\n\nYour data: /home/mira/settings.db";
    EXPECT_EQ(Named<QPlainTextEdit>("TextFacts").toPlainText().toStdString(), text);
    QGuiApplication::clipboard()->clear();
    Click("CommandCopy");
    EXPECT_EQ(QGuiApplication::clipboard()->text().toStdString(), text);
}

TEST_F(GeneralTabTest, WebButtons_OpenTheirDefaults) {
    Open();
    ShowTab(6);
    Click("CommandWeb");
    OpenGuildPage(Services(), Form());
    EXPECT_THAT(m_desktop.browsed, ElementsAre("https://uo.com/", "https://www.uoguide.com/"));
}

TEST_F(GeneralTabTest, WebButtons_WithoutABrowser_OfferTheAddressToCopy) {
    SetSaved("Settings", "URL Mira", "https://example.org/mira");
    Open();
    ShowTab(6);
    Click("CommandWeb");
    EXPECT_EQ(Form().findChild<Hint*>(), nullptr) << "the page was opened";
    m_desktop.opens = false;
    Click("CommandWeb");
    auto* hint = Form().findChild<Hint*>();
    ASSERT_NE(hint, nullptr);
    EXPECT_TRUE(hint->text().contains(QStringLiteral("https://example.org/mira")));
    QTest::mouseClick(hint, Qt::LeftButton);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("https://example.org/mira"));
}

TEST_F(GeneralTabTest, WebButtons_OpenTheAddressOfTheStoreAndWriteNone) {
    SetSaved("Settings", "URL Mira", "https://example.org/mira");
    SetSaved("Settings", "URL LHWS", "https://example.org/hall");
    Open();
    ShowTab(6);
    m_desktop.opens = false;
    Click("CommandWeb");
    OpenGuildPage(Services(), Form());
    EXPECT_THAT(m_desktop.browsed,
                ElementsAre("https://example.org/mira", "https://example.org/hall"));
    EXPECT_THAT(m_store.Batches(), IsEmpty());
}

}  // namespace
}  // namespace spellwick
