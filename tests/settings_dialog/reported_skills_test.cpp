// How the assist tool's reports change the character's line on the Skills tab.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "link/assist_messages.h"
#include "tests/support/main_window_fixture.h"
#include "tests/support/settings_fixture.h"

namespace spellwick {
namespace {

using testing::Contains;

constexpr int kSkillsTab = 3;

// The program with its main window and the settings dialog.
class ReportedSkillsTest : public MainWindowFixture {
  protected:
    // Makes the dialog without showing it.
    void Load() {
        StartWithMira();
        m_settings = std::make_unique<FormSettings>(
            SettingsServices{.state = m_state,
                             .store = m_store,
                             .desktop = m_desktop,
                             .boxes = m_boxes,
                             .dialogs = m_dialogs,
                             .installation = m_installation,
                             .failures = *this,
                             .companion = Program(),
                             .game = m_game,
                             .spellTable = m_spellTable,
                             .pictures = m_form->PictureStrips(),
                             .atStart = TakeInSettings(m_state, m_store)},
            nullptr);
        m_settings->Form_Load();
        TakeLog();
    }
    void Open() {
        Load();
        m_settings->show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(m_settings.get()));
    }
    void TearDown() override {
        m_settings.reset();
        MainWindowFixture::TearDown();
    }
    void Show(const Changes& changes) override {
        MainWindowFixture::Show(changes);
        if (m_settings != nullptr) {
            m_settings->Show(Shown(), changes);
        }
    }

    void Report(std::uint32_t number, i32 wParam, i32 lParam = 0) {
        EXPECT_EQ(Program().Reports().OnMessage({number, wParam, lParam}), 0);
    }
    std::string Shows(const char* name, int index) {
        return m_settings
            ->findChild<QLineEdit*>(QStringLiteral("%1(%2)").arg(QLatin1String(name)).arg(index))
            ->text()
            .toStdString();
    }
    void ClickIn(const char* name, int index) {
        auto* control = m_settings->findChild<QAbstractButton*>(
            QStringLiteral("%1(%2)").arg(QLatin1String(name)).arg(index));
        QTest::mouseClick(control, Qt::LeftButton);
    }
    void ShowGroup(int group) {
        ClickIn("CheckTab", kSkillsTab);
        ClickIn("SkillType", group);
        TakeLog();
    }

    RecordingDialogs m_dialogs;
    RecordingInstallation m_installation;
    TranslatedWindows m_translated{m_clients, {}};
    GameChoice m_game{m_state, m_translated, {}};
    SpellTableFile m_spellTable{{}, {}};
    std::unique_ptr<FormSettings> m_settings;
};

TEST_F(ReportedSkillsTest, Magery_ShowsInTheBoxAndColoursTheTable) {
    Open();
    ShowGroup(0);
    Report(kAssistMagery, 12);
    EXPECT_EQ(Shows("MinimumSkill", 8), "12");
    EXPECT_EQ(m_state.Magery, 12);
    EXPECT_EQ(Shows("TextChance", 7), "0");
    EXPECT_THAT(TakeLog(), Contains("update chance"));
}

TEST_F(ReportedSkillsTest, Intelligence_ShowsInTheBox) {
    Open();
    ShowGroup(0);
    Report(kAssistStats, 88, 40);
    EXPECT_EQ(Shows("MinimumInt", 8), "88");
    EXPECT_EQ(m_state.Intelligence, 88);
    EXPECT_EQ(m_state.CurrentMana, 40);
}

TEST_F(ReportedSkillsTest, HiddenDialog_TakesTheReportToo) {
    Load();
    Report(kAssistStats, 88, 40);
    Report(kAssistMagery, 77);
    EXPECT_EQ(Shows("MinimumInt", 8), "88");
    EXPECT_EQ(Shows("MinimumSkill", 8), "77");
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
        EXPECT_EQ(Shows("MinimumInt", 8), "140");
        Report(kAssistMagery, 130);
        EXPECT_EQ(m_state.Magery, 125);
    }
    EXPECT_EQ(m_state.CurrentMana, 90);
}

}  // namespace
}  // namespace spellwick
