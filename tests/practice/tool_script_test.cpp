#include "practice/tool_script.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace spellwick::practice {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using Outcome = ToolScript::CastOutcome;

constexpr int kWindow = 4711;
constexpr ToolMessage kRegister{0x4C8, kWindow, 0};

void PrintTo(const ToolMessage& message, std::ostream* out) {
    *out << "0x" << std::hex << message.number << std::dec << ' ' << message.wParam << ' '
         << message.lParam;
}

struct Timed {
    int at;  // ms since the start
    ToolMessage message;

    bool operator==(const Timed&) const = default;
};

void PrintTo(const Timed& timed, std::ostream* out) {
    *out << timed.at << ": ";
    PrintTo(timed.message, out);
}

class ToolScriptTest : public testing::Test {
  protected:
    // Advances the time and keeps each report with the time at which it came.
    std::vector<Timed> Pass(ToolTime time) {
        std::vector<Timed> reports;
        const ToolTime end = m_now + time;
        for (auto next = m_script.NextDue(m_now); next && *next <= end;
             next = m_script.NextDue(m_now)) {
            m_now = std::max(m_now, *next);
            for (const ToolMessage& message : m_script.TakeDue(m_now)) {
                reports.push_back({static_cast<int>(m_now.count()), message});
            }
        }
        m_now = end;
        return reports;
    }

    // Registers, and skips the reports that follow.
    void LogIn() {
        ASSERT_EQ(m_script.Answer(kRegister, m_now), 1);
        Pass(10s);
        m_start = m_now;
    }

    // The reports, with the time since LogIn.
    std::vector<Timed> PassSinceLogin(ToolTime time) {
        std::vector<Timed> reports = Pass(time);
        for (Timed& report : reports) {
            report.at -= static_cast<int>(m_start.count());
        }
        return reports;
    }

    Outcome Cast(const char* spell) { return m_script.Cast(*FindSpell(spell), m_now); }

    ToolTime m_now{0};
    ToolTime m_start{0};
    // Alternates between the lowest and the highest.
    int m_turn = 0;
    ToolScript m_script{
        [this](int lowest, int highest) { return ++m_turn % 2 == 1 ? lowest : highest; }};
};

TEST_F(ToolScriptTest, Register_Toggles) {
    EXPECT_EQ(m_script.Answer(kRegister, m_now), 1);
    EXPECT_THAT(m_script.Registered(), ElementsAre(kWindow));
    EXPECT_EQ(m_script.Answer(kRegister, m_now), 2);
    EXPECT_THAT(m_script.Registered(), IsEmpty());
    EXPECT_EQ(m_script.Answer(kRegister, m_now), 1);
}

TEST_F(ToolScriptTest, Register_SeventeenthWindow_HasNoRoom) {
    for (int window = 1; window <= 16; ++window) {
        EXPECT_EQ(m_script.Answer({0x4C8, window, 0}, m_now), 1) << window;
    }
    EXPECT_EQ(m_script.Answer({0x4C8, 17, 0}, m_now), 0);
    EXPECT_EQ(m_script.Answer({0x4C8, 5, 0}, m_now), 2) << "one goes out";
    EXPECT_EQ(m_script.Answer({0x4C8, 17, 0}, m_now), 1);
}

TEST_F(ToolScriptTest, OtherMessages_AreAnsweredWithZeroAndDoNothing) {
    LogIn();
    for (const std::uint32_t number : {0U, 1U, 0x4C7U, 0x52DU, 0xFFFFFFFFU}) {
        EXPECT_EQ(m_script.Answer({number, 1, 1}, m_now), 0) << number;
    }
    EXPECT_THAT(Pass(1s), IsEmpty());
}

