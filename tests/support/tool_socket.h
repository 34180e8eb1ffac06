// A test's own assist tool: listens on a socket, and reads and writes raw lines.
#pragma once

#include <chrono>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/linux/file_descriptor.h"

namespace spellwick::testing_support {

// Makes the folder with its parents, for this user alone.
void MakeAssistFolder(const std::filesystem::path& folder);

class ToolSocket {
  public:
    // Listens on folder/name from now on.
    ToolSocket(const std::filesystem::path& folder, const std::string& name);
    ToolSocket(ToolSocket&&) = default;
    ToolSocket& operator=(ToolSocket&&) = default;
    ToolSocket(const ToolSocket&) = delete;
    ToolSocket& operator=(const ToolSocket&) = delete;
    // Removes the socket and ends the connection.
    ~ToolSocket();

    // Accepts the next connection; false if none comes in time.
    bool Accept(std::chrono::milliseconds patience = std::chrono::seconds(5));
    // The same, and sends the title.
    bool AcceptAndGreet(const std::string& title);

    // Writes all of it and waits for the peer as long as needed; false if the peer has gone.
    bool Write(std::string_view bytes) const;
    // The next line without its end; nothing if none comes in time or the peer has gone.
    std::optional<std::string> ReadLine(
        std::chrono::milliseconds patience = std::chrono::seconds(5));
    // Waits for the peer to end the connection; returns whether it has.
    bool PeerHasGone(std::chrono::milliseconds patience = std::chrono::seconds(5));

    void CloseConnection() { m_connection.Close(); }
    // Stops listening and leaves the file.
    void CloseListener() { m_listener.Close(); }
    int Connection() const { return m_connection.Number(); }

  private:
    std::filesystem::path m_path;
    FileDescriptor m_listener;
    FileDescriptor m_connection;
    std::string m_read;
    bool m_gone = false;
};

}  // namespace spellwick::testing_support
