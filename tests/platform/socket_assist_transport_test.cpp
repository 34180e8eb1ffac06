#include "platform/linux/socket_assist_transport.h"

#include <atomic>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <thread>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <sys/wait.h>

#include "platform/linux/assist_folder.h"
#include "tests/support/pace.h"
#include "tests/support/tool_socket.h"

namespace spellwick {
namespace {

using namespace std::chrono_literals;
using std::chrono::steady_clock;
using testing::ElementsAre;
using testing::IsEmpty;
using testing_support::MakeAssistFolder;
using testing_support::ToolSocket;

constexpr WindowHandle kOwnWindow = 0x1200004;

class WritingReceiver : public MessageReceiver {
  public:
    std::optional<i32> OnMessage(const WindowMessage& message) override {
        messages.push_back(message);
        ++depth;
        deepest = std::max(deepest, depth);
        if (during) {
            during(message);
        }
        --depth;
        return message.number < 2000 ? std::optional<i32>(7) : std::nullopt;
    }
    std::vector<WindowMessage> messages;
    std::function<void(const WindowMessage&)> during;
    int depth = 0;
    int deepest = 0;
};

// The last argument of a line that holds an address.
std::string WithoutAddress(const std::optional<std::string>& line) {
    return line ? line->substr(0, line->rfind(' ')) : "nothing";
}

std::filesystem::path NewFolder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "assistXXXXXX").string();
    return mkdtemp(pattern.data());
}

class SocketAssist : public testing::Test {
  public:
    SocketAssist(const SocketAssist&) = delete;
    SocketAssist& operator=(const SocketAssist&) = delete;

  protected:
    SocketAssist() { MakeAssistFolder(m_folder); }
    ~SocketAssist() override { std::filesystem::remove_all(m_top); }

    std::vector<std::string> Titles() {
        std::vector<std::string> titles;
        m_transport.EnumWindows([&](WindowHandle window, std::string_view title) {
            m_window = window;
            titles.emplace_back(title);
        });
        return titles;
    }

    // Connects to a tool and takes its greeting.
    void Greet(ToolSocket& tool, const std::string& title = "UOAssist") {
        std::thread greeter([&] { EXPECT_TRUE(tool.AcceptAndGreet(title)); });
        Titles();
        greeter.join();
        EXPECT_THAT(Titles(), testing::Contains(title));
    }

    // Serves what there is, as an event loop does, until `holds` or the time is over.
    bool ServeUntil(const std::function<bool()>& holds, std::chrono::milliseconds patience = 5s) {
        const auto deadline = steady_clock::now() + patience;
        while (!holds() && steady_clock::now() < deadline) {
            if (IsReadable(10ms)) {
                const auto start = steady_clock::now();
                const auto busyFrom = ProcessorTime();
                m_transport.Service();
                m_longest = std::max(m_longest, ProcessorTime() - busyFrom);
                ++m_services;
                m_late += steady_clock::now() - start > 50ms ? 1 : 0;
            }
        }
        return holds();
    }

    // Of this thread: a machine that is busy with something else is no fault of the transport.
    static std::chrono::nanoseconds ProcessorTime() {
        timespec used{};
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &used);
        return std::chrono::seconds(used.tv_sec) + std::chrono::nanoseconds(used.tv_nsec);
    }

    // No Service works for long, and hardly one waits for anything.
    void ExpectShortServices() const {
        EXPECT_LT(m_longest, 50ms * testing_support::kPace);
        EXPECT_LE(m_late, m_services / 20 + 1);
    }

    bool IsReadable(std::chrono::milliseconds patience) const {
        pollfd events{m_transport.Descriptor(), POLLIN, 0};
        return poll(&events, 1, static_cast<int>(patience.count())) > 0;
    }

    i32 Send(std::uint32_t number, std::uint32_t wParam = 0) {
        const i32 zero = 0;
        return m_transport.SendToWindow(m_window, number, wParam, zero);
    }

    std::filesystem::path m_top = NewFolder();
    std::filesystem::path m_folder = m_top / "spellwick" / "assist";
    SocketAssistTransport m_transport{m_folder,
                                      {.answer = 400ms, .greeting = 200ms, .service = 8ms}};
    WritingReceiver m_receiver;
    WindowHandle m_window = 0;
    std::chrono::nanoseconds m_longest{};
    int m_services = 0;
    int m_late = 0;
};