TEST_F(ToolScriptTest, FirstRegistration_IsFollowedByTheCharacter) {
    EXPECT_THAT(Pass(1min), IsEmpty()) << "nothing is told before somebody is there";
    m_now = 0ms;
    ASSERT_EQ(m_script.Answer(kRegister, m_now), 1);
    const std::vector<Timed> reports = Pass(1min);
    ASSERT_EQ(reports.size(), 4U + 58U + 1U);
    EXPECT_EQ(reports[0], (Timed{0, {0x52F, 0x0001A2B3, 0}}));
    EXPECT_EQ(reports[1], (Timed{150, {0x535, 100, 100}}));
    EXPECT_EQ(reports[2], (Timed{150, {0x536, 80, 80}}));
    EXPECT_EQ(reports[3], (Timed{160, {0x531, 100, 100}}));
    std::size_t place = 4;
    for (int skill = 0; skill < 58; ++skill) {
        const Timed& report = reports[place++];
        EXPECT_EQ(report.at, 2160) << skill;
        EXPECT_EQ(report.message.number, 0x532U) << skill;
        EXPECT_EQ(report.message.wParam, skill);
        int expected = -1;
        switch (skill) {
            case 16:
            case 25:
                expected = 1000;
                break;
            case 26:
                expected = 850;
                break;
            case 32:
                expected = 700;
                break;
            case 46:
                expected = 920;
                break;
            case 49:
                expected = 800;
                break;
            case 51:
                expected = 655;
                break;
            default:
                break;
        }
        if (expected >= 0) {
            EXPECT_EQ(report.message.lParam, expected) << skill;
        } else {
            EXPECT_GE(report.message.lParam, 0) << skill;
            EXPECT_LE(report.message.lParam, 500) << skill;
        }
        if (skill == 25) {
            EXPECT_EQ(reports[place++], (Timed{2160, {0x530, 100, 0}}));
        }
    }
}

TEST_F(ToolScriptTest, SecondRegistration_IsFollowedByNothing) {
    LogIn();
    EXPECT_EQ(m_script.Answer({0x4C8, 2, 0}, m_now), 1);
    EXPECT_EQ(m_script.Answer(kRegister, m_now), 2);
    EXPECT_EQ(m_script.Answer(kRegister, m_now), 1);
    EXPECT_THAT(Pass(10s), IsEmpty());
}

TEST_F(ToolScriptTest, Restart_ForgetsTheProgramsAndKeepsTheCharacter) {
    LogIn();
    m_script.Change(0, 5, m_now);
    m_script.Restart();
    EXPECT_THAT(m_script.Registered(), IsEmpty());
    EXPECT_THAT(Pass(10s), IsEmpty());
    EXPECT_EQ(m_script.Stock(0), 85);
    EXPECT_EQ(m_script.Answer(kRegister, m_now), 1);
    EXPECT_THAT(Pass(10s), SizeIs(4 + 58 + 1)) << "the character is told anew";
}

TEST_F(ToolScriptTest, Count_ReportsEachThingInItsOrder) {
    LogIn();
    EXPECT_EQ(m_script.Answer({0x465, 0, 0}, m_now), 0);
    EXPECT_THAT(PassSinceLogin(10s),
                ElementsAre(Timed{30, {0x52D, 1, 80}}, Timed{60, {0x52D, 2, 120}},
                            Timed{90, {0x52D, 3, 60}}, Timed{120, {0x52D, 4, 60}},
                            Timed{150, {0x52D, 5, 150}}, Timed{180, {0x52D, 6, 40}},
                            Timed{210, {0x52D, 7, 90}}, Timed{240, {0x52D, 8, 75}},
                            Timed{270, {0x52D, 100, 30}}, Timed{300, {0x52D, 101, 20}},
                            Timed{330, {0x52D, 102, 40}}, Timed{360, {0x52D, 103, 15}},
                            Timed{390, {0x52D, 104, 25}}, Timed{420, {0x52D, 200, 15000}}));
}

TEST_F(ToolScriptTest, Count_TellsTheStockOfTheMomentOfEachReport) {
    LogIn();
    m_script.Answer({0x465, 0, 0}, m_now);
    PassSinceLogin(100ms);
    m_script.Change(7, -5, m_now);
    const auto reports = PassSinceLogin(10s);
    ASSERT_FALSE(reports.empty());
    EXPECT_EQ(reports[0], (Timed{100, {0x52D, 8, 70}}));
    EXPECT_THAT(reports, testing::Contains(Timed{240, {0x52D, 8, 70}}));
}

TEST_F(ToolScriptTest, SilentCount_IsAnsweredAndNotReported) {
    LogIn();
    m_script.SetSilentCount(true);
    EXPECT_EQ(m_script.Answer({0x465, 0, 0}, m_now), 0);
    EXPECT_THAT(Pass(10s), IsEmpty());
    m_script.SetSilentCount(false);
    m_script.Answer({0x465, 0, 0}, m_now);
    EXPECT_THAT(Pass(10s), SizeIs(14));
}

