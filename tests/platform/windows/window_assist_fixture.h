// A window of ours that listens to an assist tool in another process.
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>

#include "link/assist_dispatcher.h"
#include "link/assist_messages.h"
#include "link/assist_search.h"
#include "platform/windows/window_assist_transport.h"
#include "tests/platform/windows/peer_process.h"
#include "tests/support/recording_assist_view.h"

namespace spellwick {

// The commands of the tests' tool.
inline constexpr UINT kSetAnswer = 1;
inline constexpr UINT kTellAsked = 2;
inline constexpr UINT kTellRegistered = 3;
inline constexpr UINT kTellArgument = 4;
inline constexpr UINT kSetReport = 5;
inline constexpr UINT kReport = 6;
inline constexpr UINT kPostMany = 7;
inline constexpr UINT kHang = 8;
inline constexpr UINT kHangAtCount = 9;
inline constexpr UINT kBoxAtRegistration = 10;

inline constexpr UINT kOther = WM_USER + 7;

class SinkThatCounts : public FailureSink {
  public:
    void OnUncaughtFailure(const std::exception& failure, std::string_view /*action*/) override {
        failures.emplace_back(failure.what());
    }
    std::vector<std::string> failures;
};

// What our window does when it is asked to close.
inline std::function<void()> onClose;

// A window of ours with its own procedure, like the toolkit's windows.
inline LRESULT CALLBACK OrdinaryProcedure(HWND window, UINT number, WPARAM wParam, LPARAM lParam) {
    if (number == WM_CLOSE && onClose) {
        onClose();
        return 0;
    }
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
        m_view.duringYield = &testing_support::ServeEvents;
    }
    void TearDown() override {
        onClose = nullptr;
        m_transport.Detach();
        DestroyWindow(m_window);
        testing_support::ServeEvents();
    }

    static std::unique_ptr<testing_support::PeerProcess> Start(
        const std::wstring& title = L"UOAssist 5.0 - Mira", const std::wstring& more = L"0") {
        return std::make_unique<testing_support::PeerProcess>(
            L"assist_tool", std::vector<std::wstring>{title, more}, title);
    }

    // Links a tool and listens to its reports.
    std::unique_ptr<testing_support::PeerProcess> StartLinked() {
        auto tool = Start();
        m_link.FindAssist();
        m_link.HookWindow();
        EXPECT_TRUE(m_state.AssistRegistered);
        return tool;
    }

    // Makes the tool report, and returns the effect on the view. Reports that are sent are answered
    // with 0.
    std::vector<std::string> Report(const testing_support::PeerProcess& tool, std::uint32_t number,
                                    i32 wParam, i32 lParam, bool posted) {
        tool.Ask(kSetReport, posted ? 1 : 0, static_cast<LPARAM>(number));
        m_view.log.clear();
        EXPECT_EQ(tool.Ask(kReport, static_cast<WPARAM>(wParam), lParam), 0);
        testing_support::ServeEvents();
        return m_view.TakeLog();
    }

    std::pair<bool, bool> Flags() const { return {m_state.AssistLinked, m_state.AssistRegistered}; }

    HWND m_window = nullptr;
    SharedState m_state;
    RecordingAssistView m_view;
    SinkThatCounts m_sink;
    WindowAssistTransport m_transport{{.answer = std::chrono::milliseconds(500),
                                       .shortAnswer = std::chrono::milliseconds(100),
                                       .firstPause = std::chrono::milliseconds(60000)}};
    AssistSearch m_link{m_state, m_transport};
    AssistDispatcher m_dispatcher{m_state, m_view, m_link, m_sink};
};

}  // namespace spellwick
