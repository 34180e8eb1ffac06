// The frame of the settings dialog: strip, showing, place, and what it shows anew.
#include <QScreen>

#include "tests/settings_dialog/form_settings_fixture.h"

namespace spellwick {
namespace {

using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

struct TabRow {
    const char* name;
    int tab;
    const char* caption;
    const char* focus;  // empty: the button keeps it
};

class TabTest : public FormSettingsTest, public testing::WithParamInterface<TabRow> {};

TEST_P(TabTest, Click_ShowsItsPanelAloneAndMovesTheFocus) {
    Open();
    const TabRow& row = GetParam();
    ShowTab(row.tab == 0 ? 1 : 0);
    ShowTab(row.tab);
    EXPECT_EQ(Text("CheckTab", row.tab), row.caption);
    EXPECT_THAT(TickedTabs(), ElementsAre(row.tab));
    EXPECT_THAT(ShownPanels(), ElementsAre(row.tab + 1));
    const std::string button = "CheckTab(" + std::to_string(row.tab) + ")";
    EXPECT_EQ(FocusName(), *row.focus == '\0' ? button : row.focus);
}

INSTANTIATE_TEST_SUITE_P(
    Tabs, TabTest,
    testing::Values(TabRow{"Spells", 0, "Spells && Reagents", "ComboSpellLevel"},
                    TabRow{"UserSpells", 1, "User Spells", "ComboUserSpell(0)"},
                    TabRow{"Macros", 2, "Macros", "ComboMacro"},
                    TabRow{"Skills", 3, "Skills", "MinimumSkill(8)"},
                    TabRow{"Reagents", 4, "Reagent Management", "ComboTransfer(0)"},
                    TabRow{"SpellTexts", 5, "Spell texts", "ComboSpellText"},
                    TabRow{"About", 6, "About", ""},
                    TabRow{"Settings", 7, "Settings", "ComboUOwindow"},
                    TabRow{"Game", 8, "Game", "ListWindows"}),
    [](const auto& row) { return row.param.name; });

TEST_F(FormSettingsTest, Start_FirstTabIsOpenUnderTheCaption) {
    Open();
    EXPECT_EQ(Form().windowTitle(), QStringLiteral("Spellwick - Settings"));
    EXPECT_EQ(Form().objectName(), QStringLiteral("FormSettings"));
    EXPECT_THAT(TickedTabs(), ElementsAre(0));
    EXPECT_THAT(ShownPanels(), ElementsAre(1));
}

TEST_F(FormSettingsTest, CheckTab_PressedWhileOpen_StaysTicked) {
    Open();
    ShowTab(5);
    ShowTab(5);
    EXPECT_THAT(TickedTabs(), ElementsAre(5));
    EXPECT_THAT(ShownPanels(), ElementsAre(6));
}

TEST_F(FormSettingsTest, CheckTab_WhileUpdating_DoesNothing) {
    Open();
    m_state.Updating = true;
    Form().ClickCheckTab(3);
    EXPECT_THAT(TickedTabs(), ElementsAre(0));
    EXPECT_THAT(ShownPanels(), ElementsAre(1));
}

TEST_F(FormSettingsTest, Reopened_TheTabThatWasOpenStaysOpen) {
    Open();
    ShowTab(7);
    Click("Command1");
    Reopen();
    EXPECT_THAT(TickedTabs(), ElementsAre(7));
    EXPECT_THAT(ShownPanels(), ElementsAre(8));
}

TEST_F(FormSettingsTest, Panels_AllHaveThePlaceOfTheFirst) {
    Open();
    const QRect first = Named("TabFrame", 1).geometry();
    for (int panel = 2; panel <= kTabCount; ++panel) {
        ShowTab(panel - 1);
        EXPECT_EQ(Named("TabFrame", panel).geometry(), first) << panel;
    }
}

TEST_F(FormSettingsTest, Size_IsAtLeastTheToldOneAndFixed) {
    Open();
    EXPECT_GE(Form().width(), 8340 / 15);
    EXPECT_GE(Form().height(), 5655 / 15);
    EXPECT_EQ(Form().minimumSize(), Form().maximumSize());
}

TEST_F(FormSettingsTest, Load_TakesTheSavedPlace) {
    SetSaved("Settings", "SettingsTop", "1500");
    SetSaved("Settings", "SettingsLeft", "3007.5");
    Load();
    EXPECT_EQ(Form().pos(), QPoint(200, 100));
}

TEST_F(FormSettingsTest, Load_WithoutOrWithBadPlace_StandsAtTheCorner) {
    SetSaved("Settings", "SettingsTop", "a lot");
    Load();
    EXPECT_EQ(Form().pos(), QPoint(0, 0));
    Show();
}

TEST_F(FormSettingsTest, Load_PlaceBeyondTheNumbersOfAWindow_IsPassedOver) {
    for (const char* bad : {"1e30", "-1e30", "9e37", "1e300", "32212254720"}) {
        SCOPED_TRACE(bad);
        m_form.reset();
        m_state = SharedState{};
        SetSaved("Settings", "SettingsTop", bad);
        SetSaved("Settings", "SettingsLeft", "3000");
        SetSaved("Settings", "CurrentPlayerName", kMira);
        SetSaved(kMira, "Intelligence", "88");
        EXPECT_NO_THROW(Load());
        EXPECT_EQ(Form().pos(), QPoint(200, 0));
        EXPECT_EQ(Text("MinimumInt", 8), "88") << "the other steps run";
    }
}

TEST_F(FormSettingsTest, Load_PlaceOnNoScreen_ComesBack) {
    for (const char* far : {"60000", "2e9", "32212254000"}) {
        SCOPED_TRACE(far);
        m_form.reset();
        SetSaved("Settings", "SettingsTop", far);
        SetSaved("Settings", "SettingsLeft", "300");
        Load();
        const QRect room = Form().screen()->availableGeometry();
        EXPECT_TRUE(room.contains(QRect(Form().pos(), Form().size())));
        EXPECT_EQ(Form().x(), 20);
    }
    Show();
    Form().close();
    EXPECT_EQ(Saved("Settings", "SettingsTop"), std::to_string(Form().y() * 15));
}

TEST_F(FormSettingsTest, Reopened_ItsScreenIsGone_ComesBack) {
    Open();
    Click("Command1");
    Form().move(-5000, 100);
    Reopen();
    EXPECT_EQ(Form().pos(), QPoint(0, 100));
}

TEST_F(FormSettingsTest, Load_ClearsUpdatingAndShowsNothing) {
    Load();
    EXPECT_FALSE(m_state.Updating);
    EXPECT_FALSE(Form().isVisible());
}

TEST_F(FormSettingsTest, Load_ReadsEverySwitchWithoutArrangingTheMainWindow) {
    SetSaved("Settings", "DisplayVertical", "True");
    SetSaved("Settings", "AlwaysOnTop", "True");
    SetSaved("Settings", "Meditate", "True");
    SetSaved("Settings", "DisableCasting", "False");
    SetSaved("Settings", "ShowNecroRegs", "False");
    Load();
    EXPECT_TRUE(Named<QCheckBox>("CheckDisplayVertical").isChecked());
    EXPECT_TRUE(Named<QCheckBox>("CheckAlwaysOnTop").isChecked());
    EXPECT_TRUE(Named<QCheckBox>("CheckMeditation").isChecked());
    EXPECT_FALSE(Named<QCheckBox>("CheckCasting").isChecked());
    EXPECT_FALSE(Named<QCheckBox>("CheckShowNecroRegs").isChecked());
    EXPECT_THAT(m_log, Not(Contains("vertical")));
    EXPECT_THAT(m_log, Not(Contains("horizontal")));
    EXPECT_THAT(m_log, Each(Not(testing::HasSubstr("option"))));
}

TEST_F(FormSettingsTest, Shown_FollowsTheTopMostOption) {
    Load();
    m_state.AlwaysOnTop = true;
    Show();
    ASSERT_THAT(m_desktop.topMostCalls, Not(IsEmpty()));
    for (const auto& call : m_desktop.topMostCalls) {
        EXPECT_EQ(call,
                  (RecordingDesktop::TopMost{static_cast<WindowHandle>(Form().winId()), true}));
    }
}

// covers ODDITY(dialog-on-top)
TEST_F(FormSettingsTest, AlwaysOnTop_Oddity_TheDialogFollowsWhenItBecomesActive) {
    Open();
    m_desktop.topMostCalls.clear();
    ShowTab(7);
    Click("CheckAlwaysOnTop");
    EXPECT_TRUE(m_state.AlwaysOnTop);
    EXPECT_THAT(m_desktop.topMostCalls, IsEmpty());
    LeaveAndComeBack();
    ASSERT_THAT(m_desktop.topMostCalls, Not(IsEmpty()));
    EXPECT_TRUE(m_desktop.topMostCalls.back().topMost);
}

TEST_F(FormSettingsTest, BecomingActive_RefillsTheTabs) {
    Open();
    m_state.Spells(0).SpellText = "ha!";
    m_state.UserSpells(3) = 12;
    m_state.Spells(0).Reagents(1) = 7;
    LeaveAndComeBack();
    EXPECT_EQ(Text("TextSpell", 0), "ha!");
    EXPECT_EQ(Named<QComboBox>("ComboUserSpell", 3).currentIndex(), 12);
    EXPECT_EQ(Text("Reagent", 1), "7");
}

TEST_F(FormSettingsTest, ComingBackFromAnotherWindow_KeepsAnUnfinishedEntry) {
    Open();
    Enter("Reagent", 1, "12");
    LeaveAndComeBack();
    EXPECT_EQ(Text("Reagent", 1), "12");
    EXPECT_EQ(m_state.Spells(0).Reagents(1), 0);
    Leave();
    EXPECT_EQ(m_state.Spells(0).Reagents(1), 12);
}

// An entry that takes effect while typed is never unfinished: keeping it would overwrite newer
// data.
TEST_F(FormSettingsTest, ComingBackFromAnotherWindow_ShowsWhatHasComeSince) {
    Open();
    ShowTab(3);
    Enter("MinimumSkill", 8, "70");
    m_state.Magery = 71;
    LeaveAndComeBack();
    EXPECT_EQ(m_state.Magery, 71);
    EXPECT_EQ(Text("MinimumSkill", 8), "71");
    ShowTab(5);
    Enter("TextSpell", 0, "mine");
    m_state.Spells(0).SpellText = "yours";
    LeaveAndComeBack();
    EXPECT_EQ(m_state.Spells(0).SpellText, "yours");
    EXPECT_EQ(Text("TextSpell", 0), "yours");
}

TEST_F(FormSettingsTest, AnotherCharacterWhileOpen_IsShownAtOnceAndKeepsItsData) {
    SetSaved("Settings", "CurrentPlayerName", kMira);
    SetSaved(kMira, "MR 0", "55");
    SetSaved(kMira, "Magery", "90");
    SetSaved("Other", "MR 0", "7");
    Open();
    ShowTab(5);
    Enter("TextSpell", 0, "Mira speaks");
    ShowTab(4);
    Enter("ReagentLeft", 1, "66");
    m_state.CurrentPlayerName = "Other";
    m_companion.LoadPlayer();
    m_companion.UpdateChances();
    EXPECT_EQ(Text("ReagentLeft", 1), "7");
    EXPECT_EQ(Text("TextSpell", 0), "");
    EXPECT_EQ(Text("MinimumSkill", 8), "0");
    LeaveAndComeBack();
    Leave();
    EXPECT_EQ(m_state.ReagentStock(1, 0), 7);
    EXPECT_EQ(m_state.Spells(0).SpellText, "");
    EXPECT_EQ(m_state.Magery, 0);
}

TEST_F(FormSettingsTest, AnotherCharacterWhileOpen_WhoseStocksAreTooMany_EndsNothing) {
    SetSaved("Settings", "CurrentPlayerName", kMira);
    SetSaved("Other", "MR 0", "30000");
    SetSaved("Other", "MR 1", "30000");
    SetSaved("Other", "Intelligence", "77");
    Open();
    m_state.CurrentPlayerName = "Other";
    m_companion.LoadPlayer();
    EXPECT_NO_THROW(m_companion.UpdateChances());
    EXPECT_EQ(Text("MinimumInt", 8), "77");
}

// The dialog is built during the start, which skips steps that fail.
TEST_F(FormSettingsTest, Load_AStepThatFails_LeavesTheRestToRun) {
    const struct {
        const char* name;
        const char* key;
        const char* value;
    } rows[] = {{"stocks beyond the total", "MR 9", "32767"},
                {"left bag that is none", "LeftReagentBag", "77"},
                {"right bag that is none", "RightReagentBag", "-1"}};
    for (const auto& row : rows) {
        m_form.reset();
        m_store = MemorySettingsStore();
        m_state = SharedState{};
        SetSaved("Settings", "CurrentPlayerName", kMira);
        SetSaved(kMira, "MR 0", "5");
        SetSaved(kMira, "Intelligence", "88");
        SetSaved(kMira, row.key, row.value);
        EXPECT_NO_THROW(Load()) << row.name;
        EXPECT_EQ(Text("MinimumInt", 8), "88") << row.name;
        EXPECT_EQ(Named<QComboBox>("ComboSpellText").count(), 12) << row.name;
        EXPECT_EQ(m_state.Spells(1).Mana, m_state.Spells(0).Mana) << row.name;
    }
}

}  // namespace
}  // namespace spellwick
