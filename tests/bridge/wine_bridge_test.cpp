// The whole bridge, with assist tools in a Wine prefix on one side and a plain client of their
// sockets on the other.
#include <csignal>
#include <tuple>

#include <gmock/gmock.h>

#include "tests/bridge/socket_client.h"
#include "tests/bridge/wine_desk.h"
#include "tests/support/pace.h"
#include "tests/support/x_session.h"

namespace spellwick::testing_support {
namespace {

using namespace std::chrono_literals;
using std::chrono::steady_clock;
using testing::ElementsAre;
using testing::HasSubstr;

constexpr std::uint32_t kRegister = 0x4c8;
constexpr std::uint32_t kCount = 0x465;
constexpr std::uint32_t kSteer = 0x8000;  // WM_APP

class WineBridge : public testing::Test {
  protected:
    static void SetUpTestSuite() {
        if (WinePrefixFolder::WhatIsMissing().empty()) {
            session = XSession::Start();
            prefix = std::make_unique<WinePrefixFolder>();
        }
    }

    static void TearDownTestSuite() {
        prefix.reset();
        session.reset();
    }

    void SetUp() override {
        if (const std::string missing = WinePrefixFolder::WhatIsMissing(); !missing.empty()) {
            GTEST_SKIP() << missing;
        }
        ASSERT_TRUE(session);
        // A folder of its own: a bridge rests for a while after another has ended in the same.
        m_runtime = session->Folder() / ("run" + std::to_string(++count));
        std::filesystem::create_directory(m_runtime);
    }

    void TearDown() override {
        if (HasFailure() && m_bridge) {
            ADD_FAILURE() << "The bridge said: " << m_bridge->Output() << "In Wine run:\n"
                          << prefix->Threads();
        }
        m_bridge.reset();
        m_tools.clear();
    }

    std::filesystem::path Folder() const { return m_runtime / "spellwick" / "assist"; }
    Environment Variables() const {
        Environment variables = session->Variables();
        variables["XDG_RUNTIME_DIR"] = m_runtime.string();
        return variables;
    }

    void StartTool(const WineToolForm& form = kUoAssist) {
        m_tools.push_back(prefix->StartTool(Variables(), form));
        ASSERT_TRUE(m_tools.back());
        // Wait for its Wine to run, so that the first search of the bridge finds it.
        std::this_thread::sleep_for(100ms);
    }
    void StartBridge() {
        m_bridge = prefix->StartBridge(Variables());
        ASSERT_TRUE(m_bridge);
    }

    std::optional<SocketClient> Find(const std::string& title = kUoAssist.title) {
        return SocketClient::Find(Folder(), title);
    }

    // A tool, the bridge, and a client that is registered with the tool.
    std::optional<SocketClient> StartAll() {
        StartTool();
        StartBridge();
        auto client = Find();
        EXPECT_TRUE(client);
        if (client) {
            EXPECT_EQ(client->Ask(kRegister, 77, 5), 1);
        }
        return client;
    }

