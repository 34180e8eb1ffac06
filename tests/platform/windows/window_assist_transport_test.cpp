// Real window messages between this program's window and an assist tool of another process.
#include "platform/windows/window_assist_transport.h"

#include <algorithm>
#include <atomic>
#include <map>
#include <numeric>
#include <thread>

#include <gmock/gmock.h>

#include "link/assist_dispatcher.h"
#include "link/assist_messages.h"
#include "link/assist_search.h"
#include "tests/platform/windows/peer_process.h"
#include "tests/support/recording_assist_view.h"

namespace spellwick {
namespace {

using namespace std::chrono_literals;
using testing::Contains;
using testing::ElementsAre;
using testing_support::PeerProcess;
using testing_support::ServeEvents;
using testing_support::WaitUntil;

// What the tool of the tests does at a command.
constexpr UINT kSetAnswer = 1;
constexpr UINT kTellAsked = 2;
constexpr UINT kTellRegistered = 3;
constexpr UINT kTellArgument = 4;
constexpr UINT kSetReport = 5;
constexpr UINT kReport = 6;
constexpr UINT kPostMany = 7;
constexpr UINT kHang = 8;
constexpr UINT kHangAtCount = 9;
constexpr UINT kBoxAtRegistration = 10;

constexpr UINT kOther = WM_USER + 7;

class SinkThatCounts : public FailureSink {
  public:
    void OnUncaughtFailure(const std::exception& failure, std::string_view /*action*/) override {
        failures.emplace_back(failure.what());
    }
    std::vector<std::string> failures;
};

// A window of ours with a procedure of its own, as the toolkit's windows have one.
LRESULT CALLBACK OrdinaryProcedure(HWND window, UINT number, WPARAM wParam, LPARAM lParam) {
    if (number == kOther) {
        return 4711;
    }
    return DefWindowProcW(window, number, wParam, lParam);
}

class WindowAssist : public testing::Test {
  protected:
    void SetUp() override {
        WNDCLASSW windowClass{};
        windowClass.lpfnWndProc = &OrdinaryProcedure;
        windowClass.hInstance = GetModuleHandleW(nullptr);
        windowClass.lpszClassName = L"Spellwick tests";
        RegisterClassW(&windowClass);
        m_window = CreateWindowExW(0, windowClass.lpszClassName, L"ours", WS_OVERLAPPEDWINDOW, 0, 0,
                                   10, 10, nullptr, nullptr, windowClass.hInstance, nullptr);
        m_state.Spells.GrowTo(kLastRow);
        m_state.MainWindowHandle = HandleOf(m_window);
        m_link.SetReceiver(m_dispatcher);
        m_view.duringYield = &ServeEvents;
    }
    void TearDown() override {
        m_transport.Detach();
        DestroyWindow(m_window);
        ServeEvents();
    }

    static std::unique_ptr<PeerProcess> Start(const std::wstring& title = L"UOAssist 5.0 - Mira",
                                              const std::wstring& more = L"0") {
        return std::make_unique<PeerProcess>(L"assist_tool", std::vector<std::wstring>{title, more},
                                             title);
    }

    // A linked tool, its reports heard.
    std::unique_ptr<PeerProcess> StartLinked() {
        auto tool = Start();
        m_link.FindAssist();
        m_link.HookWindow();
        EXPECT_TRUE(m_state.AssistRegistered);
        return tool;
    }

    // Lets the tool report, and tells what that made of the view. Sent ones are answered with 0.
    std::vector<std::string> Report(const PeerProcess& tool, std::uint32_t number, i32 wParam,
                                    i32 lParam, bool posted) {
        tool.Ask(kSetReport, posted ? 1 : 0, static_cast<LPARAM>(number));
        m_view.log.clear();
        EXPECT_EQ(tool.Ask(kReport, static_cast<WPARAM>(wParam), lParam), 0);
        ServeEvents();
        return m_view.TakeLog();
    }

    std::pair<bool, bool> Flags() const { return {m_state.AssistLinked, m_state.AssistRegistered}; }

