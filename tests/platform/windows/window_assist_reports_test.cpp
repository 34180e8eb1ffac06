// Every report of an assist tool in another process, and its effect on the state.
#include "tests/platform/windows/window_assist_fixture.h"
#include "tests/support/assist_rows.h"

namespace spellwick {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing_support::PeerProcess;
using testing_support::ServeEvents;
using testing_support::WaitUntil;

// Every message from another process, both sent, as by the tool, and posted.
class WindowAssistReports : public WindowAssist, public testing::WithParamInterface<bool> {
  protected:
    void SetUp() override {
        WindowAssist::SetUp();
        m_tool = StartLinked();
        m_posted = GetParam();
    }
    std::vector<std::string> Report(std::uint32_t number, i32 wParam, i32 lParam) {
        return WindowAssist::Report(*m_tool, number, wParam, lParam, m_posted);
    }

    void SetTitle(const wchar_t* title) {
        SendMessageW(m_tool->Window(), WM_SETTEXT, 0, std::bit_cast<LPARAM>(title));
    }

    std::unique_ptr<PeerProcess> m_tool;
    bool m_posted = false;
};

INSTANTIATE_TEST_SUITE_P(SentAndPosted, WindowAssistReports, testing::Values(false, true),
                         [](const auto& suite) { return suite.param ? "Posted" : "Sent"; });

TEST_P(WindowAssistReports, Stock_EveryReagent_GoesToItsCell) {
    m_state.CurrentReagentBag = 4;
    i32 count = -3;
    for (const ReagentRow& row : kReagentRows) {
        SCOPED_TRACE(row.wParam);
        StockTable expected = m_state.ReagentStock;
        expected(row.reagent, 4) = static_cast<i16>(++count);
        const auto log = Report(kAssistStock, row.wParam, count);
        EXPECT_EQ(m_state.ReagentStock, expected);
        EXPECT_THAT(log, Contains("caption Count"));
        if (count != 0) {
            EXPECT_THAT(log, Contains("counter " + std::to_string(row.reagent) + ' ' +
                                      std::to_string(count)));
        }
    }
}

TEST_P(WindowAssistReports, Stock_TithesAndUnknownNumbers) {
    EXPECT_THAT(Report(kAssistStock, 200, 2000000000), Contains("tithes 2000000000"));
    EXPECT_EQ(m_state.CurrentTithing, 2000000000);
    EXPECT_THAT(Report(kAssistStock, 200, -5), Contains("tithes -5"));
    for (const i32 unknown : {0, 9, 99, 105, 199, 201, -1, 1 << 30}) {
        EXPECT_THAT(Report(kAssistStock, unknown, 77), ElementsAre("caption Count", "enable"));
    }
}

TEST_P(WindowAssistReports, Cast_EveryNumber_DebitsItsRow) {
    for (i32 number = 1; number <= 64; ++number) {
        EXPECT_THAT(Report(kAssistCast, number, 0),
                    Contains("debit " + std::to_string(number - 1)));
    }
    for (const SpellRow& row : kSpellRows) {
        EXPECT_THAT(Report(kAssistCast, row.tool, 0),
                    Contains("debit " + std::to_string(row.ours - 1)))
            << row.tool;
    }
    for (const i32 ignored : {250, 251, 1000, 0x7fffffff}) {
        EXPECT_TRUE(Report(kAssistCast, ignored, 0).empty()) << ignored;
    }
    EXPECT_TRUE(m_sink.failures.empty());
    EXPECT_THAT(Report(kAssistCast, 118, 0),
                Contains("box Unsupported Necromancer or Paladin spell number 118 has been cast."));
    EXPECT_EQ(m_sink.failures.size(), 1U);
    Report(kAssistCast, -1, 0);
    EXPECT_EQ(m_sink.failures.size(), 2U);
}

TEST_P(WindowAssistReports, MageryStatsAndSkills_GoToTheirVariables) {
    EXPECT_THAT(Report(kAssistMagery, 87, 0), Contains("skill 87"));
    EXPECT_EQ(m_state.Magery, 87);
    EXPECT_THAT(Report(kAssistStats, 110, 93), Contains("int 110"));
    EXPECT_EQ(m_state.Intelligence, 110);
    EXPECT_EQ(m_state.CurrentMana, 93);
    Report(kAssistStats, -7, -1);
    EXPECT_EQ(m_state.Intelligence, -7);
    EXPECT_EQ(m_state.CurrentMana, -1);
    Report(kAssistSkill, 0x10, 999);
    Report(kAssistSkill, 0x20, 1000);
    Report(kAssistSkill, 0x31, 755);
    Report(kAssistSkill, 0x33, -19);
    Report(kAssistSkill, 50, 600);
    EXPECT_EQ(m_state.EvalInt, 99);
    EXPECT_EQ(m_state.SpiritSpeak, 100);
    EXPECT_EQ(m_state.Necro, 75);
    EXPECT_EQ(m_state.Chivalry, -1);
}

TEST_P(WindowAssistReports, There_SearchesWhileNotLinked) {
    SetTitle(L"not yet");
    m_link.FindAssist();
    ASSERT_FALSE(m_state.AssistLinked);
    ASSERT_EQ(m_link.AssistWindow(), 0U);
    SetTitle(L"UOAssist 5.0 - Mira");
    Report(kAssistThere, 0, 0);
    EXPECT_TRUE(m_state.AssistLinked);
    EXPECT_EQ(m_link.AssistWindow(), m_tool->Handle());
}

TEST_P(WindowAssistReports, ValueThatDoesNotFit_FailsInTheGuardAndTheToolGoesOn) {
    Report(kAssistStock, 1, 40000);
    EXPECT_EQ(m_sink.failures.size(), 1U);
    EXPECT_EQ(m_state.ReagentStock(3, 0), 0);
    Report(kAssistStock, 1, 40);
    EXPECT_EQ(m_state.ReagentStock(3, 0), 40);
}

TEST_P(WindowAssistReports, Count_BringsAllReports) {
    m_tool->Ask(kSetReport, m_posted ? 1 : 0, kAssistStock);
    m_link.RequestCount();
    const auto counted = [this] {
        ServeEvents();
        return m_state.CurrentTithing == 1200;
    };
    // Sent ones arrive before the request is answered.
    EXPECT_TRUE(m_posted ? WaitUntil(counted) : m_state.CurrentTithing == 1200);
    for (const ReagentRow& row : kReagentRows) {
        EXPECT_EQ(m_state.ReagentStock(row.reagent, 0), 1000 + row.wParam);
    }
}

}  // namespace
}  // namespace spellwick