    static std::unique_ptr<XSession> session;
    static std::unique_ptr<WinePrefixFolder> prefix;
    static int count;  // of the tests so far
    std::filesystem::path m_runtime;
    std::vector<std::unique_ptr<ChildProcess>> m_tools;
    std::unique_ptr<ChildProcess> m_bridge;
};

std::unique_ptr<XSession> WineBridge::session;
std::unique_ptr<WinePrefixFolder> WineBridge::prefix;
int WineBridge::count = 0;

TEST_F(WineBridge, MessagesGoBothWaysWithTheirResultsInTheirOrder) {
    auto client = StartAll();
    ASSERT_TRUE(client);
    EXPECT_EQ(client->Ask(kRegister, 77, 5), 2) << "its window is the same for all its messages";
    EXPECT_EQ(client->Ask(kRegister, 99, 5), 1) << "whatever window it names";
    EXPECT_EQ(client->Ask(kSteer + 6), 1);
    EXPECT_EQ(client->Ask(kCount), 0);
    // Reports that are sent while a message is handled come before its result.
    ASSERT_EQ(client->Reports().size(), 14U);
    EXPECT_EQ(client->Reports().front(), (WindowMessage{0x52d, 1, 80}));
    EXPECT_EQ(client->Reports().back(), (WindowMessage{0x52d, 200, 15000}));
    client->Reports().clear();
    EXPECT_EQ(client->Ask(kSteer + 2, 0x532), 1);
    EXPECT_EQ(client->Ask(kSteer + 1, -3, -2147483647), 1);
    EXPECT_THAT(client->Reports(), ElementsAre(WindowMessage{0x532, -3, -2147483647}));
}

TEST_F(WineBridge, MessagesOfTheSystem_AreKeptFromTheTool) {
    auto client = StartAll();
    ASSERT_TRUE(client);
    EXPECT_EQ(client->Ask(0x10), 0) << "a request to close";
    EXPECT_EQ(client->Ask(0xc), 0) << "with an address that is none";
    EXPECT_EQ(client->Ask(0xc000), 0);
    EXPECT_EQ(client->Ask(0x7123), 0);
    EXPECT_EQ(client->Ask(kSteer + 9), 0x7123) << "one for programs gets through";
}

TEST_F(WineBridge, EveryFormOfToday_IsOfferedUnderItsTitle) {
    const WineToolForm forms[] = {
        kUoAssist,
        {"razor", "UOASSIST-TP-MSG-WND", "UOASSIST-TP-MSG-WND"},
        {"razor", "WindowsForms10.Window", "Mira Talon (Atlantic) - Razor v1.9.77.0"},
        {"razor-enhanced", "WindowsForms10.Window", "Mira \u00c4 (Atlantic) - Razor Enhanced 0.8"},
    };
    for (const WineToolForm& form : forms) {
        StartTool(form);
    }
    StartTool({"uoassist", "any", "uoassist in lower case"});
    StartBridge();
    for (const WineToolForm& form : forms) {
        SCOPED_TRACE(form.title);
        auto client = Find(form.title);
        ASSERT_TRUE(client);
        EXPECT_EQ(client->Ask(kRegister), 1);
        EXPECT_EQ(client->Ask(kCount), 0);
        const bool counts =
            form.kind == std::string("uoassist") || form.kind == std::string("razor");
        EXPECT_TRUE(client->WaitReports(counts ? 14 : 0));
        client->Reports().clear();
        // A cast within the circle, and a statistic.
        EXPECT_EQ(client->Ask(kSteer + 2, 0x52e), 1);
        EXPECT_EQ(client->Ask(kSteer + 1, 4, 0), 1);
        EXPECT_EQ(client->Ask(kSteer + 2, 0x531), 1);
        EXPECT_EQ(client->Ask(kSteer + 1, 100, 93), 1);
        EXPECT_THAT(client->Reports(),
                    ElementsAre(WindowMessage{0x52e, 4, 0}, WindowMessage{0x531, 100, 93}));
    }
    EXPECT_EQ(SocketClient::CountSockets(Folder()), std::size(forms));
}

TEST_F(WineBridge, TenThousandReports_ComeWholeAndInOrder) {
    auto client = StartAll();
    ASSERT_TRUE(client);
    constexpr auto kPatience = 60s;
    for (const auto& [name, way, reports] :
         {std::tuple{"posted", kSteer + 3, 10000}, std::tuple{"sent", kSteer + 4, 2000}}) {
        SCOPED_TRACE(name);
        const auto start = steady_clock::now();
        EXPECT_EQ(client->Ask(way, reports, 0, kPatience), 1);
        ASSERT_TRUE(client->WaitReports(static_cast<std::size_t>(reports), kPatience))
            << client->Reports().size();
        const std::chrono::duration<double, std::milli> took = steady_clock::now() - start;
        RecordProperty(name + std::string("_ms"), std::to_string(took.count()));
        for (i32 i = 0; i < reports; ++i) {
            ASSERT_EQ(client->Reports()[static_cast<std::size_t>(i)],
                      (WindowMessage{0x52d, 1, i + 1}));
        }
        EXPECT_EQ(client->Reports().size(), static_cast<std::size_t>(reports));
        client->Reports().clear();
    }
}

TEST_F(WineBridge, Report_TakesLessThanTenMilliseconds) {
    auto client = StartAll();
    ASSERT_TRUE(client);
    std::vector<double> times;
    for (i32 i = 1; i <= 200; ++i) {
        const auto start = steady_clock::now();
        ASSERT_TRUE(client->Send(kSteer + 1, 1, i));
        ASSERT_TRUE(client->WaitReports(static_cast<std::size_t>(i)));
        times.push_back(
            std::chrono::duration<double, std::milli>(steady_clock::now() - start).count());
    }
    std::ranges::sort(times);
    RecordProperty("median_ms", std::to_string(times[times.size() / 2]));
    RecordProperty("longest_ms", std::to_string(times.back()));
    EXPECT_LT(times[times.size() / 2], 10 * kPace) << "from the order to report until it is there";
}

TEST_F(WineBridge, ToolThatHangs_HoldsUpNoOtherAndAnswersWhenItIsBack) {
    StartTool({"uoassist", "second", "UOAssist two"});
    auto client = StartAll();
    auto other = Find("UOAssist two");
    ASSERT_TRUE(client && other);
    ASSERT_EQ(client->Ask(kSteer + 5, 2000), 1);
    EXPECT_FALSE(client->Ask(kSteer + 6, 0, 0, 300ms));
    const auto start = steady_clock::now();
    EXPECT_EQ(other->Ask(kRegister), 1);
    EXPECT_LT(steady_clock::now() - start, 500ms * kPace);
    // The answer that was not waited for comes first.
    EXPECT_TRUE(client->Send(kSteer + 9));
    EXPECT_TRUE(client->WaitResults(2));
    EXPECT_THAT(client->Results(), ElementsAre(1, 0));
}

TEST_F(WineBridge, HalfThatHangs_IsEndedAndStartedAnew) {
    const std::string program = "spellwick-bridge.exe";
    auto client = StartAll();
    ASSERT_TRUE(client);
    const pid_t half = prefix->ProcessOf(program);
    ASSERT_GT(half, 0);
    EXPECT_FALSE(client->WaitGone(12s)) << "no message is no sign of hanging";
    ASSERT_EQ(prefix->ProcessOf(program), half);
    ASSERT_EQ(kill(half, SIGSTOP), 0);
    EXPECT_TRUE(client->WaitGone(20s));
    // After a pause.
    ASSERT_TRUE(WaitUntil([&] { return SocketClient::CountSockets(Folder()) == 1; }, 40s));
    EXPECT_NE(prefix->ProcessOf(program), half);
    auto next = Find();
    ASSERT_TRUE(next);
    EXPECT_EQ(next->Ask(kRegister), 1);
}

TEST_F(WineBridge, ToolThatDies_IsGoneAndItsSuccessorIsThere) {
    auto client = StartAll();
    ASSERT_TRUE(client);
    EXPECT_TRUE(client->Send(kSteer + 7));
    EXPECT_TRUE(client->WaitGone(3s));
    EXPECT_TRUE(WaitUntil([&] { return SocketClient::CountSockets(Folder()) == 0; }));
    StartTool();
    auto next = Find();
    ASSERT_TRUE(next);
    EXPECT_EQ(next->Ask(kRegister), 1);
}

TEST_F(WineBridge, ToolThatIsBackAtOnce_IsMissedForLongerThanASearchOfSpellwick) {
    auto client = StartAll();
    ASSERT_TRUE(client);
    EXPECT_TRUE(client->Send(kSteer + 7));
    EXPECT_TRUE(client->WaitGone());
    const auto gone = steady_clock::now();
    StartTool();
    ASSERT_TRUE(Find());
    EXPECT_GT(steady_clock::now() - gone, 1200ms);
}

TEST_F(WineBridge, TitleThatKeepsItsForm_KeepsTheConnection) {
    auto client = StartAll();
    ASSERT_TRUE(client);
    EXPECT_EQ(client->Ask(kSteer + 8), 1);
    auto later = Find(std::string(kUoAssist.title) + "X");
    ASSERT_TRUE(later) << "who comes later reads the new one";
    EXPECT_EQ(client->Ask(kSteer + 6), 1) << "who was there is registered as before";
}

TEST_F(WineBridge, EachConnection_HasAWindowOfItsOwn) {
    auto client = StartAll();
    auto second = Find();
    ASSERT_TRUE(client && second);
    EXPECT_EQ(second->Ask(kRegister), 1);
    EXPECT_EQ(client->Ask(kSteer + 6), 2);
    EXPECT_EQ(client->Ask(kSteer + 1, 1, 5), 1);
    EXPECT_TRUE(second->WaitReports(1));
    EXPECT_EQ(client->Reports().size(), 1U);
    second.reset();
    EXPECT_TRUE(WaitUntil([&] {
        return client->Ask(kSteer + 1, 1, 5) == 1 && client->Ask(kSteer + 6) == 1;
    })) << "its window has gone with it";
}

TEST_F(WineBridge, LineThatBreaksTheForm_EndsThatConnectionAlone) {
    auto client = StartAll();
    auto second = Find();
    ASSERT_TRUE(client && second);
    EXPECT_TRUE(second->Write("sent 1 2 3\n"));
    EXPECT_TRUE(second->WaitGone());
    EXPECT_EQ(client->Ask(kSteer + 6), 1);
}

TEST_F(WineBridge, PrefixThatIsShutDown_IsServedAgainWhenItIsBack) {
    auto client = StartAll();
    ASSERT_TRUE(client);
    EXPECT_TRUE(client->Send(kSteer + 3, 10000));
    prefix->ShutDown();
    EXPECT_TRUE(client->WaitGone());
    EXPECT_TRUE(WaitUntil([&] { return SocketClient::CountSockets(Folder()) == 0; }));
    ASSERT_TRUE(m_bridge->Runs()) << m_bridge->Output();
    StartTool();
    auto next = Find();
    ASSERT_TRUE(next);
    EXPECT_EQ(next->Ask(kRegister), 1);
}

TEST_F(WineBridge, Bridge_DoesNotKeepWineRunning) {
    auto client = StartAll();
    ASSERT_TRUE(client);
    EXPECT_TRUE(client->Send(kSteer + 7));
    EXPECT_EQ(RunToEnd({"/usr/lib/wine/wineserver", "-w"}, prefix->Variables({}), 10s).exitCode, 0);
    EXPECT_TRUE(WaitUntil(
        [&] { return m_bridge->Output().find("ended: wineserver") != std::string::npos; }));
    EXPECT_TRUE(m_bridge->Runs());
}

TEST_F(WineBridge, End_RemovesTheSocketsAndLeavesTheTool) {
    auto client = StartAll();
    ASSERT_TRUE(client);
    const auto start = steady_clock::now();
    m_bridge->Signal(SIGTERM);
    EXPECT_EQ(m_bridge->WaitForEnd(5s), 0);
    EXPECT_LT(steady_clock::now() - start, 2s * kPace);
    EXPECT_TRUE(client->WaitGone());
    EXPECT_EQ(SocketClient::CountSockets(Folder()), 0U);
    EXPECT_TRUE(m_tools.back()->Runs());
    StartBridge();
    auto next = Find();
    ASSERT_TRUE(next);
    EXPECT_EQ(next->Ask(kRegister), 1);
}

TEST_F(WineBridge, BridgeThatIsKilled_LeavesNothingThatTheNextCannotUse) {
    auto client = StartAll();
    ASSERT_TRUE(client);
    m_bridge->Signal(SIGKILL);
    m_bridge->WaitForEnd(5s);
    EXPECT_EQ(SocketClient::CountSockets(Folder()), 1U);
    StartBridge();
    auto next = Find();
    ASSERT_TRUE(next);
    EXPECT_EQ(next->Ask(kRegister), 1);
    EXPECT_EQ(SocketClient::CountSockets(Folder()), 1U);
}

TEST_F(WineBridge, SecondBridge_WaitsForTheEndOfTheFirst) {
    auto client = StartAll();
    ASSERT_TRUE(client);
    auto second = prefix->StartBridge(Variables());
    EXPECT_TRUE(WaitUntil(
        [&] { return second->Output().find("another bridge runs") != std::string::npos; }));
    EXPECT_EQ(SocketClient::CountSockets(Folder()), 1U);
    m_bridge->Signal(SIGTERM);
    EXPECT_EQ(m_bridge->WaitForEnd(5s), 0);
    EXPECT_TRUE(Find());
}

TEST_F(WineBridge, Once_SaysWhatIsThereAndOffersNothing) {
    StartTool();
    const std::string program =
        (std::filesystem::read_symlink("/proc/self/exe").parent_path() / "spellwick-bridge")
            .string();
    RunResult told;
    EXPECT_TRUE(WaitUntil([&] {
        told = RunToEnd({program, "--once", "--verbose", "--prefix", prefix->Path().string()},
                        Variables());
        return told.exitCode != 0 || told.output.find("UOAssist") != std::string::npos;
    }));
    EXPECT_EQ(told.exitCode, 0);
    EXPECT_THAT(told.output, HasSubstr("prefix " + prefix->Path().string()));
    EXPECT_THAT(told.output, HasSubstr("tool \"UOAssist 2003.05\"\n"));
    m_tools.clear();
    prefix->ShutDown();
    told = RunToEnd({program, "--once", "--verbose", "--prefix", prefix->Path().string()},
                    Variables());
    EXPECT_EQ(told.exitCode, 0);
    EXPECT_EQ(told.output, "no Wine is running\n");
}

}  // namespace
}  // namespace spellwick::testing_support
