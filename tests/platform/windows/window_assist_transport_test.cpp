// Real window messages between this program's window and an assist tool in another process.
#include "platform/windows/window_assist_transport.h"

#include <algorithm>
#include <atomic>
#include <numeric>
#include <thread>

#include "tests/platform/windows/window_assist_fixture.h"

namespace spellwick {
namespace {

using namespace std::chrono_literals;
using testing_support::ServeEvents;
using testing_support::WaitUntil;

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
    EXPECT_EQ(m_link.AssistWindow(), alone->Handle());
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
    EXPECT_EQ(m_link.AssistWindow(), last);
    EXPECT_EQ(one->Ask(kTellAsked) + other->Ask(kTellAsked), 1);
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
    EXPECT_GE(std::chrono::steady_clock::now() - start, 450ms);
    for (int search = 0; search < 3; ++search) {
        m_link.RequestCount();
    }
    EXPECT_LT(std::chrono::steady_clock::now() - start, 1400ms) << "it was still hanging";
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
    EXPECT_LT(std::chrono::steady_clock::now() - start, 1500ms);
    EXPECT_EQ(Flags(), std::pair(true, false));
    EXPECT_TRUE(WaitUntil([this] {
        m_link.FindAssist();
        return m_state.AssistRegistered;
    }));
}

// It takes every other message in the meantime, so it does not look hung.
TEST_F(WindowAssist, ToolThatShowsABoxInsteadOfAnAnswer_IsAskedAtEverLongerIntervals) {
    const auto tool = Start();
    WindowAssistTransport transport({.answer = 100ms, .shortAnswer = 100ms, .firstPause = 400ms});
    AssistSearch link(m_state, transport);
    tool->Ask(kBoxAtRegistration, 60000);
    const auto start = std::chrono::steady_clock::now();
    while (std::chrono::steady_clock::now() - start < 3s) {
        link.FindAssist();
        std::this_thread::sleep_for(20ms);
    }
    EXPECT_EQ(Flags(), std::pair(true, false));
    // At once, then after 0.4, 0.8 and 1.6 seconds.
    EXPECT_GE(tool->Ask(kTellAsked), 2);
    EXPECT_LE(tool->Ask(kTellAsked), 4);
}

TEST_F(WindowAssist, ToolThatDoesNotAnswerAtTheStart_HoldsItUpForTheShorterTimeOnce) {
    const auto tool = Start();
    WindowAssistTransport transport(
        {.answer = 20000ms, .shortAnswer = 200ms, .firstPause = 60000ms});
    AssistSearch link(m_state, transport);
    link.SetReceiver(m_dispatcher);
    tool->Ask(kBoxAtRegistration, 60000);
    const auto start = std::chrono::steady_clock::now();
    link.FindAssist();
    EXPECT_GE(std::chrono::steady_clock::now() - start, 150ms);
    EXPECT_LT(std::chrono::steady_clock::now() - start, 10s);
    EXPECT_EQ(tool->Ask(kTellAsked), 1);
    EXPECT_EQ(Flags(), std::pair(true, false));
    // From then on a tool has the whole time.
    link.HookWindow();
    const auto slow = Start(L"UOAssist slow");
    slow->Ask(kBoxAtRegistration, 1000);
    EXPECT_EQ(transport.SendToWindow(slow->Handle(), kAssistRegister, 1, 0), 1);
    link.UnhookWindow();
}

TEST_F(WindowAssist, ToolThatEndsWhileItIsAsked_AnswersZero) {
    const auto tool = StartLinked();
    tool->Ask(kHangAtCount, 5000);
    WindowAssistTransport patient({.shortAnswer = 4000ms});
    std::thread ending([&] {
        std::this_thread::sleep_for(200ms);
        tool->End();
    });
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(patient.SendToWindow(m_link.AssistWindow(), kAssistCount, 0, 0), 0);
    EXPECT_LT(std::chrono::steady_clock::now() - start, 3000ms);
    ending.join();
}

// Records the counts, and serves events in the middle of each.
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

std::vector<i32> FirstNumbers(int count) {
    std::vector<i32> numbers(static_cast<std::size_t>(count));
    std::iota(numbers.begin(), numbers.end(), 1);
    return numbers;
}

// The request to close is handled inside the deepest report, before those that wait for its end.
TEST_F(WindowAssist, RequestToCloseAfterPostedReports_OvertakesNone) {
    constexpr int kReports = 14;
    const auto tool = StartLinked();
    YieldingReceiver receiver;
    m_transport.Attach(m_state.MainWindowHandle, receiver);
    std::size_t before = 0;
    onClose = [&] {
        before = receiver.counts.size();
        m_transport.ServePending();
        m_transport.Detach();
    };
    tool->Ask(kSetReport, 1, kAssistStock);
    tool->Ask(kPostMany, kReports);
    PostMessageW(m_window, WM_CLOSE, 0, 0);
    ServeEvents();
    EXPECT_LT(before, std::size_t{kReports}) << "it was to overtake some";
    EXPECT_EQ(receiver.counts, FirstNumbers(kReports));
}

TEST_F(WindowAssist, ReportsStillInTheQueue_AreTakenBeforeTheEnd) {
    constexpr int kReports = 100;
    const auto tool = StartLinked();
    YieldingReceiver receiver;
    m_transport.Attach(m_state.MainWindowHandle, receiver);
    tool->Ask(kSetReport, 1, kAssistStock);
    tool->Ask(kPostMany, kReports);
    m_transport.ServePending();
    m_transport.Detach();
    EXPECT_EQ(receiver.counts, FirstNumbers(kReports));
}

class ReceiverThatGetsMoreEachTime : public MessageReceiver {
  public:
    explicit ReceiverThatGetsMoreEachTime(HWND window) : m_window(window) {}
    std::optional<i32> OnMessage(const WindowMessage& message) override {
        if (message.number != kAssistStock) {
            return std::nullopt;
        }
        PostMessageW(m_window, kAssistStock, 1, 1);
        return 0;
    }

  private:
    HWND m_window;
};

TEST_F(WindowAssist, ReportsWithoutEnd_DoNotHoldTheEndUp) {
    ReceiverThatGetsMoreEachTime receiver(m_window);
    m_transport.Attach(m_state.MainWindowHandle, receiver);
    PostMessageW(m_window, kAssistStock, 1, 1);
    m_transport.ServePending();
    m_transport.Detach();
    MSG message{};
    EXPECT_TRUE(PeekMessageW(&message, m_window, kAssistStock, kAssistStock, PM_REMOVE));
}

}  // namespace
}  // namespace spellwick
