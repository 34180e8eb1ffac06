// Real window messages between this program and windows titled as those of today's assist tools.
#include <sstream>

#include "link/translated_assist.h"
#include "tests/platform/windows/window_assist_fixture.h"

namespace spellwick {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

struct ToolRow {
    const char* name;
    const wchar_t* title;
    bool believesMana;
};

class TodaysWindows : public WindowAssist, public testing::WithParamInterface<ToolRow> {
  protected:
    CastPayment m_payment{m_state};
    TranslatedAssist m_translated{m_transport, m_state, m_payment, LoadAssistTools().rows,
                                  [] { return std::chrono::system_clock::now(); }};
    AssistSearch m_search{m_state, m_translated};
    AssistDispatcher m_reports{m_state, m_view, m_search, m_sink};
};

TEST_P(TodaysWindows, AreRegisteredWithAndUnderstood) {
    constexpr i32 kHeal = 3;
    constexpr i32 kPlace = 4;  // of Heal in its circle
    m_state.Intelligence = 88;
    const auto tool = Start(GetParam().title);
    m_search.FindAssist();
    m_search.SetReceiver(m_reports);
    m_search.HookWindow();
    ASSERT_EQ(Flags(), std::pair(true, true));
    EXPECT_EQ(m_search.AssistWindow(), tool->Handle());

    // The click pays until the tool has reported a cast, and that one is not paid twice.
    EXPECT_TRUE(m_payment.PaysAtClick());
    m_payment.NoteClick(kHeal, true);
    EXPECT_THAT(Report(*tool, kAssistCast, kPlace, 0, true), IsEmpty());
    EXPECT_FALSE(m_payment.PaysAtClick());
    m_payment.NoteClick(kHeal, false);
    EXPECT_THAT(Report(*tool, kAssistCast, kPlace, 0, false), ElementsAre("debit 3", "timer 3"));
    EXPECT_THAT(Report(*tool, kAssistCast, kPlace + 1, 0, true), IsEmpty());

    const std::vector<std::string> mana = Report(*tool, kAssistStats, 120, 40, true);
    if (GetParam().believesMana) {
        EXPECT_THAT(mana, Contains("int 88"));
        EXPECT_EQ(m_state.CurrentMana, 40);
    } else {
        EXPECT_THAT(mana, IsEmpty());
    }
    EXPECT_THAT(m_sink.failures, IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    Tools, TodaysWindows,
    testing::Values(ToolRow{"Razor", L"Bran (Oak Hill) - Razor v1.10.4.2", true},
                    ToolRow{"RazorOutsideTheGame", L"Razor v1.10.4.2", true},
                    ToolRow{"RazorEnhanced", L"Bran (Oak Hill) - Razor Enhanced 0.8.2", true},
                    ToolRow{"HiddenWindow", L"UOASSIST-TP-MSG-WND", false}),
    [](const auto& row) { return row.param.name; });

}  // namespace
}  // namespace spellwick
