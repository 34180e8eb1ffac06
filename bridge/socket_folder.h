// The folder of the sockets on which assist tools are offered, and a socket in it.
#pragma once

#include <chrono>
#include <filesystem>
#include <stdexcept>
#include <string>

#include "platform/linux/file_descriptor.h"

namespace spellwick::bridge {

// A path and the reason why nothing can be offered there.
class CannotOffer : public std::runtime_error {
  public:
    CannotOffer(const std::filesystem::path& path, const std::string& reason)
        : std::runtime_error(path.string() + ": " + reason) {}
};

class SocketFolder {
  public:
    // Makes the folder and its parent, for this user alone. Throws CannotOffer.
    explicit SocketFolder(std::filesystem::path folder);
    SocketFolder(const SocketFolder&) = delete;
    SocketFolder& operator=(const SocketFolder&) = delete;
    // Leaves the time of its end for the next bridge.
    ~SocketFolder();

    // False while another bridge offers tools here. Removes what a bridge has left behind that was
    // killed.
    bool Lock();

    // A socket that goes and comes back between two searches of Spellwick is not missed by it, and
    // the tool behind it not registered again. So nothing is offered for a while after one has
    // gone.
    void Rest();
    bool Rests() const { return std::chrono::steady_clock::now() < m_restsUntil; }

    std::filesystem::path PathOf(const std::string& name) const { return m_path / name; }
    // A socket that listens and does not block. Throws CannotOffer.
    FileDescriptor Listen(const std::string& name) const;
    void Remove(const std::string& name) const;

  private:
    std::filesystem::path m_path;
    FileDescriptor m_folder;
    FileDescriptor m_lock;
    bool m_isLocked = false;
    std::chrono::steady_clock::time_point m_restsUntil{};
};

// How the sockets' names begin and end.
inline constexpr const char* kSocketStart = "wine-";
inline constexpr const char* kSocketEnd = ".sock";

// The next connection; none if nobody waits, or another user.
FileDescriptor AcceptOwn(const FileDescriptor& listener);

}  // namespace spellwick::bridge
