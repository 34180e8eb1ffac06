#include "link/translated_assist.h"

#include <sstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "link/assist_messages.h"
#include "link/assist_search.h"
#include "tests/support/recording_assist_transport.h"

namespace spellwick {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using namespace std::chrono_literals;

using Sent = RecordingAssistTransport::Sent;

constexpr WindowHandle kOurs = 0x2400007;
constexpr i32 kBlackPearlReport = 2;

class Receiver : public MessageReceiver {
  public:
    std::optional<i32> OnMessage(const WindowMessage& message) override {
        taken.push_back(message);
        return answer;
    }
    std::vector<WindowMessage> taken;
    std::optional<i32> answer = 0;
};

class TranslatedAssistTest : public testing::Test {
  protected:
    TranslatedAssistTest() {
        m_state.MainWindowHandle = kOurs;
        m_state.Spells.GrowTo(96);
        m_state.Intelligence = 88;
        m_search.SetReceiver(m_receiver);
        m_search.HookWindow();
    }

    // What the dispatcher gets of a report.
    std::vector<WindowMessage> Report(std::uint32_t number, i32 wParam, i32 lParam = 0) {
        m_receiver.taken.clear();
        EXPECT_EQ(m_transport.Deliver({number, wParam, lParam}), 0);
        return m_receiver.taken;
    }

    // The tool with this title alone, linked.
    void LinkWith(const std::string& title) {
        m_transport.windows = {{5, "Notes"}, {9, title}};
        m_search.FindAssist();
        ASSERT_TRUE(m_state.AssistRegistered);
    }

    void Click(i32 row) { m_payment.NoteClick(row, m_payment.PaysAtClick()); }

