#include "platform/linux/folder_owner.h"

#include <array>
#include <cerrno>
#include <charconv>
#include <chrono>
#include <string>
#include <thread>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include "platform/linux/open_settings_store.h"

namespace spellwick {

namespace {

std::filesystem::path LockFile(const std::filesystem::path& folder) {
    return folder / "lock";
}

}  // namespace

Ownership OwnFolder(const std::filesystem::path& folder) {
    if (!MakeFolder(folder)) {
        return {};
    }
    FileDescriptor lock(
        open(LockFile(folder).c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NONBLOCK | O_NOCTTY, 0600));
    if (!lock) {
        return {};
    }
    if (flock(lock.Number(), LOCK_EX | LOCK_NB) != 0) {
        return {.another = errno == EWOULDBLOCK, .owner = nullptr};
    }
    // A dead owner's window must not be taken for ours. Emptying the file would do, but a file
    // system with a journal takes milliseconds to free the block. A full disk leaves that way only.
    if (pwrite(lock.Number(), "\n", 1, 0) != 1 && ftruncate(lock.Number(), 0) != 0) {
        return {};
    }
    return {.another = false,
            .owner = std::unique_ptr<SettingsOwner>(new FolderOwner(std::move(lock)))};
}

void FolderOwner::SetWindow(WindowHandle window) {
    const std::string text = std::to_string(window) + "\n";
    // The first digit comes last: until then the first line is empty for those who read it.
    // Without the window a second start ends as well, and brings nothing to the front.
    if (pwrite(m_lock.Number(), text.data() + 1, text.size() - 1, 1) ==
        static_cast<ssize_t>(text.size() - 1)) {
        static_cast<void>(pwrite(m_lock.Number(), text.data(), 1, 0));
    }
}

std::optional<WindowHandle> WindowOfOwner(const std::filesystem::path& folder) {
    constexpr int kTries = 10;
    for (int tries = 0; tries < kTries; ++tries) {
        const FileDescriptor file(open(LockFile(folder).c_str(), O_RDONLY | O_CLOEXEC));
        std::array<char, 32> text{};
        const ssize_t length = file ? read(file.Number(), text.data(), text.size()) : 0;
        WindowHandle window = 0;
        const char* const end = text.data() + (length > 0 ? length : 0);
        const auto [stop, error] = std::from_chars(text.data(), end, window);
        if (error == std::errc{} && stop != end && *stop == '\n') {
            return window;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return std::nullopt;
}

}  // namespace spellwick