TEST_F(SocketAssist, NoFolder_NoWindow) {
    std::filesystem::remove_all(m_folder);
    EXPECT_THAT(Titles(), IsEmpty());
    std::filesystem::remove_all(m_top);
    EXPECT_THAT(Titles(), IsEmpty());
}

TEST_F(SocketAssist, Tools_AreEnumeratedInTheOrderOfTheirNames) {
    ToolSocket second(m_folder, "b.sock");
    Greet(second, "second");
    ToolSocket third(m_folder, "c.sock");
    Greet(third, "third");
    ToolSocket first(m_folder, "a.sock");
    Greet(first, "first");
    ToolSocket otherName(m_folder, "d.socket");
    EXPECT_THAT(Titles(), ElementsAre("first", "second", "third"));
    EXPECT_FALSE(otherName.Accept(0ms));
}

TEST_F(SocketAssist, TitleInUtf8_ComesWhole) {
    ToolSocket tool(m_folder, "a.sock");
    Greet(tool, "UOAssist \xe2\x80\x93 Mira");
    EXPECT_THAT(Titles(), ElementsAre("UOAssist \xe2\x80\x93 Mira"));
}

struct ModeRow {
    const char* name;
    mode_t parent;
    mode_t folder;
    bool trusted;
};

TEST_F(SocketAssist, Folder_MustBeForThisUserAlone) {
    const ModeRow rows[] = {
        {"as it should be", 0700, 0700, true},
        {"readable by the group", 0700, 0750, false},
        {"readable by others", 0700, 0704, false},
        {"open to all", 0700, 0777, false},
        {"parent writable by the group", 0770, 0700, false},
        {"parent writable by others", 0702, 0700, false},
        {"parent readable by others", 0755, 0700, true},
    };
    for (const ModeRow& row : rows) {
        chmod(m_folder.parent_path().c_str(), row.parent);
        chmod(m_folder.c_str(), row.folder);
        EXPECT_EQ(static_cast<bool>(OpenAssistFolder(m_folder)), row.trusted) << row.name;
    }
}

TEST_F(SocketAssist, FolderBehindALink_IsNotTrusted) {
    const auto real = m_top / "real";
    std::filesystem::rename(m_folder, real);
    std::filesystem::create_directory_symlink(real, m_folder);
    EXPECT_FALSE(OpenAssistFolder(m_folder));
}

TEST_F(SocketAssist, Folder_ComesFromTheEnvironment) {
    const char* const before = std::getenv("XDG_RUNTIME_DIR");
    const std::string kept = before == nullptr ? "" : before;
    const std::string fallback = "/tmp/spellwick-" + std::to_string(geteuid()) + "/assist";
    setenv("XDG_RUNTIME_DIR", "/run/user/5", 1);
    EXPECT_EQ(AssistFolder(), "/run/user/5/spellwick/assist");
    setenv("XDG_RUNTIME_DIR", "", 1);
    EXPECT_EQ(AssistFolder(), fallback);
    setenv("XDG_RUNTIME_DIR", "run/user", 1);
    EXPECT_EQ(AssistFolder(), fallback);
    unsetenv("XDG_RUNTIME_DIR");
    EXPECT_EQ(AssistFolder(), fallback);
    if (before != nullptr) {
        setenv("XDG_RUNTIME_DIR", kept.c_str(), 1);
    }
}

