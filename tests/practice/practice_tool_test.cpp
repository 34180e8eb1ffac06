// The tool as a program sees it through the socket: registrations, reports and each fault.
#include "practice/practice_tool.h"

#include <QTemporaryDir>
#include <algorithm>
#include <map>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/practice/tool_client.h"

namespace spellwick::practice {
namespace {

using namespace std::chrono_literals;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

class PracticeToolTest : public testing::Test {
  protected:
    PracticeToolTest() {
        QObject::connect(&m_tool, &PracticeTool::Happened, [this](const ToolEvent& event) {
            if (event.way == ToolEvent::Way::kNote) {
                m_notes.push_back((event.second ? "2 " : "") + event.text.toStdString());
            }
        });
    }

    void SetUp() override { ASSERT_TRUE(m_tool.Open()); }

    // A registered program that has had the reports after its registration; its lines start here.
    std::unique_ptr<ToolClient> Registered() {
        auto client = std::make_unique<ToolClient>(m_tool.Path());
        client->Write("send 1224 7 0");
        EXPECT_TRUE(client->WaitLines(3)) << "title, answer, first report";
        Pass(3s);
        EXPECT_TRUE(client->WaitLines(2 + 4 + 58 + 1));
        m_seen = client->Lines().size();
        return client;
    }

    // Advances the tool's clock and lets the tool notice.
    void Pass(ToolTime time) {
        m_now += time;
        m_tool.Obey({.kind = ToolCommand::Kind::kState});
    }

    // The next `count` new lines of a program; fails if there are more.
    std::vector<std::string> Next(ToolClient& client, std::size_t count) {
        EXPECT_TRUE(client.WaitLines(m_seen + count));
        for (int round = 0; round < 5; ++round) {
            QCoreApplication::processEvents();
        }
        const auto& lines = client.Lines();
        std::vector<std::string> next(lines.begin() + static_cast<std::ptrdiff_t>(m_seen),
                                      lines.end());
        m_seen = lines.size();
        return next;
    }

    void Play(const char* fault) { m_tool.Play(FindFault(fault)->fault); }