    HWND m_window = nullptr;
    SharedState m_state;
    RecordingAssistView m_view;
    SinkThatCounts m_sink;
    WindowAssistTransport m_transport{500ms};
    AssistSearch m_link{m_state, m_transport};
    AssistDispatcher m_dispatcher{m_state, m_view, m_link, m_sink};
};

TEST_F(WindowAssist, NoTool_IsAbsent) {
    m_link.FindAssist();
    EXPECT_EQ(Flags(), std::pair(false, false));
    EXPECT_EQ(m_transport.SendToWindow(0, kAssistRegister, 1, 0), 0);
    EXPECT_EQ(m_transport.SendToWindow(0x12345678, kAssistRegister, 1, 0), 0);
}

TEST_F(WindowAssist, Windows_AreAllVisitedWithTheirTitles) {
    const auto tool = Start(L"UOAssist \u0141\u00e4 \u05e9 \xd83e\xddd9");
    std::map<WindowHandle, std::string> visited;
    m_transport.EnumWindows([&visited](WindowHandle window, std::string_view title) {
        EXPECT_FALSE(visited.contains(window));
        visited.emplace(window, title);
    });
    EXPECT_EQ(visited[tool->Handle()], "UOAssist \u0141\u00e4 \u05e9 \U0001f9d9");
    EXPECT_EQ(visited[HandleOf(m_window)], "ours");
}

// The shell's dialogs bring threads with windows into this program.
TEST_F(WindowAssist, WindowOfAnotherThreadOfOursThatHangs_HoldsNoSearchUp) {
    std::atomic<HWND> window = nullptr;
    std::atomic<bool> over = false;
    std::thread hanging([&] {
        HWND made = CreateWindowExW(0, L"STATIC", L"hangs", WS_OVERLAPPEDWINDOW, 0, 0, 10, 10,
                                    nullptr, nullptr, nullptr, nullptr);
        window = made;
        const auto latest = std::chrono::steady_clock::now() + 5s;
        while (!over && std::chrono::steady_clock::now() < latest) {
            std::this_thread::sleep_for(10ms);
        }
        DestroyWindow(made);
    });
    EXPECT_TRUE(WaitUntil([&] { return window != nullptr; }));
    std::string title;
    const auto start = std::chrono::steady_clock::now();
    m_transport.EnumWindows([&](WindowHandle visited, std::string_view itsTitle) {
        if (visited == HandleOf(window)) {
            title = itsTitle;
        }
    });
    EXPECT_LT(std::chrono::steady_clock::now() - start, 2s);
    EXPECT_EQ(title, "hangs");
    over = true;
    hanging.join();
}

TEST_F(WindowAssist, ToolThatAccepts_IsAskedOnceWithOurWindow) {
    const auto tool = Start();
    m_link.FindAssist();
    EXPECT_EQ(Flags(), std::pair(true, true));
    m_link.FindAssist();
    EXPECT_EQ(tool->Ask(kTellAsked), 1);
    EXPECT_EQ(tool->Ask(kTellRegistered), static_cast<LRESULT>(m_state.MainWindowHandle));
    const LRESULT argument = tool->Ask(kTellArgument);
    EXPECT_GT(argument, 0);
    EXPECT_LT(argument, LRESULT{1} << 31) << "a tool of 32 bits cannot hold it";
    tool->End();
    m_link.FindAssist();
    EXPECT_EQ(Flags(), std::pair(false, false));
}

TEST_F(WindowAssist, ToolThatRefuses_IsAskedTwiceASearch) {
    const auto tool = Start();
    for (const WPARAM answer : {WPARAM{0}, WPARAM{2}, ~WPARAM{0}, WPARAM{1} << 32}) {
        tool->Ask(kSetAnswer, answer);
        const LRESULT before = tool->Ask(kTellAsked);
        m_link.FindAssist();
        EXPECT_EQ(Flags(), std::pair(true, false)) << answer;
        EXPECT_EQ(tool->Ask(kTellAsked), before + 2);
    }
    tool->Ask(kSetAnswer, 1);
    m_link.FindAssist();
    EXPECT_EQ(Flags(), std::pair(true, true));
}

TEST_F(WindowAssist, OtherTitles_AreNoTool) {
    const auto small = Start(L"uoassist 5.0");
    const auto before = Start(L" UOAssist");
    m_link.FindAssist();
    EXPECT_EQ(Flags(), std::pair(false, false));
    const auto alone = Start(L"UOAssist");
    m_link.FindAssist();
    EXPECT_EQ(m_state.AssistWindow, alone->Handle());
}

TEST_F(WindowAssist, TwoTools_TheOneEnumeratedLastIsTalkedTo) {
    const auto one = Start(L"UOAssist one");
    const auto other = Start(L"UOAssist other");
    WindowHandle last = 0;
    m_transport.EnumWindows([&](WindowHandle window, std::string_view) {
        if (window == one->Handle() || window == other->Handle()) {
            last = window;
        }
    });
    m_link.FindAssist();
    EXPECT_EQ(m_state.AssistWindow, last);
    EXPECT_EQ(one->Ask(kTellAsked) + other->Ask(kTellAsked), 1);
}

struct ReagentRow {
    i32 wParam;
    i32 reagent;
};

constexpr ReagentRow kReagentRows[] = {
    {1, 3}, {2, 6},   {3, 5},    {4, 8},    {5, 1},    {6, 7},    {7, 2},
    {8, 4}, {100, 9}, {101, 11}, {102, 10}, {103, 12}, {104, 13},
};

constexpr std::pair<i32, i32> kSpellRows[] = {
    {101, 72}, {102, 68}, {103, 66}, {104, 64}, {105, 67}, {106, 71}, {107, 77},
    {108, 70}, {109, 65}, {110, 73}, {111, 74}, {112, 75}, {113, 79}, {114, 78},
    {115, 76}, {116, 69}, {117, 95}, {201, 80}, {202, 81}, {203, 83}, {204, 86},
    {205, 85}, {206, 87}, {207, 88}, {208, 89}, {209, 82}, {210, 84},
};

// Every row of the messages, from another process: sent as the tool does it, and posted.
class WindowAssistReports : public WindowAssist, public testing::WithParamInterface<bool> {
  protected:
    void SetUp() override {
        WindowAssist::SetUp();
        m_tool = StartLinked();
        m_posted = GetParam();
    }
    std::vector<std::string> Report(std::uint32_t number, i32 wParam, i32 lParam) {
        return WindowAssist::Report(*m_tool, number, wParam, lParam, m_posted);
    }