TEST_F(SocketAssist, ListenerOfAnotherUser_IsNotTalkedTo) {
    if (geteuid() != 0) {
        GTEST_SKIP() << "Only root can listen as another user.";
    }
    chmod(m_top.c_str(), 0755);
    int ready[2];
    ASSERT_EQ(pipe(ready), 0);
    const pid_t other = fork();
    if (other == 0) {
        ToolSocket tool(m_folder, "unused.sock");
        const int listener = socket(AF_UNIX, SOCK_STREAM, 0);
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        std::strncpy(address.sun_path, (m_folder / "a.sock").c_str(), sizeof address.sun_path - 1);
        bool ok = bind(listener, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
        ok = ok && seteuid(65534) == 0 && listen(listener, 4) == 0;
        static_cast<void>(write(ready[1], ok ? "y" : "n", 1));
        pollfd connection{listener, POLLIN, 0};
        poll(&connection, 1, 3000);
        const int accepted = accept(listener, nullptr, nullptr);
        static_cast<void>(send(accepted, "title UOAssist\n", 15, MSG_NOSIGNAL));
        usleep(300000);
        _exit(0);
    }
    char answer = 0;
    ASSERT_EQ(read(ready[0], &answer, 1), 1);
    ASSERT_EQ(answer, 'y');
    std::filesystem::remove(m_folder / "unused.sock");
    EXPECT_THAT(Titles(), IsEmpty());
    EXPECT_THAT(Titles(), IsEmpty());
    kill(other, SIGKILL);
    waitpid(other, nullptr, 0);
}

TEST_F(SocketAssist, FileWithoutAListener_IsNoWindow) {
    {
        ToolSocket tool(m_folder, "a.sock");
        tool.CloseListener();
    }
    std::filesystem::create_directory(m_folder / "b.sock");
    EXPECT_THAT(Titles(), IsEmpty());
    EXPECT_TRUE(std::filesystem::exists(m_folder / "a.sock"));
}

TEST_F(SocketAssist, SilentTool_HoldsUpOneSearchShortlyAndNoOther) {
    ToolSocket tool(m_folder, "a.sock");
    EXPECT_THAT(Titles(), IsEmpty());
    const auto start = steady_clock::now();
    for (int i = 0; i < 20; ++i) {
        EXPECT_THAT(Titles(), IsEmpty());
    }
    EXPECT_LT(steady_clock::now() - start, 100ms);
    ASSERT_TRUE(tool.AcceptAndGreet("UOAssist"));
    EXPECT_THAT(Titles(), ElementsAre("UOAssist"));
}

TEST_F(SocketAssist, GreetingInPieces_CountsOnceItIsWhole) {
    ToolSocket tool(m_folder, "a.sock");
    Titles();
    ASSERT_TRUE(tool.Accept());
    tool.Write("title UOA");
    EXPECT_THAT(Titles(), IsEmpty());
    tool.Write("ssist");
    EXPECT_THAT(Titles(), IsEmpty());
    tool.Write("\n");
    EXPECT_THAT(Titles(), ElementsAre("UOAssist"));
}

TEST_F(SocketAssist, ClosedTool_HasNoWindowAtTheNextSearch) {
    auto tool = std::make_unique<ToolSocket>(m_folder, "a.sock");
    Greet(*tool);
    const WindowHandle before = m_window;
    tool.reset();
    EXPECT_TRUE(ServeUntil([&] { return Titles().empty(); }));
    EXPECT_FALSE(IsReadable(20ms));
    tool = std::make_unique<ToolSocket>(m_folder, "a.sock");
    Greet(*tool);
    EXPECT_NE(m_window, before);
}

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
    EXPECT_LT(steady_clock::now() - start, 300ms);
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

TEST_F(SocketAssist, Send_NoAnswer_GivesUpOnceAndNotAgainUntilTheToolStirs) {
    ToolSocket tool(m_folder, "a.sock");
    Greet(tool);
    const auto start = steady_clock::now();
    EXPECT_EQ(Send(0x4C8), 0);
    const auto waited = steady_clock::now() - start;
    EXPECT_GE(waited, 400ms);
    EXPECT_LT(waited, 700ms);
    for (int i = 0; i < 10; ++i) {
        EXPECT_EQ(Send(0x4C8), 0);
    }
    EXPECT_LT(steady_clock::now() - start - waited, 100ms);
    EXPECT_THAT(Titles(), ElementsAre("UOAssist"));
    EXPECT_EQ(WithoutAddress(tool.ReadLine()), "send 1224 0");
    // The late answer is nobody's, and the tool is asked again.
    tool.Write("result 1\n");
    std::thread answering([&] {
        EXPECT_EQ(WithoutAddress(tool.ReadLine()), "send 1224 0");
        tool.Write("result 2\n");
    });
    EXPECT_EQ(Send(0x4C8), 0);
    EXPECT_FALSE(ServeUntil([] { return false; }, 30ms));
    EXPECT_EQ(Send(0x4C8), 2);
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
    EXPECT_LT(steady_clock::now() - start, 700ms);
    over = true;
    EXPECT_FALSE(ServeUntil([] { return false; }, 100ms));
    flooding.join();
    EXPECT_GT(m_receiver.messages.size(), 0U);
}

TEST_F(SocketAssist, Report_WithoutAReceiver_IsAnsweredWithZeroAndLost) {
    ToolSocket tool(m_folder, "a.sock");
    Greet(tool);
    tool.Write("send 1325 1 80\n");
    EXPECT_FALSE(ServeUntil([] { return false; }, 50ms));
    EXPECT_EQ(tool.ReadLine(), "result 0");
    m_transport.Attach(kOwnWindow, m_receiver);
    tool.Write("send 1325 1 81\nsend 2000 1 2\n");
    EXPECT_TRUE(ServeUntil([&] { return m_receiver.messages.size() == 2; }));
    EXPECT_EQ(tool.ReadLine(), "result 7");
    EXPECT_EQ(tool.ReadLine(), "result 0");
    m_transport.Detach();
    tool.Write("send 1325 1 82\n");
    EXPECT_FALSE(ServeUntil([] { return false; }, 50ms));
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
        ServeUntil([] { return false; }, 30ms);
        EXPECT_TRUE(tool.PeerHasGone());
        EXPECT_THAT(m_receiver.messages, ElementsAre(WindowMessage{1325, 1, 80}));
        EXPECT_FALSE(IsReadable(5ms));
    }
}

