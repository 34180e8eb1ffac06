#include "platform/windows/windows_journal_file.h"

#include <limits>
#include <optional>

#include <windows.h>

namespace spellwick {

namespace {

constexpr std::size_t kLongestRead = std::size_t{64} * 1024 * 1024;

constexpr DWORD kPatience = 1000;  // milliseconds, for a file that somebody else has open

// For a sync and an append at the same time: each writes, and must not keep the other out.
constexpr DWORD kSyncToo = FILE_SHARE_READ | FILE_SHARE_WRITE;

// An open file, closed with its owner.
class File {
  public:
    File(const std::filesystem::path& name, DWORD access, DWORD disposition,
         DWORD share = FILE_SHARE_READ)
        : m_handle(CreateFileW(name.c_str(), access, share, nullptr, disposition,
                               FILE_ATTRIBUTE_NORMAL, nullptr)) {}
    ~File() {
        if (m_handle != INVALID_HANDLE_VALUE) {
            CloseHandle(m_handle);
        }
    }
    File(const File&) = delete;
    File& operator=(const File&) = delete;
    File(File&&) = delete;
    File& operator=(File&&) = delete;

    bool Opened() const { return m_handle != INVALID_HANDLE_VALUE; }

    // Nothing for what is not a file on a disk.
    std::optional<std::size_t> Size() const {
        LARGE_INTEGER size{};
        if (!Opened() || GetFileType(m_handle) != FILE_TYPE_DISK ||
            GetFileSizeEx(m_handle, &size) == 0) {
            return std::nullopt;
        }
        return static_cast<std::size_t>(size.QuadPart);
    }
    bool Write(std::string_view bytes) const {
        DWORD written = 0;
        return bytes.size() <= std::numeric_limits<DWORD>::max() &&
               WriteFile(m_handle, bytes.data(), static_cast<DWORD>(bytes.size()), &written,
                         nullptr) != 0 &&
               written == bytes.size();
    }
    std::string ReadAll(std::size_t size) const {
        std::string bytes(size, '\0');
        DWORD got = 0;
        if (ReadFile(m_handle, bytes.data(), static_cast<DWORD>(size), &got, nullptr) == 0) {
            got = 0;
        }
        bytes.resize(got);
        return bytes;
    }
    bool Flush() const { return FlushFileBuffers(m_handle) != 0; }

  private:
    HANDLE m_handle;
};

// Shares it with everybody: a program that was killed may keep its file open for a moment, and its
// journal is the one to be read. A scanner that shares nothing is waited for.
std::string ReadShared(const std::filesystem::path& name) {
    constexpr DWORD kAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    constexpr DWORD kLookAgain = 50;
    for (DWORD waited = 0;; waited += kLookAgain) {
        const File file(name, GENERIC_READ, OPEN_EXISTING, kAll);
        if (!file.Opened() && GetLastError() == ERROR_SHARING_VIOLATION && waited < kPatience) {
            Sleep(kLookAgain);
            continue;
        }
        const auto size = file.Size();
        return size && *size <= kLongestRead ? file.ReadAll(*size) : std::string();
    }
}

void MakeFolderOf(const std::filesystem::path& file) {
    std::error_code ignored;
    std::filesystem::create_directories(file.parent_path(), ignored);
}

}  // namespace

std::string WindowsJournalFile::Read() {
    std::string bytes = ReadShared(m_file);
    m_size = bytes.size();
    return bytes;
}

bool WindowsJournalFile::Append(std::string_view bytes) {
    if (m_size == 0) {
        MakeFolderOf(m_file);
    }
    const File file(m_file, FILE_APPEND_DATA | FILE_READ_ATTRIBUTES, OPEN_ALWAYS, kSyncToo);
    if (file.Size() != m_size || !file.Write(bytes)) {
        return false;
    }
    m_size += bytes.size();
    return true;
}

bool WindowsJournalFile::Replace(std::string_view bytes) {
    if (bytes.empty()) {
        const File file(m_file, GENERIC_WRITE, TRUNCATE_EXISTING);
        const bool gone = !file.Opened() && (GetLastError() == ERROR_FILE_NOT_FOUND ||
                                             GetLastError() == ERROR_PATH_NOT_FOUND);
        if (!gone && (!file.Opened() || !file.Flush())) {
            return false;
        }
        m_size = 0;
        return true;
    }
    MakeFolderOf(m_file);
    std::filesystem::path beside = m_file;
    beside += L".new";
    {
        const File file(beside, GENERIC_WRITE, CREATE_ALWAYS);
        if (!file.Size() || !file.Write(bytes) || !file.Flush()) {
            return false;
        }
    }
    if (MoveFileExW(beside.c_str(), m_file.c_str(),
                    MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) == 0) {
        DeleteFileW(beside.c_str());
        return false;
    }
    m_size = bytes.size();
    return true;
}

bool WindowsJournalFile::Sync() {
    const File file(m_file, GENERIC_WRITE, OPEN_EXISTING, kSyncToo);
    return file.Opened() && file.Flush();
}

}  // namespace spellwick
