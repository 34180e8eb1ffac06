#include "link/assist_search.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "link/assist_dispatcher.h"
#include "tests/support/recording_assist_transport.h"
#include "tests/support/recording_assist_view.h"

namespace spellwick {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Sent = RecordingAssistTransport::Sent;

class IgnoringSink : public FailureSink {
  public:
    void OnUncaughtFailure(const std::exception& /*failure*/,
                           std::string_view /*action*/) override {
        ++failures;
    }
    int failures = 0;
};

constexpr WindowHandle kOurWindow = 0x2400007;

class SearchForAssist : public testing::Test {
  protected:
    SearchForAssist() {
        m_state.MainWindowHandle = kOurWindow;
        m_link.SetCountButton([this](bool enabled) {
            m_enabled = enabled;
            ++m_enableCalls;
        });
        m_link.SetReceiver(m_dispatcher);
    }

    // The answers to the next registrations; 0 when there are none left.
    void Answers(std::vector<i32> answers) {
        m_answers = std::move(answers);
        m_transport.onSend = [this](const Sent&) {
            if (m_answers.empty()) {
                return 0;
            }
            const i32 answer = m_answers.front();
            m_answers.erase(m_answers.begin());
            return answer;
        };
    }

    std::pair<bool, bool> Flags() const { return {m_state.AssistLinked, m_state.AssistRegistered}; }

    std::size_t SendsOfOneSearch() {
        m_transport.sent.clear();
        m_link.FindAssist();
        return m_transport.sent.size();
    }