TEST_F(ToolScriptTest, EarlyCount_IsDueAtOnce) {
    LogIn();
    m_script.SetEarlyCount(true);
    m_script.Answer({0x465, 0, 0}, m_now);
    EXPECT_THAT(m_script.TakeDue(m_now), SizeIs(14));
}

TEST_F(ToolScriptTest, Cast_IsReportedWithManaAndReagents) {
    LogIn();
    m_script.SetIdle(false);
    EXPECT_EQ(Cast("Heal"), Outcome::kCast);
    EXPECT_THAT(PassSinceLogin(10s),
                ElementsAre(Timed{0, {0x52E, 4, 0}}, Timed{250, {0x531, 100, 96}},
                            Timed{550, {0x52D, 3, 59}}, Timed{550, {0x52D, 4, 59}},
                            Timed{550, {0x52D, 8, 74}}));
}

TEST_F(ToolScriptTest, CastOfAnAbility_TakesTithingPoints) {
    LogIn();
    m_script.SetIdle(false);
    EXPECT_EQ(Cast("Noble Sacrifice"), Outcome::kCast);
    EXPECT_THAT(PassSinceLogin(10s),
                ElementsAre(Timed{0, {0x52E, 208, 0}}, Timed{250, {0x531, 100, 80}},
                            Timed{550, {0x52D, 200, 14970}}));
}

TEST_F(ToolScriptTest, Fizzle_CostsNothingAndIsNotReported) {
    LogIn();
    m_script.SetFizzle(ToolScript::Fizzle::kBeforeTheReport);
    EXPECT_EQ(Cast("Heal"), Outcome::kFizzled);
    EXPECT_THAT(Pass(10s), IsEmpty());
    EXPECT_EQ(m_script.Mana(), 100);
    EXPECT_EQ(m_script.Stock(2), 60);
    EXPECT_EQ(Cast("Heal"), Outcome::kCast) << "only the one";
}

TEST_F(ToolScriptTest, FizzleAfterTheReport_CostsManaAlone) {
    LogIn();
    m_script.SetIdle(false);
    m_script.SetFizzle(ToolScript::Fizzle::kAfterTheReport);
    EXPECT_EQ(Cast("Heal"), Outcome::kFizzled);
    EXPECT_THAT(PassSinceLogin(10s),
                ElementsAre(Timed{0, {0x52E, 4, 0}}, Timed{250, {0x531, 100, 96}}));
    EXPECT_EQ(m_script.Stock(2), 60);
}

TEST_F(ToolScriptTest, CastThatTheGameRefuses_IsNotReported) {
    LogIn();
    m_script.SetIdle(false);
    m_script.SetMana(3, m_now);
    Pass(1s);
    EXPECT_EQ(Cast("Heal"), Outcome::kNoMana);
    m_script.SetMana(100, m_now);
    m_script.Change(2, -60, m_now);
    Pass(1s);
    EXPECT_EQ(Cast("Heal"), Outcome::kNoReagents);
    m_script.Change(kTithing, -14999, m_now);
    Pass(1s);
    EXPECT_EQ(Cast("Close Wounds"), Outcome::kNoReagents);
    EXPECT_THAT(Pass(10s), IsEmpty());
    EXPECT_EQ(Cast("Clumsy"), Outcome::kCast) << "takes none of what is missing";
}

TEST_F(ToolScriptTest, ManaComesBack_InStepsUntilItIsFull) {
    LogIn();
    Cast("Fireball");  // 9
    EXPECT_THAT(PassSinceLogin(30s),
                ElementsAre(Timed{0, {0x52E, 18, 0}}, Timed{250, {0x531, 100, 91}},
                            Timed{550, {0x52D, 2, 119}}, Timed{1000, {0x531, 100, 94}},
                            Timed{2000, {0x531, 100, 97}}, Timed{3000, {0x531, 100, 100}}));
    m_script.SetIdle(false);
    m_script.SetMana(50, m_now);
    EXPECT_THAT(Pass(1min), SizeIs(1)) << "nothing comes by itself any more";
}

TEST_F(ToolScriptTest, EveryTenMinutes_OneSkillRises) {
    ASSERT_EQ(m_script.Answer(kRegister, m_now), 1);
    Pass(599s);
    EXPECT_THAT(Pass(2s), ElementsAre(Timed{600000, {0x532, 16, 1001}}));
    EXPECT_THAT(Pass(599s), ElementsAre(Timed{1200000, {0x532, 51, 656}}));
}

