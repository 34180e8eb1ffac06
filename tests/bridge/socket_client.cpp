#include "tests/bridge/socket_client.h"

#include <algorithm>
#include <array>
#include <functional>
#include <thread>

#include <poll.h>
#include <sys/socket.h>

#include "platform/linux/assist_folder.h"

namespace spellwick::testing_support {

using std::chrono::duration_cast;
using std::chrono::milliseconds;
using std::chrono::steady_clock;

std::optional<SocketClient> SocketClient::Find(const std::filesystem::path& folder,
                                               const std::string& title) {
    // A bridge that met the end of a prefix tries again after 15 seconds.
    constexpr std::chrono::seconds kPatience{40};
    const auto deadline = steady_clock::now() + kPatience;
    while (steady_clock::now() < deadline) {
        if (const FileDescriptor open = OpenAssistFolder(folder)) {
            for (const std::string& name : SocketNames(open)) {
                FileDescriptor connection = ConnectToSocket(open, name);
                if (!connection) {
                    continue;
                }
                SocketClient client(std::move(connection));
                while (client.m_title.empty() && client.ReadSome(deadline)) {
                }
                if (client.m_title == title) {
                    return client;
                }
            }
        }
        std::this_thread::sleep_for(milliseconds(20));
    }
    return std::nullopt;
}

std::size_t SocketClient::CountSockets(const std::filesystem::path& folder) {
    const FileDescriptor open = OpenAssistFolder(folder);
    return open ? SocketNames(open).size() : 0;
}

bool SocketClient::ReadSome(steady_clock::time_point deadline) {
    const auto left = duration_cast<milliseconds>(deadline - steady_clock::now());
    pollfd wanted{m_connection.Number(), POLLIN, 0};
    if (m_gone || left.count() <= 0 || poll(&wanted, 1, static_cast<int>(left.count())) <= 0) {
        return false;
    }
    std::array<char, 4096> bytes{};
    const ssize_t count = recv(m_connection.Number(), bytes.data(), bytes.size(), 0);
    if (count <= 0) {
        m_gone = true;
        return false;
    }
    m_lines.Append({bytes.data(), static_cast<std::size_t>(count)});
    while (const auto text = m_lines.TakeLine()) {
        const auto line = ParseAssistLine(*text);
        if (!line) {
            m_gone = true;
        } else if (const auto* greeting = std::get_if<TitleLine>(&*line)) {
            m_title = greeting->title;
        } else if (const auto* result = std::get_if<ResultLine>(&*line)) {
            m_results.push_back(result->number);
        } else if (const auto* send = std::get_if<SendLine>(&*line)) {
            m_reports.push_back(send->message);
            Write(WrittenResult(0));
        }
    }
    return !m_gone;
}

bool SocketClient::Write(const std::string& text) {
    return send(m_connection.Number(), text.data(), text.size(), MSG_NOSIGNAL) ==
           static_cast<ssize_t>(text.size());
}

bool SocketClient::Send(std::uint32_t number, i32 wParam, i32 lParam) {
    return Write(WrittenSend({number, wParam, lParam}));
}

std::optional<i32> SocketClient::Ask(std::uint32_t number, i32 wParam, i32 lParam,
                                     milliseconds patience) {
    const auto deadline = steady_clock::now() + patience;
    m_results.clear();
    if (!Send(number, wParam, lParam)) {
        return std::nullopt;
    }
    while (m_results.empty() && ReadSome(deadline)) {
    }
    return m_results.empty() ? std::nullopt : std::optional(m_results.front());
}

bool SocketClient::WaitReports(std::size_t count, milliseconds patience) {
    const auto deadline = steady_clock::now() + patience;
    while (m_reports.size() < count && ReadSome(deadline)) {
    }
    return m_reports.size() >= count;
}

bool SocketClient::WaitResults(std::size_t count, milliseconds patience) {
    const auto deadline = steady_clock::now() + patience;
    while (m_results.size() < count && ReadSome(deadline)) {
    }
    return m_results.size() >= count;
}

bool SocketClient::WaitGone(milliseconds patience) {
    const auto deadline = steady_clock::now() + patience;
    while (ReadSome(deadline)) {
    }
    return m_gone;
}

}  // namespace spellwick::testing_support
