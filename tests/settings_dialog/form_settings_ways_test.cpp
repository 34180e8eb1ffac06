// Where a hint leads in the settings dialog.
#include "tests/settings_dialog/form_settings_fixture.h"

namespace spellwick {
namespace {

using testing::ElementsAre;

struct WayRow {
    const char* name;
    Target target;
    int tab;
    const char* focus;
};

class WayTest : public FormSettingsTest, public testing::WithParamInterface<WayRow> {
  protected:
    static bool IsWhollyInSight(const QWidget& control) {
        return control.visibleRegion().boundingRect() == control.rect();
    }
};

TEST_P(WayTest, GoTo_BeforeTheDialogIsShown_OpensTheTabWithTheFocusOnTheControl) {
    const WayRow& row = GetParam();
    Load();
    Form().GoTo(row.target);
    Show();
    EXPECT_THAT(TickedTabs(), ElementsAre(row.tab));
    EXPECT_EQ(FocusName(), row.focus);
    EXPECT_TRUE(QTest::qWaitFor([&] { return IsWhollyInSight(Named(row.focus)); }, 2000));
}

TEST_P(WayTest, GoTo_WhileTheDialogIsShown_DoesTheSame) {
    const WayRow& row = GetParam();
    Open();
    ShowTab(4);
    Form().GoTo(row.target);
    EXPECT_THAT(TickedTabs(), ElementsAre(row.tab));
    EXPECT_EQ(FocusName(), row.focus);
}

INSTANTIATE_TEST_SUITE_P(
    Ways, WayTest,
    testing::Values(WayRow{"Game", {Way::kGame}, 8, "ListWindows"},
                    WayRow{"Magery", {Way::kSkill, 17}, 3, "MinimumSkill(8)"},
                    WayRow{"Intelligence", {Way::kIntelligence, 17}, 3, "MinimumInt(8)"},
                    WayRow{"Spellbook", {Way::kSpellbook, 66}, 0, "CheckBook(2)"},
                    WayRow{"SpellBeyondThePages", {Way::kSpellbook, 96}, 0, "CheckBook(7)"},
                    WayRow{"NecroReagents", {Way::kNecroReagents, 66}, 7, "CheckShowNecroRegs"}),
    [](const auto& row) { return row.param.name; });

TEST_F(FormSettingsTest, GoToASkill_ShowsTheSkillOfTheSpellsSchool) {
    Open();
    const auto title = [&](int row) {
        Form().GoTo({Way::kSkill, row});
        return Text("lblSkillType");
    };
    EXPECT_EQ(title(70), "Necromancy");
    EXPECT_TRUE(Form().Skills().SkillType[1]->isChecked());
    EXPECT_EQ(title(82), "Chivalry");
    EXPECT_TRUE(Form().Skills().SkillType[3]->isChecked());
    EXPECT_EQ(title(95), "Necromancy") << "Exorcism stands among the Paladin's";
    EXPECT_EQ(title(20), "Magery");
    EXPECT_TRUE(Form().Skills().SkillType[0]->isChecked());
}

TEST_F(FormSettingsTest, GoToTheSpellbook_ShowsTheSpellsPage) {
    Open();
    Form().GoTo({Way::kSpellbook, 19});
    EXPECT_EQ(Form().Spells().ComboSpellLevel->currentIndex(), 2);
    EXPECT_EQ(Text("LabelSpell", 3), m_state.Spells(19).Name);
}

TEST_F(FormSettingsTest, GoToAControlOfTheMainWindow_ChangesNothing) {
    Open();
    ShowTab(5);
    for (const Way way : {Way::kNone, Way::kCounters, Way::kTithingPoints}) {
        Form().GoTo({way, 3});
        EXPECT_THAT(TickedTabs(), ElementsAre(5));
    }
}

TEST_F(FormSettingsTest, GoToOverARefusedEntry_TheEntryKeepsTheFocus) {
    Open();
    ShowTab(2);
    Enter("TextMacro", 0, "oops");
    TakeBoxes();
    Form().GoTo({Way::kGame});
    EXPECT_EQ(TakeBoxes().size(), 1U);
    EXPECT_THAT(TickedTabs(), ElementsAre(2));
    EXPECT_EQ(FocusName(), "TextMacro(0)");
    Form().Macros().DropRefusedKeys();
}

}  // namespace
}  // namespace spellwick