TEST_F(ToolScriptTest, MageryThatRises_IsToldInBothForms) {
    LogIn();
    m_script.SetSkill(25, 1013, m_now);
    EXPECT_THAT(PassSinceLogin(1s),
                ElementsAre(Timed{0, {0x532, 25, 1013}}, Timed{0, {0x530, 101, 3}}));
}

TEST_F(ToolScriptTest, Change_IsReportedAndStopsAtZero) {
    LogIn();
    m_script.Change(1, 30, m_now);
    m_script.Change(8, -31, m_now);
    EXPECT_THAT(PassSinceLogin(1s),
                ElementsAre(Timed{0, {0x52D, 2, 150}}, Timed{0, {0x52D, 100, 0}}));
}

TEST_F(ToolScriptTest, Logout_IsSilenceForFiveSeconds) {
    LogIn();
    Cast("Fireball");
    m_script.Logout(m_now);
    EXPECT_EQ(Cast("Heal"), Outcome::kLoggedOut);
    EXPECT_THAT(PassSinceLogin(5s),
                ElementsAre(Timed{0, {0x534, 0, 0}}, Timed{5000, {0x52F, 0x0001A2B3, 0}}));
    EXPECT_EQ(Cast("Heal"), Outcome::kCast);
}

TEST_F(ToolScriptTest, LoginScreen_IsSilenceUntilACharacterEnters) {
    LogIn();
    Cast("Fireball");
    m_script.LeaveGame(m_now);
    EXPECT_THAT(PassSinceLogin(1h), ElementsAre(Timed{0, {0x534, 0, 0}}));
    EXPECT_EQ(Cast("Heal"), Outcome::kLoggedOut);
    m_script.SetIdle(false);
    m_script.EnterGame(m_now);
    EXPECT_THAT(Pass(1min), SizeIs(4 + 58 + 1)) << "the character is told anew";
    EXPECT_EQ(Cast("Heal"), Outcome::kCast);
}

TEST_F(ToolScriptTest, RegistrationAtTheLoginScreen_IsToldWhenTheCharacterEnters) {
    m_script.LeaveGame(m_now);
    Pass(1s);
    EXPECT_EQ(m_script.Answer(kRegister, m_now), 1);
    EXPECT_THAT(Pass(1min), IsEmpty());
    m_script.EnterGame(m_now);
    EXPECT_THAT(Pass(10s), SizeIs(4 + 58 + 1));
    EXPECT_EQ(m_script.Answer({0x4C8, 2, 0}, m_now), 1);
    EXPECT_THAT(Pass(10s), IsEmpty()) << "told already";
}

TEST_F(ToolScriptTest, CharacterThatEntersWithNobodyRegistered_IsToldToTheFirst) {
    m_script.EnterGame(m_now);
    EXPECT_THAT(Pass(10s), IsEmpty());
    EXPECT_EQ(m_script.Answer(kRegister, m_now), 1);
    EXPECT_THAT(Pass(10s), SizeIs(4 + 58 + 1));
}

TEST_F(ToolScriptTest, AnswersTwoThenOne_AreForOneRegistration) {
    m_script.SetAnswers(ToolScript::Answers::kTwoThenOne);
    EXPECT_EQ(m_script.Answer(kRegister, m_now), 2);
    EXPECT_THAT(m_script.Registered(), IsEmpty());
    EXPECT_EQ(m_script.Answer(kRegister, m_now), 1);
    EXPECT_THAT(m_script.Registered(), ElementsAre(kWindow));
    EXPECT_EQ(m_script.Answer(kRegister, m_now), 2) << "the script again";
    EXPECT_EQ(m_script.Answer(kRegister, m_now), 1);
}

TEST_F(ToolScriptTest, AnswersOfZeroAndTwo_LastAndRegisterNobody) {
    for (const auto& [answers, number] :
         {std::pair{ToolScript::Answers::kZero, 0}, std::pair{ToolScript::Answers::kTwo, 2}}) {
        m_script.SetAnswers(answers);
        for (int round = 0; round < 5; ++round) {
            EXPECT_EQ(m_script.Answer(kRegister, m_now), number) << round;
            EXPECT_THAT(m_script.Registered(), IsEmpty()) << number;
        }
    }
    EXPECT_THAT(Pass(10s), IsEmpty());
    m_script.SetAnswers(ToolScript::Answers::kScript);
    EXPECT_EQ(m_script.Answer(kRegister, m_now), 1);
}

}  // namespace
}  // namespace spellwick::practice
