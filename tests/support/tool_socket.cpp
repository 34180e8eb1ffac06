#include "tests/support/tool_socket.h"

#include <array>
#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>

namespace spellwick::testing_support {

namespace {

using std::chrono::duration_cast;
using std::chrono::milliseconds;
using std::chrono::steady_clock;

bool IsReadable(int descriptor, milliseconds patience) {
    pollfd wanted{descriptor, POLLIN, 0};
    return poll(&wanted, 1, static_cast<int>(patience.count())) > 0;
}

}  // namespace

void MakeAssistFolder(const std::filesystem::path& folder) {
    std::filesystem::create_directories(folder);
    chmod(folder.parent_path().c_str(), S_IRWXU);
    chmod(folder.c_str(), S_IRWXU);
}

ToolSocket::ToolSocket(const std::filesystem::path& folder, const std::string& name)
    : m_path(folder / name), m_listener(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    const int open = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    const FileDescriptor directory(open);
    const std::string path = "/proc/self/fd/" + std::to_string(open) + '/' + name;
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::strncpy(address.sun_path, path.c_str(), sizeof address.sun_path - 1);
    if (bind(m_listener.Number(), reinterpret_cast<const sockaddr*>(&address), sizeof address) !=
            0 ||
        listen(m_listener.Number(), 4) != 0) {
        m_listener.Close();
    }
}

ToolSocket::~ToolSocket() {
    if (m_listener) {
        std::error_code trouble;
        std::filesystem::remove(m_path, trouble);
    }
}

bool ToolSocket::Accept(milliseconds patience) {
    if (!IsReadable(m_listener.Number(), patience)) {
        return false;
    }
    m_connection = FileDescriptor(accept4(m_listener.Number(), nullptr, nullptr, SOCK_CLOEXEC));
    m_read.clear();
    m_gone = false;
    return static_cast<bool>(m_connection);
}

bool ToolSocket::AcceptAndGreet(const std::string& title) {
    return Accept() && Write("title " + title + '\n');
}

bool ToolSocket::Write(std::string_view bytes) const {
    while (!bytes.empty()) {
        const ssize_t count = send(m_connection.Number(), bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (count < 0 && errno != EINTR) {
            return false;
        }
        bytes.remove_prefix(count < 0 ? 0 : static_cast<std::size_t>(count));
    }
    return true;
}

std::optional<std::string> ToolSocket::ReadLine(milliseconds patience) {
    const auto deadline = steady_clock::now() + patience;
    while (true) {
        const std::size_t end = m_read.find('\n');
        if (end != std::string::npos) {
            std::string line = m_read.substr(0, end);
            m_read.erase(0, end + 1);
            return line;
        }
        const auto left = duration_cast<milliseconds>(deadline - steady_clock::now());
        if (m_gone || left.count() < 0 || !IsReadable(m_connection.Number(), left)) {
            return std::nullopt;
        }
        std::array<char, 4096> bytes{};
        const ssize_t count = recv(m_connection.Number(), bytes.data(), bytes.size(), 0);
        m_gone = count <= 0;
        m_read.append(bytes.data(), count > 0 ? static_cast<std::size_t>(count) : 0);
    }
}

bool ToolSocket::PeerHasGone(milliseconds patience) {
    while (ReadLine(patience)) {
        continue;
    }
    return m_gone;
}

}  // namespace spellwick::testing_support
