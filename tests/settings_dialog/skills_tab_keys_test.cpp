// Focus, keys and arrows of the edits on the Skills tab.
#include <algorithm>

#include "tests/settings_dialog/skills_tab_fixture.h"

namespace spellwick {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

TEST_F(SkillsTabTest, WhileUpdating_NoChangeIsTaken) {
    OpenTab();
    m_state.Updating = true;
    Named<QLineEdit>("MinimumInt", kCharacter).setText(QStringLiteral("11"));
    Named<QLineEdit>("MinimumInt", 0).setText(QStringLiteral("11"));
    Named<QLineEdit>("MinimumSkill", kCharacter).setText(QStringLiteral("11"));
    Named<QLineEdit>("MinimumSkill", 0).setText(QStringLiteral("11"));
    Named<QLineEdit>("MaximumSkill", 0).setText(QStringLiteral("11"));
    m_state.Updating = false;
    EXPECT_EQ(m_state.Intelligence, 100);
    EXPECT_EQ(m_state.Magery, 50);
    EXPECT_NE(m_state.Spells(0).Mana, 11);
    EXPECT_NE(m_state.Spells(0).MinimumSkill, 11);
    EXPECT_NE(m_state.Spells(0).MaximumSkill, 11);
    EXPECT_THAT(TakeLog(), IsEmpty());
}

// Whether the main window is asked before or after the dialog shows the new value.
TEST_F(SkillsTabTest, LostFocus_OrderOfTheRefreshes) {
    OpenTab();
    std::vector<std::string> shown;
    m_companion.updateChance = [&] { shown.push_back(Text("TextChance", 0)); };
    const auto leave = [&](const char* box, int line) {
        m_state.SkillChance(0) = 10;
        Form().UpdateChance();
        Click(box, line);
        m_state.SkillChance(0) = 55;
        shown.clear();
        Leave();
        return shown;
    };
    EXPECT_THAT(leave("MinimumInt", 2), ElementsAre("10"));
    EXPECT_THAT(leave("MinimumInt", kCharacter), ElementsAre("10"));
    EXPECT_THAT(leave("MinimumSkill", 2), ElementsAre("55"));
    EXPECT_THAT(leave("MinimumSkill", kCharacter), ElementsAre("55"));
    EXPECT_THAT(leave("MaximumSkill", 2), IsEmpty());
    EXPECT_EQ(Text("TextChance", 0), "55");
}

TEST_F(SkillsTabTest, MinimumSkill_LostFocus_StoresNothing) {
    OpenTab();
    Click("MinimumSkill", 0);
    SetAll(&SpellRecord::MinimumSkill, 3);
    m_state.Magery = 44;
    Leave();
    EXPECT_THAT(RowsWith(&SpellRecord::MinimumSkill, 3), SizeIs(96));
    Click("MinimumSkill", kCharacter);
    m_state.Magery = 45;
    Leave();
    EXPECT_EQ(m_state.Magery, 45);
}

TEST_F(SkillsTabTest, Boxes_GotFocus_SelectTheWholeText) {
    OpenTab();
    for (const char* name : {"MinimumInt(0)", "MinimumInt(8)", "MinimumSkill(0)", "MinimumSkill(8)",
                             "MaximumSkill(7)"}) {
        auto& box = Named<QLineEdit>(QLatin1String(name));
        Click(box);
        EXPECT_EQ(box.selectedText(), box.text()) << name;
        EXPECT_FALSE(box.text().isEmpty()) << name;
    }
}

TEST_F(SkillsTabTest, TextChance_GivesTheFocusToOk) {
    OpenTab();
    for (int line = 0; line < 8; ++line) {
        const std::string before = Text("TextChance", line);
        Click("TextChance", line);
        EXPECT_EQ(FocusName(), "Command1");
        Type("5");
        EXPECT_EQ(Text("TextChance", line), before);
    }
}

TEST_F(SkillsTabTest, KeyFilter_DropsAllButDigitsAndSignsWithABeep) {
    OpenTab();
    for (const char* name : {"MinimumInt", "MinimumSkill"}) {
        for (const int line : {0, kCharacter}) {
            m_desktop.beeps = 0;
            Enter(name, line, "1a.b-+ 3");
            EXPECT_EQ(Text(name, line), "1-+3");
            EXPECT_EQ(m_desktop.beeps, 4);
            Press(Qt::Key_Backspace);
            EXPECT_EQ(Text(name, line), "1-+");
            EXPECT_EQ(m_desktop.beeps, 4);
        }
    }
}

TEST_F(SkillsTabTest, Spins_StepTheirBoxWithinTheirRange) {
    OpenTab();
    const struct {
        const char* box;
        UpDown* spin;
        int most;
        i16 SharedState::*cell;
    } rows[] = {
        {"MinimumInt", Form().Skills().UpDownInt, 150, &SharedState::Intelligence},
        {"MinimumSkill", Form().Skills().UpDownSkill, 120, &SharedState::Magery},
    };
    for (const auto& row : rows) {
        auto& box = Named<QLineEdit>(row.box, kCharacter);
        Paste(box, QStringLiteral("1"));
        row.spin->Step(-1);
        row.spin->Step(-1);
        EXPECT_EQ(box.text(), QStringLiteral("0"));
        EXPECT_EQ(m_state.*row.cell, 0);
        row.spin->Step(1);
        EXPECT_EQ(m_state.*row.cell, 1);
        Paste(box, QString::number(row.most - 1));
        row.spin->Step(1);
        row.spin->Step(1);
        EXPECT_EQ(box.text(), QString::number(row.most));
        EXPECT_EQ(m_state.*row.cell, std::min(row.most, 125));
    }
}

TEST_F(SkillsTabTest, Spin_OfTheIntelligence_ShowsMoreThanCounts) {
    OpenTab();
    Paste(Named<QLineEdit>("MinimumInt", kCharacter), QStringLiteral("125"));
    Form().Skills().UpDownInt->Step(1);
    EXPECT_EQ(Text("MinimumInt", kCharacter), "126");
    EXPECT_EQ(m_state.Intelligence, 125);
}

TEST_F(SkillsTabTest, Spin_ByMouseAndByArrowKeys) {
    OpenTab();
    QWidget& spin = *Form().Skills().UpDownSkill;
    ClickSpot(spin, {spin.width() / 2, 2});
    EXPECT_EQ(m_state.Magery, 51);
    ClickSpot(spin, {spin.width() / 2, spin.height() - 2});
    EXPECT_EQ(m_state.Magery, 50);
    Click("MinimumSkill", kCharacter);
    Press(Qt::Key_Up);
    EXPECT_EQ(m_state.Magery, 51);
    Press(Qt::Key_Down);
    EXPECT_EQ(m_state.Magery, 50);
    EXPECT_THAT(TakeLog(), Each(std::string("update chances")));
}

TEST_F(SkillsTabTest, GroupChange_AnUnfinishedEntryCountsForTheOldGroup) {
    OpenTab();
    Enter("MinimumSkill", kCharacter, "33");
    Click("SkillType", 3);
    EXPECT_EQ(m_state.Magery, 33);
    EXPECT_EQ(m_state.Chivalry, 70);
    EXPECT_EQ(Text("MinimumSkill", kCharacter), "70");
}

}  // namespace
}  // namespace spellwick
