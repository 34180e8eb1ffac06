// Reports of assist tools: each is handled once and in order, whatever the tools do.
#include <atomic>
#include <thread>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/platform/socket_assist_fixture.h"

namespace spellwick {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;
using testing_support::ToolSocket;

TEST_F(SocketAssist, Report_WithoutAReceiver_IsAnsweredWithZeroAndLost) {
    ToolSocket tool(m_folder, "a.sock");
    Greet(tool);
    tool.Write("send 1325 1 80\n");
    ServeFor(50ms);
    EXPECT_EQ(tool.ReadLine(), "result 0");
    m_transport.Attach(kOwnWindow, m_receiver);
    tool.Write("send 1325 1 81\nsend 2000 1 2\n");
    EXPECT_TRUE(ServeUntil([&] { return m_receiver.messages.size() == 2; }));
    EXPECT_EQ(tool.ReadLine(), "result 7");
    EXPECT_EQ(tool.ReadLine(), "result 0");
    m_transport.Detach();
    tool.Write("send 1325 1 82\n");
    ServeFor(50ms);
    EXPECT_EQ(tool.ReadLine(), "result 0");
    EXPECT_EQ(m_receiver.messages.size(), 2U);
}

TEST_F(SocketAssist, BadLine_DropsTheToolAfterTheReportsBeforeIt) {
    const std::vector<std::string> bad{"send 1325 one 2\n",
                                       "hello\n",
                                       "title again\n",
                                       "\n",
                                       "result \n",
                                       "send 1 2\n",
                                       std::string("send 1\0 2 3\n", 12),
                                       "send 1 2 99999999999\n",
                                       std::string(600, '1'),
                                       "\xff\n"};
    m_transport.Attach(kOwnWindow, m_receiver);
    for (const std::string& line : bad) {
        SCOPED_TRACE(line);
        m_receiver.messages.clear();
        ToolSocket tool(m_folder, "a.sock");
        Greet(tool);
        tool.Write("send 1325 1 80\n" + line + "send 1325 1 81\n");
        EXPECT_TRUE(ServeUntil([&] { return !m_receiver.messages.empty(); }));
        ServeFor(30ms);
        EXPECT_TRUE(tool.PeerHasGone());
        EXPECT_THAT(m_receiver.messages, ElementsAre(WindowMessage{1325, 1, 80}));
        EXPECT_FALSE(IsReadable(5ms));
    }
}

TEST_F(SocketAssist, ToolThatStopsHalfWayThroughALine_HoldsUpNothing) {
    ToolSocket stalled(m_folder, "a.sock");
    Greet(stalled);
    ToolSocket tool(m_folder, "b.sock");
    Greet(tool);
    m_transport.Attach(kOwnWindow, m_receiver);
    stalled.Write("send 1325 1");
    ServeFor(30ms);
    EXPECT_FALSE(IsReadable(5ms));
    tool.Write("send 1325 2 3\n");
    EXPECT_TRUE(ServeUntil([&] { return m_receiver.messages.size() == 1; }));
    stalled.Write(" 80\n");
    EXPECT_TRUE(ServeUntil([&] { return m_receiver.messages.size() == 2; }));
    EXPECT_EQ(m_receiver.messages.back(), (WindowMessage{1325, 1, 80}));
}

TEST_F(SocketAssist, ReportsOfAToolThatHasGone_AreStillTaken) {
    ToolSocket tool(m_folder, "a.sock");
    Greet(tool);
    m_transport.Attach(kOwnWindow, m_receiver);
    tool.Write("send 1325 1 80\nsend 1325 2 81\nsend 1325 3");
    tool.CloseConnection();
    EXPECT_TRUE(ServeUntil([&] { return m_receiver.messages.size() == 2; }));
    ServeFor(30ms);
    EXPECT_EQ(m_receiver.messages.size(), 2U);
}

TEST_F(SocketAssist, MillionReports_EachIsTakenOnceInOrderAndNoServiceIsLong_Long) {
    ToolSocket tool(m_folder, "a.sock");
    Greet(tool);
    m_transport.Attach(kOwnWindow, m_receiver);
    constexpr std::size_t kCount = 1000000;
    m_receiver.messages.reserve(kCount);
    // Writes without reading the answers, like posted messages.
    std::thread flooding([&] {
        std::string burst;
        for (std::size_t i = 0; i < kCount; ++i) {
            burst += "send 1329 100 " + std::to_string(i) + '\n';
            if (burst.size() > 60000 || i + 1 == kCount) {
                ASSERT_TRUE(tool.Write(burst));
                burst.clear();
            }
        }
    });
    EXPECT_TRUE(ServeUntil([&] { return m_receiver.messages.size() >= kCount; }, 60s));
    flooding.join();
    ExpectShortServices();
    ASSERT_EQ(m_receiver.messages.size(), kCount);
    for (std::size_t i = 0; i < kCount; ++i) {
        ASSERT_EQ(m_receiver.messages[i].lParam, static_cast<i32>(i));
    }
    // Each has been answered.
    std::atomic<std::size_t> answers = 0;
    std::thread reading([&] {
        while (answers < kCount && tool.ReadLine() == "result 7") {
            ++answers;
        }
    });
    ServeUntil([&] { return answers == kCount; }, 30s);
    reading.join();
    EXPECT_EQ(answers, kCount);
}

// Counted in reports, so that a busy machine makes no difference.
TEST_F(SocketAssist, TwoTools_AFloodDoesNotKeepTheOtherWaiting) {
    constexpr std::size_t kFlood = 5000;
    constexpr std::size_t kBefore = 20;
    ToolSocket flood(m_folder, "a.sock");
    Greet(flood, "flood");
    ToolSocket tool(m_folder, "b.sock");
    Greet(tool, "tool");
    m_transport.Attach(kOwnWindow, m_receiver);
    m_receiver.during = [&](const WindowMessage&) {
        if (m_receiver.messages.size() == kBefore) {
            tool.Write("send 1325 5 6\n");
        }
        std::this_thread::sleep_for(1ms);
    };
    std::string burst;
    for (std::size_t i = 0; i < kFlood; ++i) {
        burst += "send 1329 100 50\n";
    }
    std::thread flooding([&] { flood.Write(burst); });
    const auto place = [&] {
        const auto found = std::ranges::find(m_receiver.messages, WindowMessage{1325, 5, 6});
        return static_cast<std::size_t>(found - m_receiver.messages.begin());
    };
    EXPECT_TRUE(ServeUntil([&] { return place() < m_receiver.messages.size(); }, 30s));
    // Only the rest of one Service, eight milliseconds, and what comes by turns.
    EXPECT_LE(place(), kBefore + 8 + 2);
    m_receiver.during = nullptr;
    EXPECT_TRUE(ServeUntil([&] { return m_receiver.messages.size() == kFlood + 1; }, 30s));
    flooding.join();
}

TEST_F(SocketAssist, HandlersThatServeEvents_DoNotPileUpAndLoseNothing) {
    ToolSocket tool(m_folder, "a.sock");
    Greet(tool);
    m_transport.Attach(kOwnWindow, m_receiver);
    m_receiver.during = [&](const WindowMessage&) {
        if (IsReadable(0ms)) {
            m_transport.Service();
        }
    };
    std::string burst;
    for (int i = 0; i < 3000; ++i) {
        burst += "send 1325 1 " + std::to_string(i) + '\n';
    }
    std::thread writing([&] { tool.Write(burst); });
    EXPECT_TRUE(ServeUntil([&] { return m_receiver.messages.size() >= 3000; }));
    writing.join();
    EXPECT_LE(m_receiver.deepest, 8);
    EXPECT_GT(m_receiver.deepest, 1);
    ASSERT_EQ(m_receiver.messages.size(), 3000U);
    for (int i = 0; i < 3000; ++i) {
        EXPECT_EQ(m_receiver.messages[static_cast<std::size_t>(i)].lParam, i);
    }
}

TEST_F(SocketAssist, HandlerAtTheDeepestPlace_LeavesTheDescriptorQuiet) {
    ToolSocket tool(m_folder, "a.sock");
    Greet(tool);
    m_transport.Attach(kOwnWindow, m_receiver);
    int quietAt = 0;
    m_receiver.during = [&](const WindowMessage&) {
        if (m_receiver.depth == 8) {
            tool.CloseConnection();
            m_transport.Service();
            quietAt += IsReadable(20ms) ? 0 : 1;
        } else if (m_receiver.depth < 8) {
            m_transport.Service();
        }
    };
    std::string burst;
    for (int i = 0; i < 9; ++i) {
        burst += "send 1325 1 2\n";
    }
    tool.Write(burst);
    EXPECT_TRUE(ServeUntil([&] { return m_receiver.messages.size() == 9; }));
    EXPECT_GE(quietAt, 1);
}

// For example a message box in the middle of a burst.
TEST_F(SocketAssist, HandlerThatWaitsAtTheDeepestPlace_DoesNotKeepTheOthersOut) {
    ToolSocket tool(m_folder, "a.sock");
    Greet(tool);
    m_transport.Attach(kOwnWindow, m_receiver);
    bool taken = false;
    m_receiver.during = [&](const WindowMessage&) {
        if (m_receiver.depth < 8) {
            m_transport.Service();
        } else if (m_receiver.messages.size() == 8) {
            tool.Write("send 1325 1 2\nsend 1325 1 3\n");
            const bool first = ServeUntil([&] { return m_receiver.messages.size() == 10; });
            tool.Write("send 1325 1 4\n");
            taken = first && ServeUntil([&] { return m_receiver.messages.size() == 11; });
        }
    };
    std::string burst;
    for (int i = 0; i < 8; ++i) {
        burst += "send 1325 1 1\n";
    }
    tool.Write(burst);
    EXPECT_TRUE(ServeUntil([&] { return m_receiver.messages.size() >= 11; }));
    EXPECT_TRUE(taken);
    EXPECT_EQ(m_receiver.deepest, 9);
}

TEST_F(SocketAssist, ToolThatIsDroppedInsideItsOwnReport_IsNoTrouble) {
    auto tool = std::make_unique<ToolSocket>(m_folder, "a.sock");
    Greet(*tool);
    m_transport.Attach(kOwnWindow, m_receiver);
    m_receiver.during = [&](const WindowMessage&) {
        tool.reset();
        EXPECT_THAT(Titles(), testing::SizeIs(testing::Le(1U)));
        m_transport.Service();
        EXPECT_THAT(Titles(), IsEmpty());
    };
    tool->Write("send 1325 1 2\n");
    EXPECT_TRUE(ServeUntil([&] { return m_receiver.messages.size() == 1; }));
    EXPECT_THAT(Titles(), IsEmpty());
}

// The end may come in the middle of a report, as deep as they go.
TEST_F(SocketAssist, ReportsThatHaveComeIn_AreTakenBeforeTheEnd) {
    constexpr i32 kReports = 1000;
    ToolSocket tool(m_folder, "a.sock");
    Greet(tool);
    m_transport.Attach(kOwnWindow, m_receiver);
    std::size_t before = 0;
    m_receiver.during = [&](const WindowMessage&) {
        if (m_receiver.depth < 8) {
            m_transport.Service();
        } else if (before == 0) {
            before = m_receiver.messages.size();
            m_transport.ServePending();
            m_transport.Detach();
        }
    };
    std::string burst;
    for (i32 i = 0; i < kReports; ++i) {
        burst += "send 1325 1 " + std::to_string(i) + '\n';
    }
    tool.Write(burst);
    ServeUntil([&] { return before > 0; });
    EXPECT_EQ(before, 8U);
    ASSERT_EQ(m_receiver.messages.size(), std::size_t{kReports});
    for (i32 i = 0; i < kReports; ++i) {
        EXPECT_EQ(m_receiver.messages[static_cast<std::size_t>(i)].lParam, i);
    }
}

TEST_F(SocketAssist, ReportsWithoutEnd_DoNotHoldTheEndUp) {
    ToolSocket tool(m_folder, "a.sock");
    Greet(tool);
    m_transport.Attach(kOwnWindow, m_receiver);
    m_receiver.during = [&](const WindowMessage&) { tool.Write("send 1325 1 1\n"); };
    tool.Write("send 1325 1 1\n");
    m_transport.ServePending();
    EXPECT_GT(m_receiver.messages.size(), 1U);
    EXPECT_TRUE(IsReadable(0ms)) << "there is always one more";
}

}  // namespace
}  // namespace spellwick