    QTemporaryDir m_place;
    ToolTime m_now{0};
    std::vector<std::string> m_notes;
    std::size_t m_seen = 0;
    PracticeTool m_tool{{.folder = m_place.path() + QStringLiteral("/assist"),
                         .name = QStringLiteral("practice"),
                         .clock = [this] { return m_now; },
                         .random = [](int lowest, int) { return lowest; }}};
};

TEST_F(PracticeToolTest, Greeting_IsTheTitleThatProgramsLookFor) {
    ToolClient client(m_tool.Path());
    ASSERT_TRUE(client.WaitLines(1));
    EXPECT_THAT(client.Lines(), ElementsAre("title UOAssist - Practice"));
}

TEST_F(PracticeToolTest, Registration_IsAnsweredBeforeItsReports) {
    ToolClient client(m_tool.Path());
    client.Write("send 1224 7 0");
    ASSERT_TRUE(client.WaitLines(3));
    EXPECT_THAT(client.Lines(),
                ElementsAre("title UOAssist - Practice", "result 1", "send 1327 107187 0"));
}

TEST_F(PracticeToolTest, Count_IsAnsweredBeforeItsReports) {
    const auto client = Registered();
    client->Write("send 1125 0 0");
    EXPECT_THAT(Next(*client, 1), ElementsAre("result 0"));
    Pass(60ms);
    EXPECT_THAT(Next(*client, 2), ElementsAre("send 1325 1 80", "send 1325 2 120"));
    Pass(1s);
    EXPECT_EQ(Next(*client, 12).size(), 12U);
}

TEST_F(PracticeToolTest, Cast_ReachesAllThatAreRegisteredAndNobodyElse) {
    const auto first = Registered();
    ToolClient second(m_tool.Path());
    second.Write("send 1224 8 0");
    ToolClient stranger(m_tool.Path());
    ASSERT_TRUE(second.WaitLines(2));
    ASSERT_TRUE(stranger.WaitLines(1));
    m_tool.Cast(QStringLiteral("Heal"));
    EXPECT_THAT(Next(*first, 1), ElementsAre("send 1326 4 0"));
    ASSERT_TRUE(second.WaitLines(3));
    EXPECT_THAT(second.Lines(), Contains("send 1326 4 0"));
    EXPECT_THAT(stranger.Lines(), ElementsAre("title UOAssist - Practice"));
    EXPECT_THAT(m_notes, Contains("cast Heal"));
}

TEST_F(PracticeToolTest, ProgramThatHasGone_StaysRegistered) {
    {
        const auto client = Registered();
        client->Leave();
        ASSERT_TRUE(ServeUntil([&] { return m_tool.Connections() == 0; }));
    }
    EXPECT_THAT(m_tool.Script().Registered(), ElementsAre(7));
    EXPECT_FALSE(m_tool.Reaches(7));
    m_tool.Cast(QStringLiteral("Heal"));
    Pass(2s);
    // Its next run has the same window, so it is removed and then added again.
    ToolClient client(m_tool.Path());
    client.Write("send 1224 7 0");
    client.Write("send 1224 7 0");
    ASSERT_TRUE(client.WaitLines(3));
    EXPECT_THAT(client.Lines(), ElementsAre("title UOAssist - Practice", "result 2", "result 1"));
    EXPECT_TRUE(m_tool.Reaches(7));
}

TEST_F(PracticeToolTest, NameThatIsNoSpell_IsPassedOver) {
    m_notes.clear();
    m_tool.Cast(QStringLiteral("Meditation"));
    EXPECT_THAT(m_notes, IsEmpty());
}

TEST_F(PracticeToolTest, JournalOfTheGame_IsCastsAndWhoIsInTheGame) {
    const auto client = Registered();
    for (const char* line : {"key Alt+4", "say cast Heal", "title ()", "cast", "key F12"}) {
        m_tool.Watch(QLatin1String(line));
    }
    m_tool.Watch(QStringLiteral("cast Heal"));
    EXPECT_THAT(Next(*client, 1), ElementsAre("send 1326 4 0"));
    m_tool.Watch(QStringLiteral("title Ultima Online"));
    EXPECT_THAT(Next(*client, 1), ElementsAre("send 1332 0 0"));
    m_tool.Watch(QStringLiteral("title Ultima Online - Bran Oakley (Atlantic)"));
    EXPECT_THAT(Next(*client, 1), ElementsAre("send 1327 107187 0"));
}

TEST_F(PracticeToolTest, Quiet_IsReachedWhenAllIsSentAndAnswered) {
    const auto client = Registered();
    for (int answer = 0; answer < 4 + 58 + 1; ++answer) {
        client->Write("result 0");
    }
    EXPECT_TRUE(ServeUntil([&] { return m_tool.Quiet(); }));
    m_tool.Script().SetIdle(false);
    m_tool.Cast(QStringLiteral("Heal"));
    EXPECT_FALSE(m_tool.Quiet());
    Pass(1s);
    for (int answer = 0; answer < 5; ++answer) {
        EXPECT_FALSE(m_tool.Quiet());
        client->Write("result 0");
        const std::size_t left = static_cast<std::size_t>(4 - answer);
        EXPECT_TRUE(ServeUntil([&] { return m_tool.Quiet() == (left == 0); }));
    }
    EXPECT_TRUE(ServeUntil([&] { return m_tool.Quiet(); }));
}

TEST_F(PracticeToolTest, FaultsThatReportOnce_SendTheirLines) {
    struct Row {
        const char* fault;
        std::vector<std::string> lines;
    };
    const auto client = Registered();
    for (const Row& row : {
             Row{"unknown-items",
                 {"send 1325 9 5", "send 1325 99 5", "send 1325 105 5", "send 1325 201 5"}},
             Row{"same-twice", {"send 1325 1 80", "send 1325 1 80"}},
             Row{"tithing-40000", {"send 1325 200 40000"}},
             Row{"cast-0", {"send 1326 0 0"}},
             Row{"cast-118", {"send 1326 118 0"}},
             Row{"cast-211", {"send 1326 211 0"}},
             Row{"cast-250", {"send 1326 250 0"}},
             Row{"big-stock", {"send 1325 1 40000"}},
             Row{"big-magery", {"send 1328 40000 0"}},
             Row{"big-intelligence", {"send 1329 40000 100"}},
             Row{"big-mana", {"send 1329 100 40000"}},
             Row{"big-skill", {"send 1330 16 400000"}},
         }) {
        Play(row.fault);
        EXPECT_EQ(Next(*client, row.lines.size()), row.lines) << row.fault;
    }
}

TEST_F(PracticeToolTest, Burst_IsTwoHundredReportsThatEndAsThingsAre) {
    const auto client = Registered();
    Play("burst");
    const std::vector<std::string> lines = Next(*client, 200);
    ASSERT_EQ(lines.size(), 200U);
    std::map<std::string, std::string> last;
    std::map<std::string, int> kinds;
    for (const std::string& line : lines) {
        ++kinds[line.substr(0, 9)];
        const std::size_t blank = line.rfind(' ');
        last[line.substr(0, blank)] = line.substr(blank + 1);
    }
    EXPECT_EQ(kinds.size(), 4U) << "mixed";
    for (const StockItem& item : kStockItems) {
        EXPECT_EQ(last["send 1325 " + std::to_string(item.number)], std::to_string(item.atStart))
            << item.name;
    }
    EXPECT_EQ(last["send 1329 100"], "100");
}

TEST_F(PracticeToolTest, Stream_GoesOnForSixHundredReports_Long) {
    const auto client = Registered();
    Play("stream");
    EXPECT_TRUE(ServeUntil([&] { return !m_notes.empty() && m_notes.back() == "streamed"; }));
    EXPECT_EQ(Next(*client, 600).size(), 600U);
}

TEST_F(PracticeToolTest, AnswerFaults_AnswerAsTheySay) {
    struct Row {
        const char* fault;
        const char* first;
        const char* second;
    };
    for (const Row& row :
         {Row{"answers-2-1", "result 2", "result 1"}, Row{"answers-0", "result 0", "result 0"},
          Row{"answers-2", "result 2", "result 2"}}) {
        m_tool.Close();
        m_tool.Open();
        Play(row.fault);
        ToolClient client(m_tool.Path());
        client.Write("send 1224 7 0");
        client.Write("send 1224 7 0");
        ASSERT_TRUE(client.WaitLines(3));
        EXPECT_EQ(client.Lines()[1], row.first) << row.fault;
        EXPECT_EQ(client.Lines()[2], row.second) << row.fault;
        m_tool.MendAll();
    }
}

TEST_F(PracticeToolTest, OneAnswerFault_TakesTheOthersPlace) {
    Play("answers-0");
    Play("answers-2");
    EXPECT_FALSE(m_tool.Lasts(Fault::kAnswersZero));
    EXPECT_TRUE(m_tool.Lasts(Fault::kAnswersTwo));
    m_tool.Mend(Fault::kAnswersTwo);
    ToolClient client(m_tool.Path());
    client.Write("send 1224 7 0");
    ASSERT_TRUE(client.WaitLines(2));
    EXPECT_EQ(client.Lines()[1], "result 1");
}

TEST_F(PracticeToolTest, ToolThatIsGone_ComesBackAndKnowsNobody_Long) {
    const auto client = Registered();
    QElapsedTimer time;
    time.start();
    Play("gone-500");
    EXPECT_FALSE(m_tool.IsOpen());
    EXPECT_TRUE(client->WaitGone());
    EXPECT_TRUE(ServeUntil([&] { return m_tool.IsOpen(); }));
    EXPECT_GE(time.elapsed(), 495);
    EXPECT_THAT(m_tool.Script().Registered(), IsEmpty());

    time.start();
    Play("gone-3000");
    EXPECT_TRUE(ServeUntil([&] { return m_tool.IsOpen(); }));
    EXPECT_GE(time.elapsed(), 2980);
}

TEST_F(PracticeToolTest, CloseWhileGone_StaysClosed) {
    Play("gone-500");
    m_tool.Close();
    QElapsedTimer time;
    time.start();
    ServeUntil([&] { return time.elapsed() > 700; });
    EXPECT_FALSE(m_tool.IsOpen());
}

TEST_F(PracticeToolTest, LowerCaseTitle_IsTheGreetingUntilItIsMended) {
    const auto client = Registered();
    Play("lower-case-title");
    EXPECT_TRUE(client->WaitGone()) << "the title is read at the start of a connection";
    ToolClient second(m_tool.Path());
    ASSERT_TRUE(second.WaitLines(1));
    EXPECT_EQ(second.Lines()[0], "title uoassist - practice");
    m_tool.MendAll();
    ToolClient third(m_tool.Path());
    ASSERT_TRUE(third.WaitLines(1));
    EXPECT_EQ(third.Lines()[0], "title UOAssist - Practice");
}

TEST_F(PracticeToolTest, SecondTool_IsBehindTheFirstAndHasASocketOfItsOwn) {
    m_tool.Obey({.kind = ToolCommand::Kind::kGain, .which = 0, .amount = 7});
    Play("second-tool");
    const QStringList sockets = QDir(m_place.path() + QStringLiteral("/assist"))
                                    .entryList({QStringLiteral("*.sock")}, QDir::System);
    ASSERT_EQ(sockets,
              (QStringList{QStringLiteral("practice.sock"), QStringLiteral("practice2.sock")}));
    ToolClient client(m_place.path() + QStringLiteral("/assist/practice2.sock"));
    client.Write("send 1224 7 0");
    ASSERT_TRUE(client.WaitLines(2));
    EXPECT_EQ(client.Lines()[1], "result 1");
    EXPECT_THAT(m_tool.Script().Registered(), IsEmpty());
    m_tool.Obey({.kind = ToolCommand::Kind::kGain, .which = 0, .amount = 1});
    EXPECT_TRUE(ServeUntil([&] {
        const auto& lines = client.Lines();
        return std::ranges::find(lines, "send 1325 1 88") != lines.end();
    })) << "both know the one character";
    m_tool.MendAll();
    EXPECT_TRUE(client.WaitGone());
    EXPECT_TRUE(m_tool.IsOpen());
}

TEST_F(PracticeToolTest, SilentCount_IsAnsweredAlone) {
    const auto client = Registered();
    Play("silent-count");
    client->Write("send 1125 0 0");
    EXPECT_THAT(Next(*client, 1), ElementsAre("result 0"));
    Pass(10s);
    EXPECT_THAT(Next(*client, 0), IsEmpty());
}

TEST_F(PracticeToolTest, MuteTool_AnswersNothingUntilItIsMended) {
    const auto client = Registered();
    Play("mute");
    client->Write("send 1125 0 0");
    client->Write("send 1224 7 0");
    Pass(10s);
    Play("same-twice");
    EXPECT_EQ(Next(*client, 2), (std::vector<std::string>{"send 1325 1 80", "send 1325 1 80"}));
    m_tool.MendAll();
    client->Write("send 1125 0 0");
    EXPECT_EQ(Next(*client, 1), std::vector<std::string>{"result 0"});
}

TEST_F(PracticeToolTest, EarlyCount_IsReportedBeforeTheAnswer) {
    const auto client = Registered();
    Play("early-count");
    client->Write("send 1125 0 0");
    const std::vector<std::string> lines = Next(*client, 15);
    ASSERT_EQ(lines.size(), 15U);
    EXPECT_EQ(lines.front(), "send 1325 1 80");
    EXPECT_EQ(lines.back(), "result 0");
}

TEST_F(PracticeToolTest, FizzleAfterTheReport_IsReported) {
    const auto client = Registered();
    Play("fizzle-reported");
    m_tool.Cast(QStringLiteral("Heal"));
    EXPECT_THAT(Next(*client, 1), ElementsAre("send 1326 4 0"));
    EXPECT_THAT(m_notes, Contains("fizzled Heal"));
}

TEST_F(PracticeToolTest, EveryFault_CanBePlayedWithNobodyThere) {
    for (const FaultRow& row : AllFaults()) {
        m_tool.Play(row.fault);
        EXPECT_EQ(m_tool.Lasts(row.fault), row.lasts) << row.name;
    }
    m_tool.MendAll();
    for (const FaultRow& row : AllFaults()) {
        EXPECT_FALSE(m_tool.Lasts(row.fault)) << row.name;
    }
}

}  // namespace
}  // namespace spellwick::practice
