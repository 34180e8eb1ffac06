// How the assist tool's reports change the character's line on the Skills tab.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "link/assist_dispatcher.h"
#include "link/assist_messages.h"
#include "tests/support/recording_assist_view.h"
#include "tests/support/settings_fixture.h"

namespace spellwick {
namespace {

using testing::Contains;

constexpr int kSkillsTab = 3;

// The tool's reports, connected to the dialog alone.
class DialogView : public RecordingAssistView {
  public:
    explicit DialogView(SkillsTab& skills) : m_skills(skills) {}

    void ShowMinimumSkill(const std::string& text) override { m_skills.ShowReportedSkill(text); }
    void ShowMinimumInt(const std::string& text) override { m_skills.ShowReportedInt(text); }

  private:
    SkillsTab& m_skills;
};

class ReportedSkillsTest : public SettingsFixture {
  protected:
    void Report(std::uint32_t number, i32 wParam, i32 lParam = 0) {
        DialogView view(Form().Skills());
        AssistDispatcher(m_state, view, view, *this).OnMessage({number, wParam, lParam});
    }
    void ShowGroup(int group) {
        ShowTab(kSkillsTab);
        Click("SkillType", group);
        TakeLog();
    }
};

TEST_F(ReportedSkillsTest, Magery_ShowsInTheBoxAndColoursTheTable) {
    Open();
    ShowGroup(0);
    Report(kAssistMagery, 12);
    EXPECT_EQ(Text("MinimumSkill", 8), "12");
    EXPECT_EQ(m_state.Magery, 12);
    EXPECT_EQ(Text("TextChance", 7), "0");
    EXPECT_THAT(TakeLog(), Contains("update chances"));
}

TEST_F(ReportedSkillsTest, Intelligence_ShowsInTheBox) {
    Open();
    ShowGroup(0);
    Report(kAssistStats, 88, 40);
    EXPECT_EQ(Text("MinimumInt", 8), "88");
    EXPECT_EQ(m_state.Intelligence, 88);
    EXPECT_EQ(m_state.CurrentMana, 40);
}

TEST_F(ReportedSkillsTest, HiddenDialog_TakesTheReportToo) {
    Load();
    Report(kAssistStats, 88, 40);
    Report(kAssistMagery, 77);
    EXPECT_EQ(Text("MinimumInt", 8), "88");
    EXPECT_EQ(Text("MinimumSkill", 8), "77");
    EXPECT_EQ(m_state.Magery, 77);
}

// covers ODDITY(magery-report-group)
TEST_F(ReportedSkillsTest, MageryReport_Oddity_ChangesTheSkillOfTheGroupThatIsShown) {
    struct Row {
        int group;
        i16 SharedState::*skill;
    };
    Open();
    for (const Row& row : {Row{1, &SharedState::Necro}, Row{2, &SharedState::Necro},
                           Row{3, &SharedState::Chivalry}, Row{4, &SharedState::Chivalry}}) {
        m_state.Necro = 60;
        m_state.Chivalry = 70;
        ShowGroup(row.group);
        Report(kAssistMagery, 91);
        EXPECT_EQ(m_state.Magery, 91);
        EXPECT_EQ(m_state.*row.skill, 91) << row.group;
    }
}

// covers ODDITY(report-ceiling)
TEST_F(ReportedSkillsTest, Report_Oddity_Above125IsCutDown) {
    Open();
    ShowGroup(0);
    for (int times = 0; times < 2; ++times) {
        Report(kAssistStats, 140, 90);
        EXPECT_EQ(m_state.Intelligence, 125);
        EXPECT_EQ(Text("MinimumInt", 8), "140");
        Report(kAssistMagery, 130);
        EXPECT_EQ(m_state.Magery, 125);
    }
    EXPECT_EQ(m_state.CurrentMana, 90);
}

}  // namespace
}  // namespace spellwick