    std::unique_ptr<PeerProcess> m_tool;
    bool m_posted = false;
};

INSTANTIATE_TEST_SUITE_P(SentAndPosted, WindowAssistReports, testing::Values(false, true),
                         [](const auto& suite) { return suite.param ? "Posted" : "Sent"; });

TEST_P(WindowAssistReports, Stock_EveryReagent_GoesToItsCell) {
    m_state.CurrentReagentBag = 4;
    i32 count = -3;
    for (const ReagentRow& row : kReagentRows) {
        SCOPED_TRACE(row.wParam);
        StockTable expected = m_state.ReagentStock;
        expected(row.reagent, 4) = static_cast<i16>(++count);
        const auto log = Report(kAssistStock, row.wParam, count);
        EXPECT_EQ(m_state.ReagentStock, expected);
        EXPECT_THAT(log, Contains("caption Count"));
        if (count != 0) {
            EXPECT_THAT(log, Contains("counter " + std::to_string(row.reagent) + ' ' +
                                      std::to_string(count)));
        }
    }
}

TEST_P(WindowAssistReports, Stock_TithesAndUnknownNumbers) {
    EXPECT_THAT(Report(kAssistStock, 200, 2000000000), Contains("tithes 2000000000"));
    EXPECT_EQ(m_state.CurrentTithing, 2000000000);
    EXPECT_THAT(Report(kAssistStock, 200, -5), Contains("tithes -5"));
    for (const i32 unknown : {0, 9, 99, 105, 199, 201, -1, 1 << 30}) {
        EXPECT_THAT(Report(kAssistStock, unknown, 77), ElementsAre("caption Count", "enable"));
    }
}

TEST_P(WindowAssistReports, Cast_EveryNumber_DebitsItsRow) {
    for (i32 number = 1; number <= 64; ++number) {
        EXPECT_THAT(Report(kAssistCast, number, 0),
                    Contains("debit " + std::to_string(number - 1)));
    }
    for (const auto& [number, spell] : kSpellRows) {
        EXPECT_THAT(Report(kAssistCast, number, 0), Contains("debit " + std::to_string(spell - 1)))
            << number;
    }
    for (const i32 ignored : {250, 251, 1000, 0x7fffffff}) {
        EXPECT_TRUE(Report(kAssistCast, ignored, 0).empty()) << ignored;
    }
    EXPECT_TRUE(m_sink.failures.empty());
    EXPECT_THAT(Report(kAssistCast, 118, 0),
                Contains("box Unsupported Necromancer or Paladin spell number 118 has been cast."));
    EXPECT_EQ(m_sink.failures.size(), 1U);
    Report(kAssistCast, -1, 0);
    EXPECT_EQ(m_sink.failures.size(), 2U);
}

TEST_P(WindowAssistReports, MageryStatsAndSkills_GoToTheirVariables) {
    EXPECT_THAT(Report(kAssistMagery, 87, 0), Contains("skill 87"));
    EXPECT_EQ(m_state.Magery, 87);
    EXPECT_THAT(Report(kAssistStats, 110, 93), Contains("int 110"));
    EXPECT_EQ(m_state.Intelligence, 110);
    EXPECT_EQ(m_state.CurrentMana, 93);
    Report(kAssistStats, -7, -1);
    EXPECT_EQ(m_state.Intelligence, -7);
    EXPECT_EQ(m_state.CurrentMana, -1);
    Report(kAssistSkill, 0x10, 999);
    Report(kAssistSkill, 0x20, 1000);
    Report(kAssistSkill, 0x31, 755);
    Report(kAssistSkill, 0x33, -19);
    Report(kAssistSkill, 50, 600);
    EXPECT_EQ(m_state.EvalInt, 99);
    EXPECT_EQ(m_state.SpiritSpeak, 100);
    EXPECT_EQ(m_state.Necro, 75);
    EXPECT_EQ(m_state.Chivalry, -1);
}

TEST_P(WindowAssistReports, There_SearchesWhileNotLinked) {
    m_state.AssistLinked = false;
    m_state.AssistWindow = 0;
    Report(kAssistThere, 0, 0);
    EXPECT_TRUE(m_state.AssistLinked);
    EXPECT_EQ(m_state.AssistWindow, m_tool->Handle());
}

TEST_P(WindowAssistReports, ValueThatDoesNotFit_FailsInTheGuardAndTheToolGoesOn) {
    Report(kAssistStock, 1, 40000);
    EXPECT_EQ(m_sink.failures.size(), 1U);
    EXPECT_EQ(m_state.ReagentStock(3, 0), 0);
    Report(kAssistStock, 1, 40);
    EXPECT_EQ(m_state.ReagentStock(3, 0), 40);
}

TEST_P(WindowAssistReports, Count_BringsAllReports) {
    m_tool->Ask(kSetReport, m_posted ? 1 : 0, kAssistStock);
    m_link.RequestCount();
    const auto counted = [this] {
        ServeEvents();
        return m_state.CurrentTithing == 1200;
    };
    // Sent ones have come before the request is answered.
    EXPECT_TRUE(m_posted ? WaitUntil(counted) : m_state.CurrentTithing == 1200);
    for (const ReagentRow& row : kReagentRows) {
        EXPECT_EQ(m_state.ReagentStock(row.reagent, 0), 1000 + row.wParam);
    }
}

TEST_F(WindowAssist, OtherMessages_AreTheWindowsOwn) {
    const auto tool = StartLinked();
    tool->Ask(kSetReport, 0, kOther);
    EXPECT_EQ(tool->Ask(kReport, 1, 2), 4711);
    tool->Ask(kSetReport, 0, kAssistStock + 6);
    EXPECT_EQ(tool->Ask(kReport, 1, 2), 0);
    EXPECT_TRUE(m_view.log.empty());
}

TEST_F(WindowAssist, ReportsBeforeAndAfterTheHook_AreLost) {
    const auto tool = Start();
    m_link.FindAssist();
    EXPECT_TRUE(Report(*tool, kAssistMagery, 50, 0, false).empty());
    m_link.HookWindow();
    EXPECT_FALSE(Report(*tool, kAssistMagery, 60, 0, false).empty());
    m_link.UnhookWindow();
    EXPECT_TRUE(Report(*tool, kAssistMagery, 70, 0, false).empty());
    EXPECT_EQ(m_state.Magery, 60);
    EXPECT_EQ(std::bit_cast<WNDPROC>(GetWindowLongPtrW(m_window, GWLP_WNDPROC)),
              &OrdinaryProcedure);
}

TEST_F(WindowAssist, ProcedureReplacedOnTop_UnhookLeavesTheWindowWorking) {
    const auto tool = StartLinked();
    const auto ours =
        SetWindowLongPtrW(m_window, GWLP_WNDPROC, GetWindowLongPtrW(m_window, GWLP_WNDPROC));
    static WNDPROC below = nullptr;
    below = std::bit_cast<WNDPROC>(ours);
    const WNDPROC onTop = [](HWND window, UINT number, WPARAM wParam, LPARAM lParam) {
        return CallWindowProcW(below, window, number, wParam, lParam);
    };
    SetWindowLongPtrW(m_window, GWLP_WNDPROC, std::bit_cast<LONG_PTR>(onTop));
    m_link.UnhookWindow();
    EXPECT_TRUE(Report(*tool, kAssistMagery, 70, 0, false).empty());
    tool->Ask(kSetReport, 0, kOther);
    EXPECT_EQ(tool->Ask(kReport, 1, 2), 4711);
    SetWindowLongPtrW(m_window, GWLP_WNDPROC, ours);
}

TEST_F(WindowAssist, ToolThatHangs_IsWaitedForOnceAndThenLeftAloneUntilItStirs) {
    const auto tool = StartLinked();
    tool->Ask(kHangAtCount, 1500);
    auto start = std::chrono::steady_clock::now();
    m_link.RequestCount();
    const auto waited = std::chrono::steady_clock::now() - start;
    EXPECT_GE(waited, 450ms);
    EXPECT_LT(waited, 900ms);
    for (int search = 0; search < 3; ++search) {
        start = std::chrono::steady_clock::now();
        m_link.RequestCount();
        EXPECT_LT(std::chrono::steady_clock::now() - start, 200ms);
    }
    ASSERT_TRUE(WaitUntil([this] {
        ServeEvents();
        return m_state.CurrentTithing == 1200;
    }));
    m_state.CurrentTithing = 0;
    m_link.RequestCount();
    EXPECT_EQ(m_state.CurrentTithing, 1200);
}

TEST_F(WindowAssist, ToolThatHangsAtTheSearch_HoldsItUpOnce) {
    const auto tool = Start();
    tool->Tell(kHang, 2000);
    std::this_thread::sleep_for(100ms);
    const auto start = std::chrono::steady_clock::now();
    m_link.FindAssist();
    m_link.FindAssist();
    EXPECT_LT(std::chrono::steady_clock::now() - start, 1000ms);
    EXPECT_EQ(Flags(), std::pair(true, false));
    EXPECT_TRUE(WaitUntil([this] {
        m_link.FindAssist();
        return m_state.AssistRegistered;
    }));
}

// It takes every other message meanwhile, so that it does not look hung.
TEST_F(WindowAssist, ToolThatShowsABoxInsteadOfAnAnswer_IsAskedAtEverLongerIntervals) {
    const auto tool = Start();
    WindowAssistTransport transport(200ms);
    AssistSearch link(m_state, transport);
    tool->Ask(kBoxAtRegistration, 60000);
    const auto start = std::chrono::steady_clock::now();
    auto waited = 0ns;
    while (std::chrono::steady_clock::now() - start < 3s) {
        const auto before = std::chrono::steady_clock::now();
        link.FindAssist();
        waited += std::chrono::steady_clock::now() - before;
        std::this_thread::sleep_for(20ms);
    }
    EXPECT_EQ(Flags(), std::pair(true, false));
    // Twice at once, then after 0.4, 0.8 and 1.6 seconds.
    EXPECT_GE(tool->Ask(kTellAsked), 3);
    EXPECT_LE(tool->Ask(kTellAsked), 5);
    EXPECT_LT(waited, 1700ms);
}

TEST_F(WindowAssist, ToolThatEndsWhileItIsAsked_AnswersZero) {
    const auto tool = StartLinked();
    tool->Ask(kHangAtCount, 5000);
    WindowAssistTransport patient(4000ms);
    std::thread ending([&] {
        std::this_thread::sleep_for(200ms);
        tool->End();
    });
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(patient.SendToWindow(m_state.AssistWindow, kAssistCount, 0, 0), 0);
    EXPECT_LT(std::chrono::steady_clock::now() - start, 3000ms);
    ending.join();
}

// Writes down the counts, and lets events run in the middle of each.
class YieldingReceiver : public MessageReceiver {
  public:
    std::optional<i32> OnMessage(const WindowMessage& message) override {
        if (message.number != kAssistStock) {
            return std::nullopt;
        }
        deepest = std::max(deepest, ++depth);
        counts.push_back(message.lParam);
        ServeEvents();
        --depth;
        return 0;
    }
    std::vector<i32> counts;
    int depth = 0;
    int deepest = 0;
};

TEST_F(WindowAssist, BurstOfPostedReports_ComesInOrderAndDoesNotPileUp) {
    constexpr int kReports = 5000;
    const auto tool = StartLinked();
    YieldingReceiver receiver;
    m_transport.Attach(m_state.MainWindowHandle, receiver);
    tool->Ask(kSetReport, 1, kAssistStock);
    tool->Ask(kPostMany, kReports);
    ASSERT_TRUE(WaitUntil([&] {
        ServeEvents();
        return receiver.counts.size() == kReports;
    })) << receiver.counts.size();
    std::vector<i32> expected(kReports);
    std::iota(expected.begin(), expected.end(), 1);
    EXPECT_EQ(receiver.counts, expected);
    EXPECT_LE(receiver.deepest, 9);
}

}  // namespace
}  // namespace spellwick
