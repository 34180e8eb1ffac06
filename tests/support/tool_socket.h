// An assist tool of a test's own: listens on a socket, and reads and writes lines as they stand.
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

    // Takes the next connection; false if none comes in time.
    bool Accept(std::chrono::milliseconds patience = std::chrono::seconds(5));
    // The same, with the greeting.
    bool AcceptAndGreet(const std::string& title);

    // Writes all of it, waiting for the peer as long as it takes; false if the peer has gone.
    bool Write(std::string_view bytes) const;
    // The next line without its end; nothing if none comes in time or the peer has gone.
    std::optional<std::string> ReadLine(
        std::chrono::milliseconds patience = std::chrono::seconds(5));
    // Whether the peer has ended the connection, waited for.
    bool PeerHasGone(std::chrono::milliseconds patience = std::chrono::seconds(5));

    void CloseConnection() { m_connection.Close(); }
    // Nobody can connect any more; the file stays.
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
