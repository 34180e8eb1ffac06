// The Skills tab: groups, what their lines show, and how changes reach the store.
#include <QLabel>
#include <QToolButton>
#include <algorithm>

#include "tests/settings_dialog/skills_tab_fixture.h"

namespace spellwick {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* kCircles[] = {"First Circle",   "Second Circle", "Third Circle",
                                    "Fourth Circle",  "Fifth Circle",  "Sixth Circle",
                                    "Seventh Circle", "Eighth Circle"};

TEST_F(SkillsTabTest, NoRow_JumpsWhenTheGroupChanges) {
    Open();
    ShowTab(3);
    const auto tops = [this] {
        std::vector<int> all;
        for (int line = 0; line <= 8; ++line) {
            all.push_back(Named("MinimumSkill", line).y());
        }
        return all;
    };
    const std::vector<int> before = tops();
    for (const int group : {1, 3, 0}) {
        Click("SkillType", group);
        QCoreApplication::processEvents();
        Form().layout()->activate();
        EXPECT_EQ(tops(), before) << group;
    }
}

TEST_F(SkillsTabTest, Captions_AreAsTold) {
    OpenTab();
    EXPECT_EQ(Text("Label1", 34), "INT required");
    EXPECT_EQ(Text("Label1", 37), "% Chance at current skill");
    EXPECT_EQ(Text("Label1", 38), "Characters current values");
    EXPECT_EQ(Text("CommandLHWS"), "Go to Lorehall website for more info");
}

// covers ODDITY(paladin-caption)
TEST_F(SkillsTabTest, Groups_Oddity_TheThirdSaysPaladinAndOpensNecromancy) {
    OpenTab();
    EXPECT_TRUE(Named<QToolButton>("SkillType", 0).isChecked());
    for (int group = 0; group < 5; ++group) {
        EXPECT_EQ(Text("SkillType", group), kGroupRows[group].caption);
        EXPECT_FALSE(Named<QToolButton>("SkillType", group).icon().isNull());
    }
    ShowGroup(2);
    EXPECT_EQ(Text("lblSkillType"), "Necromancy");
    EXPECT_EQ(Text("lblSkillCircles", 1), m_state.Spells(72).Name);
}

TEST_F(SkillsTabTest, EveryGroup_TitlesValuesAndRows) {
    OpenTab();
    for (const int group : {0, 1, 2, 3, 4, 0}) {
        Click("SkillType", group);
        const GroupRow& expected = kGroupRows[group];
        EXPECT_EQ(Form().Skills().SelectedSkillGroup(), group);
        EXPECT_EQ(Form().Skills().SelectedSkillValue(), SkillOf(group));
        EXPECT_EQ(Text("lblSkillType"), expected.title);
        EXPECT_EQ(Named("lblSkillType").palette().color(QPalette::WindowText).name().toStdString(),
                  expected.colour);
        EXPECT_EQ(Text("Label1", 35), std::string(expected.title) + " required");
        EXPECT_EQ(Text("Label1", 36), std::string(expected.title) + " for 95% success");
        EXPECT_EQ(Text("MinimumSkill", kCharacter), std::to_string(SkillOf(group)));
        EXPECT_EQ(Text("MinimumInt", kCharacter), "100");
        for (int line = 0; line < 8; ++line) {
            const int row = RowOf(group, line);
            const SpellRecord& spell = m_state.Spells(row);
            EXPECT_EQ(Text("lblSkillCircles", line + 1), group == 0 ? kCircles[line] : spell.Name);
            for (const char* name : {"MinimumInt", "MinimumSkill", "MaximumSkill", "TextChance"}) {
                EXPECT_EQ(Named(name, line).isVisible(), spell.School != 0) << name << row;
            }
            if (spell.School != 0) {
                EXPECT_EQ(Text("MinimumInt", line), std::to_string(spell.Mana));
                EXPECT_EQ(Text("MinimumSkill", line), std::to_string(spell.MinimumSkill));
                EXPECT_EQ(Text("MaximumSkill", line), std::to_string(spell.MaximumSkill));
                EXPECT_EQ(Text("TextChance", line), std::to_string(m_state.SkillChance(row)));
            }
        }
        EXPECT_FALSE(m_state.Updating);
        EXPECT_THAT(TakeLog(), IsEmpty()) << "no change handler runs";
    }
}

TEST_F(SkillsTabTest, LastPage_RowsWithoutASpellAreHiddenAndHaveNoTitle) {
    OpenTab();
    ShowGroup(4);
    for (int line = 3; line < 7; ++line) {
        ASSERT_EQ(m_state.Spells(88 + line).School, 0);
        EXPECT_FALSE(Named("MinimumInt", line).isVisible());
        EXPECT_FALSE(Named("TextChance", line).isVisible());
        EXPECT_EQ(Text("lblSkillCircles", line + 1), "");
    }
    EXPECT_TRUE(Named("MinimumInt", 0).isVisible());
    ShowGroup(0);
    EXPECT_TRUE(Named("MinimumInt", 5).isVisible());
}

TEST_F(SkillsTabTest, NoOptionOn_CountsAsTheLastGroup) {
    OpenTab();
    for (int group = 0; group < 5; ++group) {
        auto& option = Named<QToolButton>("SkillType", group);
        option.setAutoExclusive(false);
        option.setChecked(false);
        EXPECT_FALSE(option.isChecked());
    }
    EXPECT_EQ(Form().Skills().SelectedSkillGroup(), 4);
}

TEST_F(SkillsTabTest, Load_CalculatesTheChancesOnce) {
    Load();
    EXPECT_EQ(std::ranges::count(m_log, "update chances"), 1);
    Show();
}

TEST_F(SkillsTabTest, Refresh_ShowsTheOpenGroupAndTheCharacterWithoutAStore) {
    OpenTab();
    ShowGroup(3);
    m_state.Intelligence = 33;
    m_state.Chivalry = 44;
    Form().RefreshDialog();
    EXPECT_EQ(Text("MinimumInt", kCharacter), "33");
    EXPECT_EQ(Text("MinimumSkill", kCharacter), "44");
    EXPECT_EQ(Text("lblSkillType"), "Chivalry");
    EXPECT_EQ(m_state.Intelligence, 33);
    EXPECT_THAT(TakeLog(), IsEmpty());
}

TEST_F(SkillsTabTest, Colours_RedKeepsASpellFromWorkingYellowLetsItFail) {
    OpenTab();
    SpellRecord& spell = m_state.Spells(0);
    spell.Mana = 40;
    spell.MinimumSkill = 30;
    spell.MaximumSkill = 70;
    const std::string plain =
        Form().palette().color(QPalette::Active, QPalette::Base).name().toStdString();
    const struct {
        const char* name;
        i16 intelligence;
        i16 skill;
        const char* chance;
        std::string grounds[4];
    } rows[] = {
        {"all well", 40, 71, "99", {plain, plain, plain, plain}},
        {"at the upper end", 40, 70, "99", {plain, plain, plain, plain}},
        {"can fail", 40, 31, "2", {plain, plain, "#ffff00", plain}},
        {"at the lower end", 40, 30, "0", {plain, plain, "#ffff00", "#ff0000"}},
        {"no skill", 40, 29, "0", {plain, "#ff0000", "#ffff00", "#ff0000"}},
        {"no wits", 39, 71, "0", {"#ff0000", plain, plain, "#ff0000"}},
    };
    for (const auto& row : rows) {
        m_state.Intelligence = row.intelligence;
        m_state.Magery = row.skill;
        m_companion.UpdateChances();
        EXPECT_EQ(Text("TextChance", 0), row.chance) << row.name;
        int box = 0;
        for (const char* name : {"MinimumInt", "MinimumSkill", "MaximumSkill", "TextChance"}) {
            EXPECT_EQ(Ground(name, 0), row.grounds[box++]) << row.name << " " << name;
        }
    }
}

TEST_F(SkillsTabTest, Chance_ShowsTheSkillsEvenWithoutTheMana) {
    OpenTab();
    m_state.AssistLinked = true;
    m_state.CurrentMana = 0;
    m_companion.UpdateChances();
    EXPECT_EQ(m_state.Chance(0), 0);
    EXPECT_NE(m_state.SkillChance(0), 0);
    EXPECT_EQ(Text("TextChance", 0), std::to_string(m_state.SkillChance(0)));
}

TEST_F(SkillsTabTest, Edits_ReachTheStoreAsThePlayersData) {
    SetSaved("Settings", "CurrentPlayerName", kMira);
    SetSaved(kMira, "Magery", "90");
    Open();
    ShowTab(3);
    Enter("MinimumSkill", kCharacter, "77");
    Enter("MinimumInt", kCharacter, "88");
    Click("Command1");
    m_companion.SavePlayer();
    EXPECT_EQ(Saved(kMira, "Magery"), "77");
    EXPECT_EQ(Saved(kMira, "Intelligence"), "88");
}

TEST_F(SkillsTabTest, Website_OpensTheAddressOfTheStore) {
    SetSaved("Settings", "URL LHWS", "https://example.org/hall");
    OpenTab();
    Click("CommandLHWS");
    EXPECT_THAT(m_desktop.browsed, ElementsAre("https://example.org/hall"));
}

}  // namespace
}  // namespace spellwick