TEST_F(SocketAssist, BadGreeting_IsNoWindowAndLookedForAgain) {
    for (const std::string greeting : {"send 1325 1 80\n", "UOAssist\n", "result 1\n"}) {
        ToolSocket tool(m_folder, "a.sock");
        std::thread greeting1([&] {
            ASSERT_TRUE(tool.Accept());
            EXPECT_TRUE(tool.Write(greeting));
        });
        EXPECT_THAT(Titles(), IsEmpty());
        greeting1.join();
        EXPECT_TRUE(tool.PeerHasGone());
        Greet(tool);
    }
}

TEST_F(SocketAssist, ToolThatStopsHalfWayThroughALine_HoldsUpNothing) {
    ToolSocket stalled(m_folder, "a.sock");
    Greet(stalled);
    ToolSocket tool(m_folder, "b.sock");
    Greet(tool);
    m_transport.Attach(kOwnWindow, m_receiver);
    stalled.Write("send 1325 1");
    EXPECT_FALSE(ServeUntil([] { return false; }, 30ms));
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
    ServeUntil([] { return false; }, 30ms);
    EXPECT_EQ(m_receiver.messages.size(), 2U);
}

TEST_F(SocketAssist, MillionReports_EachIsTakenOnceInOrderAndNoServiceIsLong) {
    ToolSocket tool(m_folder, "a.sock");
    Greet(tool);
    m_transport.Attach(kOwnWindow, m_receiver);
    constexpr std::size_t kCount = 1000000;
    m_receiver.messages.reserve(kCount);
    // Writes without reading an answer, as posted messages are.
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
    // And each has its answer.
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

TEST_F(SocketAssist, TwoTools_AFloodDoesNotKeepTheOtherWaiting) {
    ToolSocket flood(m_folder, "a.sock");
    Greet(flood);
    ToolSocket tool(m_folder, "b.sock");
    Greet(tool);
    m_transport.Attach(kOwnWindow, m_receiver);
    m_receiver.during = [](const WindowMessage&) { std::this_thread::sleep_for(100us); };
    std::string burst;
    for (int i = 0; i < 5000; ++i) {
        burst += "send 1329 100 50\n";
    }
    std::thread flooding([&] { flood.Write(burst); });
    ServeUntil([&] { return m_receiver.messages.size() > 100; });
    tool.Write("send 1325 5 6\n");
    const std::size_t before = m_receiver.messages.size();
    const auto came = [&] {
        return testing::Matches(testing::Contains(WindowMessage{1325, 5, 6}))(m_receiver.messages);
    };
    EXPECT_TRUE(ServeUntil(came));
    EXPECT_LT(m_receiver.messages.size() - before, 1000U);
    ExpectShortServices();
    flood.CloseConnection();
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

TEST_F(SocketAssist, ManySockets_AtMostSixteenAreTalkedTo) {
    std::vector<std::unique_ptr<ToolSocket>> tools;
    for (int i = 10; i < 50; ++i) {
        tools.push_back(std::make_unique<ToolSocket>(m_folder, std::to_string(i) + ".sock"));
    }
    Titles();
    std::size_t connected = 0;
    for (const auto& tool : tools) {
        connected += tool->Accept(0ms) ? 1U : 0U;
    }
    EXPECT_EQ(connected, 16U);
}

}  // namespace
}  // namespace spellwick
