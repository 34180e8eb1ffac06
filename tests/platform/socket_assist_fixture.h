// A test's own assist tools, and the transport that talks to them over their sockets.
#pragma once

#include <algorithm>
#include <chrono>
#include <ctime>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <poll.h>

#include "platform/linux/socket_assist_transport.h"
#include "tests/support/pace.h"
#include "tests/support/tool_socket.h"

namespace spellwick {

inline constexpr WindowHandle kOwnWindow = 0x1200004;

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
inline std::string WithoutAddress(const std::optional<std::string>& line) {
    return line ? line->substr(0, line->rfind(' ')) : "nothing";
}

inline std::filesystem::path NewFolder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "assistXXXXXX").string();
    return mkdtemp(pattern.data());
}

class SocketAssist : public testing::Test {
  public:
    SocketAssist(const SocketAssist&) = delete;
    SocketAssist& operator=(const SocketAssist&) = delete;

  protected:
    SocketAssist() { testing_support::MakeAssistFolder(m_folder); }
    ~SocketAssist() override { std::filesystem::remove_all(m_top); }

    std::vector<std::string> Titles() {
        std::vector<std::string> titles;
        m_transport.EnumWindows([&](WindowHandle window, std::string_view title) {
            m_window = window;
            titles.emplace_back(title);
        });
        return titles;
    }

    // Connects to a tool and reads its title.
    void Greet(testing_support::ToolSocket& tool, const std::string& title = "UOAssist") {
        std::thread greeter([&] { EXPECT_TRUE(tool.AcceptAndGreet(title)); });
        Titles();
        greeter.join();
        EXPECT_THAT(Titles(), testing::Contains(title));
    }

    // The same for another transport; returns the window.
    static WindowHandle GreetOn(SocketAssistTransport& transport,
                                testing_support::ToolSocket& tool) {
        std::thread greeter([&] { EXPECT_TRUE(tool.AcceptAndGreet("UOAssist")); });
        WindowHandle found = 0;
        transport.EnumWindows([&](WindowHandle window, std::string_view) { found = window; });
        greeter.join();
        EXPECT_NE(found, 0U);
        return found;
    }

    // Serves pending messages, as an event loop does, until `holds` is true or the time has passed.
    bool ServeUntil(const std::function<bool()>& holds,
                    std::chrono::milliseconds patience = std::chrono::seconds(5)) {
        const auto deadline = std::chrono::steady_clock::now() + patience;
        while (!holds() && std::chrono::steady_clock::now() < deadline) {
            if (IsReadable(std::chrono::milliseconds(10))) {
                const auto start = std::chrono::steady_clock::now();
                const auto busyFrom = ProcessorTime();
                m_transport.Service();
                m_longest = std::max(m_longest, ProcessorTime() - busyFrom);
                ++m_services;
                m_late += std::chrono::steady_clock::now() - start > std::chrono::milliseconds(50)
                              ? 1
                              : 0;
            }
        }
        return holds();
    }

    // The same for this time.
    void ServeFor(std::chrono::milliseconds time) {
        ServeUntil([] { return false; }, time);
    }

    // Processor time of this thread, since a busy machine is not the transport's fault.
    static std::chrono::nanoseconds ProcessorTime() {
        timespec used{};
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &used);
        return std::chrono::seconds(used.tv_sec) + std::chrono::nanoseconds(used.tv_nsec);
    }

    // No Service works for long, and hardly any waits.
    void ExpectShortServices() const {
        EXPECT_LT(m_longest, std::chrono::milliseconds(50) * testing_support::kPace);
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

    static constexpr AssistPatience kPatience{.answer = std::chrono::seconds(1),
                                              .shortAnswer = std::chrono::seconds(1),
                                              .firstPause = std::chrono::minutes(1),
                                              .longestPause = std::chrono::minutes(1)};

    std::filesystem::path m_top = NewFolder();
    std::filesystem::path m_folder = m_top / "spellwick" / "assist";
    SocketAssistTransport m_transport{m_folder,
                                      {.answers = kPatience,
                                       .greeting = std::chrono::milliseconds(200),
                                       .title = std::chrono::milliseconds(50),
                                       .service = std::chrono::milliseconds(8)}};
    WritingReceiver m_receiver;
    WindowHandle m_window = 0;
    std::chrono::nanoseconds m_longest{};
    int m_services = 0;
    int m_late = 0;
};

}  // namespace spellwick
