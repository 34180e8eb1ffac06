// The searches of the tick on a desktop with many windows.
#include <algorithm>
#include <initializer_list>
#include <iostream>
#include <thread>

#include <gtest/gtest.h>

#include "link/assist_search.h"
#include "link/translated_windows.h"
#include "platform/windows/window_assist_transport.h"
#include "platform/windows/windows_client_windows.h"
#include "tests/platform/windows/peer_process.h"

namespace spellwick {
namespace {

using testing_support::PeerProcess;

class CrowdedDesktop : public testing::Test {
  protected:
    static constexpr double kGoal = 60;  // milliseconds; a tick comes once a second

    // More windows, in another process.
    void Crowd(const std::wstring& windows) {
        const std::wstring title = L"a crowd of " + windows;
        m_peers.push_back(std::make_unique<PeerProcess>(
            L"assist_tool", std::vector<std::wstring>{title, windows}, title));
    }

    int Count() {
        int windows = 0;
        m_transport.EnumWindows([&windows](WindowHandle, std::string_view) { ++windows; });
        return windows;
    }

    // The shortest of several times of one tick's searches, for all clients and the tool. The
    // system is busy with the new windows at first, and the machine with other work: more rounds
    // until one is short enough.
    double MillisecondsOfTick() {
        constexpr std::string_view kClassic[] = {"Ultima Online", "Ultima Online Third Dawn"};
        constexpr std::size_t kRounds = 9;
        constexpr std::size_t kMostRounds = 60;
        std::vector<double> times;
        while (times.size() < kRounds ||
               (times.size() < kMostRounds && *std::ranges::min_element(times) >= kGoal)) {
            const auto start = std::chrono::steady_clock::now();
            EXPECT_EQ(m_clients.FindWindowOfClasses(kClassic), 0U);
            m_link.FindAssist();
            const std::chrono::duration<double, std::milli> took =
                std::chrono::steady_clock::now() - start;
            times.push_back(took.count());
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
        }
        return *std::ranges::min_element(times);
    }

    struct Growth {
        const wchar_t* more = nullptr;
        int atLeast = 0;
    };

    // A tool behind the last crowd is found too.
    void ExpectShortSearches(std::initializer_list<Growth> crowds) {
        for (const Growth& crowd : crowds) {
            Crowd(crowd.more);
            const int windows = Count();
            EXPECT_GE(windows, crowd.atLeast);
            std::this_thread::sleep_for(std::chrono::seconds(1));
            const double milliseconds = MillisecondsOfTick();
            std::cout << "one search of the tick with " << windows << " windows: " << milliseconds
                      << " ms\n";
            RecordProperty("windows" + std::to_string(crowd.atLeast), std::to_string(milliseconds));
            EXPECT_LT(milliseconds, kGoal);
        }
        EXPECT_FALSE(m_state.AssistLinked);
        const std::wstring title = L"UOAssist";
        const PeerProcess tool(L"assist_tool", {title}, title);
        m_link.FindAssist();
        EXPECT_TRUE(m_state.AssistRegistered);
    }

    std::vector<std::unique_ptr<PeerProcess>> m_peers;
    WindowsClientWindows m_windows;
    TranslatedWindows m_clients{m_windows, LoadGameClients().rows};
    WindowAssistTransport m_transport;
    SharedState m_state;
    AssistSearch m_link{m_state, m_transport};
};

TEST_F(CrowdedDesktop, ThousandWindows_AreSearchedWithinATick) {
    ExpectShortSearches({{L"20", 20}, {L"980", 1000}});
}

TEST_F(CrowdedDesktop, TenThousandWindows_AreSearchedWithinATick_Long) {
    ExpectShortSearches({{L"5000", 5000}, {L"5000", 10000}});
}

}  // namespace
}  // namespace spellwick
