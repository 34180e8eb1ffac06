#include "platform/linux/assist_folder.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <memory>

#include <dirent.h>
#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>

namespace spellwick {

namespace {

constexpr mode_t kForOthers = S_IRWXG | S_IRWXO;
constexpr mode_t kWrittenByOthers = S_IWGRP | S_IWOTH;
constexpr std::string_view kEnding = ".sock";

struct CloseFolder {
    void operator()(DIR* folder) const { closedir(folder); }
};

// The folder, if it is ours and none of these bits is set.
FileDescriptor OpenOwn(int parent, const char* name, mode_t forbidden) {
    FileDescriptor folder(openat(parent, name, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    struct stat facts {};
    const bool ours = folder && fstat(folder.Number(), &facts) == 0 && facts.st_uid == geteuid() &&
                      (facts.st_mode & forbidden) == 0;
    return ours ? std::move(folder) : FileDescriptor();
}

}  // namespace

std::filesystem::path AssistFolder() {
    const char* runtime = std::getenv("XDG_RUNTIME_DIR");
    // Ignore relative paths (XDG base directory specification).
    const std::filesystem::path parent =
        runtime != nullptr && *runtime == '/'
            ? std::filesystem::path(runtime) / "spellwick"
            : std::filesystem::path("/tmp/spellwick-" + std::to_string(geteuid()));
    return parent / "assist";
}

FileDescriptor OpenAssistFolder(const std::filesystem::path& folder) {
    const FileDescriptor parent = OpenOwn(AT_FDCWD, folder.parent_path().c_str(), kWrittenByOthers);
    return parent ? OpenOwn(parent.Number(), folder.filename().c_str(), kForOthers)
                  : FileDescriptor();
}

std::vector<std::string> SocketNames(const FileDescriptor& folder) {
    std::vector<std::string> names;
    // A separate descriptor, so that reading starts at the top.
    FileDescriptor own(openat(folder.Number(), ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    const std::unique_ptr<DIR, CloseFolder> entries(own ? fdopendir(own.Number()) : nullptr);
    if (entries == nullptr) {
        return names;
    }
    static_cast<void>(own.Release());  // closed with the entries
    while (const dirent* entry = readdir(entries.get())) {
        const std::string_view name = entry->d_name;
        if (name.ends_with(kEnding)) {
            names.emplace_back(name);
        }
    }
    std::ranges::sort(names);
    return names;
}

FileDescriptor ConnectToSocket(const FileDescriptor& folder, const std::string& name) {
    // Go through the open folder: nobody can replace it meanwhile, and its path may have any
    // length.
    const std::string path = "/proc/self/fd/" + std::to_string(folder.Number()) + '/' + name;
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (path.size() >= sizeof address.sun_path) {
        return {};
    }
    std::memcpy(address.sun_path, path.c_str(), path.size() + 1);
    FileDescriptor connection(socket(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
    const auto* const general = reinterpret_cast<const sockaddr*>(&address);
    if (!connection || connect(connection.Number(), general, sizeof address) != 0) {
        return {};
    }
    ucred peer{};
    socklen_t size = sizeof peer;
    const bool ours = getsockopt(connection.Number(), SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0 &&
                      peer.uid == geteuid();
    return ours ? std::move(connection) : FileDescriptor();
}

}  // namespace spellwick
