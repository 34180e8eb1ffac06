#include "platform/linux/posix_journal_file.h"

#include <cerrno>
#include <optional>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/linux/file_descriptor.h"

namespace spellwick {

namespace {

constexpr std::size_t kLongestRead = std::size_t{64} * 1024 * 1024;

// The size of a regular file; nothing for anything else.
std::optional<std::size_t> RegularSize(int descriptor) {
    struct stat status {};
    if (descriptor < 0 || fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode)) {
        return std::nullopt;
    }
    return static_cast<std::size_t>(status.st_size);
}

// A pipe or a device of this name must not hold the program up.
FileDescriptor Open(const std::filesystem::path& file, int flags) {
    return FileDescriptor(open(file.c_str(), flags | O_CLOEXEC | O_NONBLOCK | O_NOCTTY, 0600));
}

bool WriteAll(int descriptor, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = write(descriptor, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR) {
            continue;
        }
        if (written <= 0) {
            return false;
        }
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

// A name that is new in a folder is safe only when the folder is on the disk too.
bool SyncFolder(const std::filesystem::path& file) {
    const FileDescriptor folder = Open(file.parent_path(), O_RDONLY | O_DIRECTORY);
    return folder.Number() >= 0 && fsync(folder.Number()) == 0;
}

}  // namespace

std::string PosixJournalFile::Read() {
    std::string bytes;
    const FileDescriptor file = Open(m_file, O_RDONLY);
    const auto size = RegularSize(file.Number());
    if (!size || *size > kLongestRead) {
        return bytes;
    }
    bytes.resize(*size);
    std::size_t done = 0;
    while (done < bytes.size()) {
        const ssize_t got = read(file.Number(), bytes.data() + done, bytes.size() - done);
        if (got < 0 && errno == EINTR) {
            continue;
        }
        if (got <= 0) {
            break;
        }
        done += static_cast<std::size_t>(got);
    }
    bytes.resize(done);
    m_size = done;
    return bytes;
}

bool PosixJournalFile::Append(std::string_view bytes) {
    if (m_size == 0) {
        m_newName = true;
    }
    const FileDescriptor file = Open(m_file, O_WRONLY | O_APPEND | O_CREAT);
    if (RegularSize(file.Number()) != m_size || !WriteAll(file.Number(), bytes)) {
        return false;
    }
    m_size += bytes.size();
    return true;
}

bool PosixJournalFile::Replace(std::string_view bytes) {
    if (bytes.empty()) {
        const FileDescriptor file = Open(m_file, O_WRONLY);
        const bool gone = file.Number() < 0 && errno == ENOENT;
        if (!gone && (!RegularSize(file.Number()) || ftruncate(file.Number(), 0) != 0 ||
                      fdatasync(file.Number()) != 0)) {
            return false;
        }
        m_size = 0;
        return true;
    }
    const std::filesystem::path beside = m_file.string() + ".new";
    {
        const FileDescriptor file = Open(beside, O_WRONLY | O_CREAT | O_TRUNC);
        if (!RegularSize(file.Number()) || !WriteAll(file.Number(), bytes) ||
            fdatasync(file.Number()) != 0) {
            unlink(beside.c_str());
            return false;
        }
    }
    if (rename(beside.c_str(), m_file.c_str()) != 0) {
        unlink(beside.c_str());
        return false;
    }
    m_size = bytes.size();
    return SyncFolder(m_file);
}

bool PosixJournalFile::Sync() {
    const bool newName = m_newName.exchange(false);
    const FileDescriptor file = Open(m_file, O_WRONLY);
    if (file.Number() >= 0 && fdatasync(file.Number()) == 0 && (!newName || SyncFolder(m_file))) {
        return true;
    }
    if (newName) {
        m_newName = true;
    }
    return false;
}

}  // namespace spellwick
