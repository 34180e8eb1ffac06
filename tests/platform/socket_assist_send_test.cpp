// Messages to an assist tool, and what happens until they are answered.
#include <atomic>
#include <thread>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/platform/socket_assist_fixture.h"

namespace spellwick {
namespace {

using namespace std::chrono_literals;
using std::chrono::steady_clock;
using testing::ElementsAre;
using testing_support::ToolSocket;

// On a busy machine too, and far below the waits of the test that uses it.
constexpr auto kAtOnce = 6s;

TEST_F(SocketAssist, Send_ReachesTheToolAndBringsItsAnswer) {
    ToolSocket tool(m_folder, "a.sock");
    Greet(tool);
    std::thread answering([&] {
        EXPECT_EQ(WithoutAddress(tool.ReadLine()), "send 1224 37748743");
        tool.Write("result 1\n");
    });
    EXPECT_EQ(Send(0x4C8, 37748743), 1);
    answering.join();
}

TEST_F(SocketAssist, Send_ToAWindowThatIsGone_IsZero) {
    EXPECT_EQ(m_transport.SendToWindow(99, 0x465, 0, i32{0}), 0);
}

TEST_F(SocketAssist, Send_ReportsBeforeTheAnswerAreHandledThenAndThere) {
    ToolSocket tool(m_folder, "a.sock");
    Greet(tool);
    m_transport.Attach(kOwnWindow, m_receiver);
    std::thread answering([&] {
        tool.ReadLine();
        tool.Write("send 1325 1 80\n");
        EXPECT_EQ(tool.ReadLine(), "result 7");
        tool.Write("send 1325 2 120\nresult 5\nsend 1325 3 9\n");
        EXPECT_EQ(tool.ReadLine(), "result 7");
        EXPECT_EQ(tool.ReadLine(), "result 7");
    });
    EXPECT_EQ(Send(0x465), 5);
    EXPECT_THAT(m_receiver.messages,
                ElementsAre(WindowMessage{1325, 1, 80}, WindowMessage{1325, 2, 120}));
    EXPECT_TRUE(ServeUntil([&] { return m_receiver.messages.size() == 3; }));
    answering.join();
}

TEST_F(SocketAssist, Send_ServesOtherToolsMeanwhile) {
    ToolSocket other(m_folder, "a.sock");
    Greet(other);
    ToolSocket tool(m_folder, "b.sock");
    Greet(tool);
    m_transport.Attach(kOwnWindow, m_receiver);
    std::thread answering([&] {
        tool.ReadLine();
        other.Write("send 1330 16 1000\n");
        EXPECT_EQ(other.ReadLine(), "result 7");
        tool.Write("result 1\n");
    });
    EXPECT_EQ(Send(0x4C8), 1);
    answering.join();
    EXPECT_THAT(m_receiver.messages, ElementsAre(WindowMessage{1330, 16, 1000}));
}

TEST_F(SocketAssist, SendInsideAReportInsideASend_InnermostIsAnsweredFirst) {
    ToolSocket tool(m_folder, "a.sock");
    Greet(tool);
    m_transport.Attach(kOwnWindow, m_receiver);
    i32 inner = 0;
    m_receiver.during = [&](const WindowMessage&) { inner = Send(0x4C8); };
    std::thread answering([&] {
        EXPECT_EQ(WithoutAddress(tool.ReadLine()), "send 1125 0");
        tool.Write("send 1327 0 0\n");
        EXPECT_EQ(WithoutAddress(tool.ReadLine()), "send 1224 0");
        tool.Write("result 1\n");
        EXPECT_EQ(tool.ReadLine(), "result 7");
        tool.Write("result 3\n");
    });
    EXPECT_EQ(Send(0x465), 3);
    EXPECT_EQ(inner, 1);
    answering.join();
}

TEST_F(SocketAssist, Send_ToolThatGoesAway_IsZeroAtOnce) {
    ToolSocket tool(m_folder, "a.sock");
    Greet(tool);
    std::thread leaving([&] {
        tool.ReadLine();
        tool.CloseConnection();
    });
    const auto start = steady_clock::now();
    EXPECT_EQ(Send(0x465), 0);
    EXPECT_LT(steady_clock::now() - start, kPatience.answer);
    leaving.join();
}

TEST_F(SocketAssist, Send_AnswerAndGoodbye_IsTheAnswer) {
    ToolSocket tool(m_folder, "a.sock");
    Greet(tool);
    std::thread leaving([&] {
        tool.ReadLine();
        tool.Write("result 1\n");
        tool.CloseConnection();
    });
    EXPECT_EQ(Send(0x465), 1);
    leaving.join();
}

TEST_F(SocketAssist, Send_NoAnswer_GivesUpOnceAndNotAgainUntilItIsGiven) {
    ToolSocket tool(m_folder, "a.sock");
    Greet(tool);
    m_transport.Attach(kOwnWindow, m_receiver);
    const auto start = steady_clock::now();
    EXPECT_EQ(Send(0x4C8), 0);
    EXPECT_GE(steady_clock::now() - start, kPatience.answer);
    for (int i = 0; i < 10; ++i) {
        EXPECT_EQ(Send(0x4C8), 0);
    }
    EXPECT_LT(steady_clock::now() - start, kAtOnce);
    EXPECT_THAT(Titles(), ElementsAre("UOAssist"));
    EXPECT_EQ(WithoutAddress(tool.ReadLine()), "send 1224 0");
    EXPECT_EQ(tool.ReadLine(0ms), std::nullopt);
    // Nobody gets the late answer, and the tool is asked again.
    tool.Write("result 1\n");
    std::thread answering([&] {
        EXPECT_EQ(WithoutAddress(tool.ReadLine()), "send 1224 0");
        tool.Write("result 2\n");
    });
    EXPECT_EQ(Send(0x4C8), 0);
    ServeFor(30ms);
    EXPECT_EQ(Send(0x4C8), 2);
    answering.join();
}

// Its reports are handled, but a question would block the program each time.
TEST_F(SocketAssist, Send_ToolThatReportsAndOwesAnAnswer_IsAskedNothing) {
    ToolSocket tool(m_folder, "a.sock");
    Greet(tool);
    m_transport.Attach(kOwnWindow, m_receiver);
    EXPECT_EQ(Send(0x4C8), 0);
    EXPECT_EQ(WithoutAddress(tool.ReadLine()), "send 1224 0");
    for (std::size_t report = 1; report <= 5; ++report) {
        tool.Write("send 1329 100 50\n");
        ASSERT_TRUE(ServeUntil([&] { return m_receiver.messages.size() == report; }));
        EXPECT_EQ(tool.ReadLine(), "result 7");
        EXPECT_EQ(Send(0x4C8), 0);
    }
    EXPECT_EQ(tool.ReadLine(0ms), std::nullopt);
    // Its answer in the end belongs to the first question and to no other.
    tool.Write("result 1\n");
    ServeFor(30ms);
    std::thread answering([&] {
        EXPECT_EQ(WithoutAddress(tool.ReadLine()), "send 1224 0");
        tool.Write("result 2\n");
    });
    EXPECT_EQ(Send(0x4C8), 2);
    answering.join();
}

TEST_F(SocketAssist, Send_ToolThatOwedAnAnswerAndCameBack_IsAskedAgain) {
    ToolSocket tool(m_folder, "a.sock");
    Greet(tool);
    EXPECT_EQ(Send(0x4C8), 0);
    tool.CloseConnection();
    Greet(tool);
    std::thread answering([&] {
        EXPECT_EQ(WithoutAddress(tool.ReadLine()), "send 1224 0");
        tool.Write("result 1\n");
    });
    EXPECT_EQ(Send(0x4C8), 1);
    answering.join();
}

TEST_F(SocketAssist, Send_BeforeTheFirstReceiver_WaitsTheShorterTime) {
    SocketAssistTransport transport(
        m_folder,
        {.answers = {.answer = 60s, .shortAnswer = 100ms, .firstPause = 0ms}, .greeting = 5s});
    const auto start = steady_clock::now();
    for (const bool again : {false, true}) {
        ToolSocket tool(m_folder, "a.sock");
        m_window = GreetOn(transport, tool);
        EXPECT_EQ(transport.SendToWindow(m_window, 0x4C8, 0, 0), 0) << again;
        tool.CloseConnection();
    }
    EXPECT_GE(steady_clock::now() - start, 200ms);
    EXPECT_LT(steady_clock::now() - start, 30s);
    // From then on a tool has the whole time.
    transport.Attach(kOwnWindow, m_receiver);
    transport.Detach();
    ToolSocket tool(m_folder, "b.sock");
    m_window = GreetOn(transport, tool);
    std::thread answering([&] {
        EXPECT_TRUE(tool.ReadLine());
        std::this_thread::sleep_for(400ms);
        tool.Write("result 1\n");
    });
    EXPECT_EQ(transport.SendToWindow(m_window, 0x4C8, 0, 0), 1);
    answering.join();
}

TEST_F(SocketAssist, Send_ToolThatNeverAnswers_IsAskedAgainAtGrowingIntervals) {
    constexpr auto kFirst = 150ms;
    SocketAssistTransport transport(
        m_folder,
        {.answers = {.answer = 20ms, .shortAnswer = 20ms, .firstPause = kFirst}, .greeting = 5s});
    ToolSocket tool(m_folder, "a.sock");
    m_window = GreetOn(transport, tool);
    transport.Attach(kOwnWindow, m_receiver);
    std::vector<steady_clock::time_point> asked;
    const auto deadline = steady_clock::now() + 30s;
    while (asked.size() < 4 && steady_clock::now() < deadline) {
        EXPECT_EQ(transport.SendToWindow(m_window, 0x465, 0, 0), 0);
        if (tool.ReadLine(0ms)) {
            asked.push_back(steady_clock::now());
        }
        std::this_thread::sleep_for(2ms);
    }
    ASSERT_EQ(asked.size(), 4U);
    EXPECT_GE(asked[1] - asked[0], kFirst);
    EXPECT_GE(asked[2] - asked[1], kFirst * 2);
    EXPECT_GE(asked[3] - asked[2], kFirst * 4);
}

// Its answers are not counted for the message before for ever.
TEST_F(SocketAssist, Send_ToolThatPassedOneMessageOver_IsUnderstoodAgain_Long) {
    SocketAssistTransport transport(
        m_folder,
        {.answers = {.answer = 1s, .shortAnswer = 1s, .firstPause = 1ms}, .greeting = 5s});
    ToolSocket tool(m_folder, "a.sock");
    m_window = GreetOn(transport, tool);
    transport.Attach(kOwnWindow, m_receiver);
    const auto send = [&] {
        std::this_thread::sleep_for(20ms);
        return transport.SendToWindow(m_window, 0x4C8, 0, 0);
    };
    EXPECT_EQ(send(), 0);
    EXPECT_TRUE(tool.ReadLine());
    std::thread answering([&] {
        for (const char* answer : {"result 2\n", "result 3\n"}) {
            EXPECT_TRUE(tool.ReadLine());
            tool.Write(answer);
        }
    });
    EXPECT_EQ(send(), 0) << "it may be the late answer to the first";
    EXPECT_EQ(send(), 3);
    answering.join();
}

TEST_F(SocketAssist, Send_ReportsWithoutEndAndNoAnswer_GivesUpInTime) {
    ToolSocket tool(m_folder, "a.sock");
    Greet(tool);
    m_transport.Attach(kOwnWindow, m_receiver);
    std::atomic<bool> over = false;
    std::thread flooding([&] {
        while (!over && tool.Write("send 1329 100 50\nsend 1329 100 51\n")) {
            while (tool.ReadLine(0ms)) {
                continue;
            }
        }
    });
    const auto start = steady_clock::now();
    EXPECT_EQ(Send(0x465), 0);
    EXPECT_LT(steady_clock::now() - start, kAtOnce);
    over = true;
    ServeFor(100ms);
    flooding.join();
    EXPECT_GT(m_receiver.messages.size(), 0U);
}

}  // namespace
}  // namespace spellwick