    SharedState m_state;
    CastPayment::Time m_now{};
    CastPayment m_payment{m_state, [this] { return m_now; }};
    RecordingAssistTransport m_transport;
    Receiver m_receiver;
    std::chrono::system_clock::time_point m_wall{std::chrono::seconds(1000)};
    TranslatedAssist m_translated{m_transport, m_state, m_payment, LoadAssistTools().rows,
                                  [this] { return m_wall; }};
    AssistSearch m_search{m_state, m_translated};
};

TEST_F(TranslatedAssistTest, PlainTool_EveryMessagePassesAsItIs) {
    LinkWith("UOAssist - Mira");
    EXPECT_FALSE(m_payment.PaysAtClick());
    for (const WindowMessage& message :
         {WindowMessage{kAssistCast, 104, 3}, WindowMessage{kAssistCast, 250, 0},
          WindowMessage{kAssistStats, 120, 99999}, WindowMessage{kAssistStock, 2, 40000},
          WindowMessage{kAssistSkill, 49, -7}, WindowMessage{0x535, 1, 2}}) {
        EXPECT_THAT(Report(message.number, message.wParam, message.lParam), ElementsAre(message));
    }
    m_receiver.answer = std::nullopt;
    EXPECT_EQ(m_transport.Deliver({0x10, 0, 0}), std::nullopt) << "not the tool's";
}

TEST_F(TranslatedAssistTest, PlainTools_TheLastOneIsTakenAndNoSwitchIsNoticed) {
    m_transport.windows = {{3, "UOAssist"}, {9, "Razor v1.9"}, {4, "UOAssist 2"}};
    m_search.FindAssist();
    EXPECT_EQ(m_search.AssistWindow(), 4U);
    m_transport.windows.pop_back();
    m_transport.sent.clear();
    m_search.FindAssist();
    EXPECT_EQ(m_search.AssistWindow(), 3U);
    EXPECT_THAT(m_transport.sent, IsEmpty());
}

TEST_F(TranslatedAssistTest, TodaysTool_IsFoundAndRegisteredWith) {
    LinkWith("Bran (Oak Hill) - Razor v1.9");
    EXPECT_THAT(m_transport.sent, ElementsAre(Sent{9, kAssistRegister, kOurs, 0}));
    EXPECT_TRUE(m_payment.PaysAtClick());
    EXPECT_EQ(m_translated.Status().tool, "Razor v1.9");
    EXPECT_EQ(m_translated.Status().since, m_wall);
    EXPECT_EQ(LinkText(m_translated.Status(), true),
              "Linked with Razor v1.9: casts, stock, mana. Casts are paid at the click until it "
              "reports one");
    EXPECT_EQ(LinkText(m_translated.Status(), false), "Linked with Razor v1.9: casts, stock, mana");
    m_transport.windows.clear();
    m_search.FindAssist();
    EXPECT_FALSE(m_state.AssistLinked);
    EXPECT_EQ(LinkText(m_translated.Status(), true), "No assist tool: casts are paid at the click");
}

TEST_F(TranslatedAssistTest, NoTool_NothingIsFound) {
    m_transport.windows = {{5, "Notes"}, {6, "razor"}};
    m_search.FindAssist();
    EXPECT_FALSE(m_state.AssistLinked);
    EXPECT_THAT(m_transport.sent, IsEmpty());
}

TEST_F(TranslatedAssistTest, SeveralTools_TheLikelierRowIsTakenAndKept) {
    m_transport.windows = {{4, "UOASSIST-TP-MSG-WND"}, {9, "Razor v1.9"}};
    m_search.FindAssist();
    EXPECT_EQ(m_search.AssistWindow(), 9U);
    // One that is likelier still does not take the place of one that works.
    m_transport.windows.push_back({2, "Razor Enhanced 1"});
    m_search.FindAssist();
    EXPECT_EQ(m_search.AssistWindow(), 9U);
}

TEST_F(TranslatedAssistTest, ToolWithATitleThatChanges_StaysLinked) {
    LinkWith("Razor v1.9");
    Click(0);
    Report(kAssistCast, 1);
    m_transport.windows = {{9, "Bran (Oak Hill) - Razor v1.9"}};
    m_transport.sent.clear();
    m_search.FindAssist();
    EXPECT_THAT(m_transport.sent, IsEmpty());
    EXPECT_FALSE(m_payment.PaysAtClick());
}

TEST_F(TranslatedAssistTest, PlainToolComes_TakesThePlaceAndTheOtherIsSignedOff) {
    LinkWith("Razor v1.9");
    m_transport.sent.clear();
    m_transport.windows.push_back({3, "UOAssist"});
    m_search.FindAssist();
    EXPECT_THAT(m_transport.sent, ElementsAre(Sent{9, kAssistRegister, kOurs, 0}))
        << "a second registration takes the first back";
    EXPECT_FALSE(m_state.AssistRegistered);
    m_transport.sent.clear();
    m_search.FindAssist();
    EXPECT_THAT(m_transport.sent, ElementsAre(Sent{3, kAssistRegister, kOurs, 0}));
    EXPECT_TRUE(m_state.AssistRegistered);
    EXPECT_FALSE(m_payment.PaysAtClick());
}

TEST_F(TranslatedAssistTest, ToolIsReplacedWithinASecond_TheNewOneIsRegisteredWith) {
    LinkWith("Razor v1.9");
    m_transport.windows = {{7, "UOASSIST-TP-MSG-WND"}};
    m_transport.sent.clear();
    m_search.FindAssist();
    EXPECT_THAT(m_transport.sent, IsEmpty()) << "the old one is gone";
    m_search.FindAssist();
    EXPECT_THAT(m_transport.sent, ElementsAre(Sent{7, kAssistRegister, kOurs, 0}));
}

TEST_F(TranslatedAssistTest, CastWithinTheCircle_BecomesTheNumberOfTheSpellThatWasClicked) {
    LinkWith("Razor v1.9");
    Report(kAssistStock, kBlackPearlReport, 10);
    Click(27);  // the fourth of its circle
    EXPECT_THAT(Report(kAssistCast, 4), ElementsAre(WindowMessage{kAssistCast, 28, 0}));
    Click(64);  // fourth of the book
    EXPECT_THAT(Report(kAssistCast, 4), ElementsAre(WindowMessage{kAssistCast, 65, 0}));
    EXPECT_THAT(Report(kAssistCast, 5), IsEmpty());
    m_now += 10s;
    EXPECT_THAT(Report(kAssistCast, 4), IsEmpty());
}

TEST_F(TranslatedAssistTest, FirstCastReport_WhoseClickHasPaid_IsNotPassedOn) {
    LinkWith("Razor Enhanced 1");
    Click(27);
    EXPECT_THAT(Report(kAssistCast, 4), IsEmpty());
    EXPECT_FALSE(m_payment.PaysAtClick());
    EXPECT_EQ(m_translated.Status().cast, m_wall);
    Click(27);
    EXPECT_THAT(Report(kAssistCast, 4), ElementsAre(WindowMessage{kAssistCast, 28, 0}));
}

TEST_F(TranslatedAssistTest, Mana_IsTakenAsTheRowSays) {
    LinkWith("Razor v1.9");
    EXPECT_THAT(Report(kAssistStats, 120, 44), ElementsAre(WindowMessage{kAssistStats, 88, 44}));
    EXPECT_EQ(m_translated.Status().mana, m_wall);
    m_transport.windows.clear();
    m_search.FindAssist();
    LinkWith("UOASSIST-TP-MSG-WND");
    EXPECT_THAT(Report(kAssistStats, 120, 44), IsEmpty());
    EXPECT_EQ(m_translated.Status().mana, std::nullopt);
}

TEST_F(TranslatedAssistTest, SkillsAndStock_PassAsTheyAre) {
    LinkWith("Razor v1.9");
    for (const WindowMessage& message :
         {WindowMessage{kAssistMagery, 100, 0}, WindowMessage{kAssistSkill, 49, 800},
          WindowMessage{kAssistStock, 5, 50}, WindowMessage{kAssistStock, 200, 70000},
          WindowMessage{kAssistThere, 1, 0}}) {
        EXPECT_THAT(Report(message.number, message.wParam, message.lParam), ElementsAre(message));
    }
    EXPECT_EQ(m_translated.Status().skill, m_wall);
    EXPECT_EQ(m_translated.Status().stock, m_wall);
}

TEST_F(TranslatedAssistTest, ValuesThatFitNowhere_AreDroppedAndEndNothing) {
    LinkWith("Razor v1.9");
    EXPECT_THAT(Report(kAssistStock, 5, 40000), IsEmpty());
    EXPECT_THAT(Report(kAssistMagery, -40000), IsEmpty());
    EXPECT_THAT(Report(kAssistStats, 100, 40000), IsEmpty());
    EXPECT_THAT(Report(kAssistSkill, 49, 400000), IsEmpty());
    EXPECT_THAT(Report(kAssistCast, 0), IsEmpty());
    EXPECT_THAT(Report(kAssistCast, -3), IsEmpty());
}

}  // namespace
}  // namespace spellwick