    SharedState m_state;
    RecordingAssistTransport m_transport;
    AssistSearch m_link{m_state, m_transport};
    RecordingAssistView m_view;
    IgnoringSink m_sink;
    AssistDispatcher m_dispatcher{m_state, m_view, m_link, m_sink};
    std::vector<i32> m_answers;
    bool m_enabled = false;
    int m_enableCalls = 0;
};

constexpr std::pair<bool, bool> kAbsent{false, false};
constexpr std::pair<bool, bool> kFound{true, false};
constexpr std::pair<bool, bool> kLinked{true, true};

TEST_F(SearchForAssist, NoWindow_AbsentAndTheButtonIsOff) {
    m_enabled = true;
    m_link.FindAssist();
    EXPECT_EQ(Flags(), kAbsent);
    EXPECT_FALSE(m_enabled);
    EXPECT_EQ(m_link.AssistWindow(), 0U);
    EXPECT_THAT(m_transport.sent, IsEmpty());
}

TEST_F(SearchForAssist, Accepted_OneSendWithOurWindowAndAZero) {
    m_transport.windows = {{9, "UOAssist"}};
    m_link.FindAssist();
    EXPECT_EQ(Flags(), kLinked);
    EXPECT_TRUE(m_enabled);
    EXPECT_EQ(m_link.AssistWindow(), 9U);
    EXPECT_THAT(m_transport.sent, ElementsAre(Sent{9, 0x4C8, kOurWindow, 0}));
}

struct AnswerRow {
    const char* name;
    std::vector<i32> answers;
    std::size_t sends;
    std::pair<bool, bool> flags;
};

TEST_F(SearchForAssist, Registration_HasOneSecondSendAtOnceAndAcceptsOnlyOne) {
    const std::vector<AnswerRow> rows{
        {"accepted at once", {1}, 1, kLinked},
        {"taken out, then in", {2, 1}, 2, kLinked},
        {"no room, then in", {0, 1}, 2, kLinked},
        {"no room twice", {0, 0}, 2, kFound},
        {"two twice", {2, 2}, 2, kFound},
        {"minus one twice", {-1, -1}, 2, kFound},
        {"large numbers", {257, 0x10001}, 2, kFound},
    };
    m_transport.windows = {{9, "UOAssist"}};
    for (const AnswerRow& row : rows) {
        SCOPED_TRACE(row.name);
        m_state.AssistRegistered = false;
        Answers(row.answers);
        EXPECT_EQ(SendsOfOneSearch(), row.sends);
        EXPECT_EQ(Flags(), row.flags);
        EXPECT_TRUE(m_enabled);
    }
}

TEST_F(SearchForAssist, StateTable_WalkThroughAllItsMoves) {
    const std::vector<RecordingAssistTransport::Window> none;
    const std::vector<RecordingAssistTransport::Window> tool{{4, "UOAssist - 1.0"}};
    struct Step {
        const char* name;
        bool there;
        std::vector<i32> answers;
        std::pair<bool, bool> flags;
        std::size_t sends;
    };
    const std::vector<Step> walk{
        {"start, nothing there", false, {}, kAbsent, 0},
        {"still nothing", false, {}, kAbsent, 0},
        {"the tool comes and refuses", true, {0, 0}, kFound, 2},
        {"it goes on refusing", true, {2, 2}, kFound, 2},
        {"it closes", false, {}, kAbsent, 0},
        {"it comes back and refuses", true, {0, 0}, kFound, 2},
        {"it accepts", true, {1}, kLinked, 1},
        {"it is never asked again", true, {}, kLinked, 0},
        {"it closes", false, {}, kAbsent, 0},
        {"it comes back and accepts", true, {1}, kLinked, 1},
        {"it stays", true, {0, 0}, kLinked, 0},
    };
    for (const Step& step : walk) {
        SCOPED_TRACE(step.name);
        m_transport.windows = step.there ? tool : none;
        Answers(step.answers);
        EXPECT_EQ(SendsOfOneSearch(), step.sends);
        EXPECT_EQ(Flags(), step.flags);
        EXPECT_EQ(m_enabled, step.there);
        EXPECT_EQ(m_link.AssistWindow(), step.there ? 4U : 0U);
    }
    EXPECT_EQ(m_enableCalls, static_cast<int>(walk.size()));
}

TEST_F(SearchForAssist, Titles_MatchByTheirFirstEightCharactersOnly) {
    const std::pair<const char*, bool> rows[] = {
        {"UOAssist", true},   {"UOAssist - Mira", true}, {"UOAssistant", true},
        {"uoassist", false},  {"UOASSIST", false},       {"UOassist", false},
        {" UOAssist", false}, {"My UOAssist", false},    {"UOAssis", false},
        {"", false},          {"UOAssi\xc5\x9ft", false}};
    for (const auto& [title, matches] : rows) {
        m_transport.windows = {{5, title}};
        m_link.FindAssist();
        EXPECT_EQ(m_state.AssistLinked, matches) << title;
    }
}

TEST_F(SearchForAssist, TwoWindows_TheLaterInTheOrderIsTalkedTo) {
    m_transport.windows = {{5, "UOAssist one"}, {6, "Other"}, {7, "UOAssist two"}, {8, "Last"}};
    m_link.FindAssist();
    EXPECT_EQ(m_link.AssistWindow(), 7U);
    EXPECT_THAT(m_transport.sent, ElementsAre(Sent{7, 0x4C8, kOurWindow, 0}));
}

TEST_F(SearchForAssist, RequestCount_AsksTheWindowFoundLast) {
    m_transport.windows = {{5, "UOAssist"}};
    m_link.FindAssist();
    m_transport.sent.clear();
    m_link.RequestCount();
    EXPECT_THAT(m_transport.sent, ElementsAre(Sent{5, 0x465, 0, 0}));
}

TEST_F(SearchForAssist, ReportBeforeTheHook_IsLost) {
    m_transport.windows = {{5, "UOAssist"}};
    m_transport.onSend = [this](const Sent&) {
        EXPECT_EQ(m_transport.Deliver({0x531, 90, 80}), std::nullopt);
        return 1;
    };
    m_link.FindAssist();
    EXPECT_EQ(m_state.CurrentMana, 0);
    m_link.HookWindow();
    EXPECT_EQ(m_transport.attachedTo, kOurWindow);
    EXPECT_EQ(m_transport.Deliver({0x531, 90, 80}), std::optional<i32>(0));
    EXPECT_EQ(m_state.CurrentMana, 80);
    m_link.UnhookWindow();
    EXPECT_EQ(m_transport.Deliver({0x531, 90, 70}), std::nullopt);
    EXPECT_EQ(m_state.CurrentMana, 80);
}

// covers ODDITY(no-unregister)
TEST_F(SearchForAssist, UnhookWindow_Oddity_SaysNothingToTheTool) {
    m_transport.windows = {{5, "UOAssist"}};
    m_link.FindAssist();
    m_link.HookWindow();
    m_transport.sent.clear();
    m_link.UnhookWindow();
    EXPECT_FALSE(m_transport.IsAttached());
    EXPECT_THAT(m_transport.sent, IsEmpty());
}

// covers ODDITY(quick-restart)
TEST_F(SearchForAssist, RestartBetweenTwoSearches_Oddity_IsNotRegisteredAgain) {
    m_transport.windows = {{5, "UOAssist"}};
    m_link.FindAssist();
    m_transport.windows = {{6, "UOAssist"}};
    EXPECT_EQ(SendsOfOneSearch(), 0U);
    EXPECT_EQ(Flags(), kLinked);
    EXPECT_EQ(m_link.AssistWindow(), 6U);
}

// covers ODDITY(wait-stays)
TEST_F(SearchForAssist, ToolClosedDuringACount_Oddity_LeavesTheCaption) {
    m_link.HookWindow();
    m_transport.windows = {{5, "UOAssist"}};
    m_link.FindAssist();
    m_transport.windows.clear();
    m_view.log.clear();
    m_link.FindAssist();
    EXPECT_FALSE(m_enabled);
    EXPECT_THAT(m_view.log, IsEmpty());
    m_transport.Deliver({0x52D, 9, 0});
    EXPECT_THAT(m_view.log, ElementsAre("caption Count", "enable"));
}

TEST_F(SearchForAssist, ReportsDuringTheRegistration_AreHandledThenAndThere) {
    m_link.HookWindow();
    m_transport.windows = {{5, "UOAssist"}};
    m_transport.onSend = [this](const Sent&) {
        EXPECT_TRUE(m_state.AssistLinked);
        EXPECT_FALSE(m_state.AssistRegistered);
        EXPECT_EQ(m_transport.Deliver({0x52F, 1, 0}), std::optional<i32>(0));
        EXPECT_EQ(m_transport.Deliver({0x532, 16, 800}), std::optional<i32>(0));
        return 1;
    };
    m_link.FindAssist();
    EXPECT_EQ(m_transport.searches, 1);
    EXPECT_EQ(m_state.EvalInt, 80);
    EXPECT_EQ(Flags(), kLinked);
}

TEST_F(SearchForAssist, ReportWhileAbsent_SearchesAndLinks) {
    m_link.HookWindow();
    m_transport.windows = {{5, "UOAssist"}};
    m_transport.Deliver({0x52F, 0, 0});
    EXPECT_EQ(Flags(), kLinked);
}

// Reports are trusted in every state.
TEST_F(SearchForAssist, Reports_InAllThreeStates_AreHandledAlike) {
    m_link.HookWindow();
    const auto mana = [this](i32 points) {
        EXPECT_EQ(m_transport.Deliver({0x531, 100, points}), std::optional<i32>(0));
        return m_state.CurrentMana;
    };
    EXPECT_EQ(mana(11), 11);
    m_transport.windows = {{5, "UOAssist"}};
    Answers({});
    m_link.FindAssist();
    ASSERT_EQ(Flags(), kFound);
    EXPECT_EQ(mana(12), 12);
    Answers({1});
    m_link.FindAssist();
    ASSERT_EQ(Flags(), kLinked);
    EXPECT_EQ(mana(13), 13);
}

}  // namespace
}  // namespace spellwick
