// A program that is connected to an assist tool's socket, as Spellwick is.
#pragma once

#include <chrono>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "platform/linux/assist_line.h"
#include "platform/linux/file_descriptor.h"

namespace spellwick::testing_support {

class SocketClient {
  public:
    // Connects to the tool with this title, as soon as it is offered; none after ten seconds.
    static std::optional<SocketClient> Find(const std::filesystem::path& folder,
                                            const std::string& title);
    // How many sockets there are.
    static std::size_t CountSockets(const std::filesystem::path& folder);

    const std::string& Title() const { return m_title; }

    // The answer to a message; nothing if none comes in time. Reports are answered meanwhile.
    std::optional<i32> Ask(std::uint32_t number, i32 wParam = 0, i32 lParam = 0,
                           std::chrono::milliseconds patience = std::chrono::seconds(10));
    // Sends a message and does not wait.
    bool Send(std::uint32_t number, i32 wParam = 0, i32 lParam = 0);
    // Reads until so many reports have come.
    bool WaitReports(std::size_t count,
                     std::chrono::milliseconds patience = std::chrono::seconds(10));
    bool WaitResults(std::size_t count,
                     std::chrono::milliseconds patience = std::chrono::seconds(10));
    // Reads until the tool has gone.
    bool WaitGone(std::chrono::milliseconds patience = std::chrono::seconds(10));
    bool Write(const std::string& text);

    // All that have come and not been taken.
    std::vector<WindowMessage>& Reports() { return m_reports; }
    std::vector<i32>& Results() { return m_results; }

  private:
    explicit SocketClient(FileDescriptor connection) : m_connection(std::move(connection)) {}
    // Reads what comes until then; false once the tool has gone.
    bool ReadSome(std::chrono::steady_clock::time_point deadline);

    FileDescriptor m_connection;
    AssistLineReader m_lines;
    std::string m_title;
    bool m_gone = false;
    std::vector<WindowMessage> m_reports;
    std::vector<i32> m_results;
};

}  // namespace spellwick::testing_support
