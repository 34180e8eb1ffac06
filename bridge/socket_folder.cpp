#include "bridge/socket_folder.h"

#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>

#include "platform/linux/assist_folder.h"

namespace spellwick::bridge {

namespace {

constexpr int kWaiting = 8;
// Longer than from one search of Spellwick to the next.
constexpr std::chrono::milliseconds kRest{1500};
constexpr std::chrono::seconds kClockStep{1};  // of a file's time, as it is read here

std::string Reason() {
    return std::strerror(errno);
}

void MakeOwn(const std::filesystem::path& folder) {
    if (mkdir(folder.c_str(), S_IRWXU) != 0 && errno != EEXIST) {
        throw CannotOffer(folder, Reason());
    }
    struct stat facts {};
    if (lstat(folder.c_str(), &facts) != 0) {
        throw CannotOffer(folder, Reason());
    }
    if (!S_ISDIR(facts.st_mode)) {
        throw CannotOffer(folder, "is no folder");
    }
    if (facts.st_uid != geteuid()) {
        throw CannotOffer(folder, "belongs to another user");
    }
    if (chmod(folder.c_str(), S_IRWXU) != 0) {
        throw CannotOffer(folder, Reason());
    }
}

}  // namespace

SocketFolder::SocketFolder(std::filesystem::path folder) : m_path(std::move(folder)) {
    MakeOwn(m_path.parent_path());
    MakeOwn(m_path);
    m_folder = FileDescriptor(open(m_path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    const std::filesystem::path lock = m_path.parent_path() / "bridge.lock";
    m_lock = FileDescriptor(
        open(lock.c_str(), O_RDWR | O_CREAT | O_NOFOLLOW | O_CLOEXEC, S_IRUSR | S_IWUSR));
    if (!m_folder || !m_lock) {
        throw CannotOffer(m_folder ? lock : m_path, Reason());
    }
}

SocketFolder::~SocketFolder() {
    if (m_isLocked) {
        // Sets the time of the file; one that is new and empty says nothing.
        [[maybe_unused]] const ssize_t count = pwrite(m_lock.Number(), "\n", 1, 0);
    }
}

bool SocketFolder::Lock() {
    if (flock(m_lock.Number(), LOCK_EX | LOCK_NB) != 0) {
        return false;
    }
    m_isLocked = true;
    struct stat facts {};
    const auto now = std::chrono::system_clock::now();
    if (fstat(m_lock.Number(), &facts) == 0 && facts.st_size > 0 &&
        now - std::chrono::system_clock::from_time_t(facts.st_mtime) < kRest + kClockStep) {
        Rest();
    }
    for (const std::string& name : SocketNames(m_folder)) {
        if (name.starts_with(kSocketStart)) {
            Remove(name);
            Rest();
        }
    }
    return true;
}

void SocketFolder::Rest() {
    m_restsUntil = std::chrono::steady_clock::now() + kRest;
}

FileDescriptor SocketFolder::Listen(const std::string& name) const {
    // Go through the open folder: its own path may be too long for a socket's address.
    const std::string path = "/proc/self/fd/" + std::to_string(m_folder.Number()) + '/' + name;
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (path.size() >= sizeof address.sun_path) {
        throw CannotOffer(PathOf(name), "the name is too long");
    }
    std::memcpy(address.sun_path, path.c_str(), path.size() + 1);
    FileDescriptor listener(socket(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
    if (!listener ||
        bind(listener.Number(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
        listen(listener.Number(), kWaiting) != 0) {
        throw CannotOffer(PathOf(name), Reason());
    }
    return listener;
}

void SocketFolder::Remove(const std::string& name) const {
    unlinkat(m_folder.Number(), name.c_str(), 0);
}

FileDescriptor AcceptOwn(const FileDescriptor& listener) {
    FileDescriptor connection(
        accept4(listener.Number(), nullptr, nullptr, SOCK_NONBLOCK | SOCK_CLOEXEC));
    ucred peer{};
    socklen_t size = sizeof peer;
    const bool ours = connection &&
                      getsockopt(connection.Number(), SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0 &&
                      peer.uid == geteuid();
    return ours ? std::move(connection) : FileDescriptor();
}

}  // namespace spellwick::bridge
