// The waits for an assist tool's answers, without a tool and without a clock.
#include "platform/assist_silence.h"

#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace spellwick {
namespace {

using namespace std::chrono_literals;

constexpr AssistPatience kPatience;

class AssistSilences : public testing::Test {
  protected:
    void GiveUp() { m_silence.GiveUp(m_now, kPatience); }
    auto Wait() const { return m_silence.Wait(kPatience, false); }
    // How long the tool is left alone from now on.
    std::chrono::milliseconds Pause() const {
        auto pause = 0ms;
        while (!m_silence.MayAsk(m_now + pause) && pause < 10min) {
            pause += 50ms;
        }
        return pause;
    }

    AssistSilence m_silence;
    AssistSilence::Time m_now{1h};
};

TEST_F(AssistSilences, Waits_AreShortAtTheStartAndBoundedLater) {
    EXPECT_EQ(m_silence.Wait(kPatience, true), 250ms);
    EXPECT_EQ(m_silence.Wait(kPatience, false), 1000ms);
    EXPECT_TRUE(m_silence.MayAsk(m_now));
}

TEST_F(AssistSilences, Pauses_DoubleFromTwoSecondsToAMinute) {
    std::vector<std::chrono::milliseconds> pauses;
    for (int times = 0; times < 100; ++times) {
        GiveUp();
        pauses.push_back(Pause());
        EXPECT_EQ(Wait(), 250ms);
        m_now += pauses.back();
    }
    const std::vector<std::chrono::milliseconds> first(pauses.begin(), pauses.begin() + 6);
    EXPECT_THAT(first, testing::ElementsAre(2s, 4s, 8s, 16s, 32s, 60s));
    EXPECT_EQ(pauses.back(), 60s);
}

TEST_F(AssistSilences, AnswerInTime_IsBackToNormal) {
    GiveUp();
    GiveUp();
    m_silence.End();
    EXPECT_TRUE(m_silence.MayAsk(m_now));
    EXPECT_EQ(Wait(), 1000ms);
    GiveUp();
    EXPECT_EQ(Pause(), 2s);
}

TEST_F(AssistSilences, LateAnswer_BringsOneMessageAtOnceWithTheWholeTime) {
    GiveUp();
    GiveUp();
    m_silence.Stir();
    EXPECT_TRUE(m_silence.MayAsk(m_now));
    EXPECT_EQ(Wait(), 1000ms);
    EXPECT_EQ(m_silence.Wait(kPatience, true), 250ms);
}

// Otherwise it would hold the program up at every search.
TEST_F(AssistSilences, ToolThatIsAlwaysLate_IsAskedAtGrowingIntervals) {
    GiveUp();
    m_silence.Stir();
    GiveUp();
    m_silence.Stir();
    EXPECT_EQ(Pause(), 4s);
    EXPECT_EQ(Wait(), 250ms);
    m_silence.End();
    GiveUp();
    m_silence.Stir();
    EXPECT_TRUE(m_silence.MayAsk(m_now)) << "it has answered in time since";
}

TEST_F(AssistSilences, SignOfLife_WithoutASilenceChangesNothing) {
    m_silence.Stir();
    GiveUp();
    EXPECT_EQ(Pause(), 2s);
    m_silence.Stir();
    EXPECT_TRUE(m_silence.MayAsk(m_now));
}

}  // namespace
}  // namespace spellwick
