#include "tests/support/write_time.h"

#include <chrono>
#include <cstdint>
#include <ratio>
#include <stdexcept>
#include <string>

#include <windows.h>

namespace spellwick {

void SetWriteTime(const std::filesystem::path& path, std::filesystem::file_time_type time) {
    using Ticks = std::chrono::duration<std::int64_t, std::ratio<1, 10'000'000>>;
    constexpr std::chrono::seconds kFrom1601{11'644'473'600};  // to 1970
    const auto since1970 = std::filesystem::file_time_type::clock::to_sys(time).time_since_epoch();
    // Nanoseconds since 1601 would overflow.
    const auto ticks = static_cast<std::uint64_t>(
        (std::chrono::duration_cast<Ticks>(since1970) + kFrom1601).count());
    const FILETIME written{static_cast<DWORD>(ticks & 0xFFFFFFFFU),
                           static_cast<DWORD>(ticks >> 32U)};
    HANDLE file = CreateFileW(path.c_str(), GENERIC_READ | FILE_WRITE_ATTRIBUTES,
                              FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                              OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    const bool isSet =
        file != INVALID_HANDLE_VALUE && SetFileTime(file, nullptr, nullptr, &written) != FALSE;
    if (file != INVALID_HANDLE_VALUE) {
        CloseHandle(file);
    }
    if (!isSet) {
        throw std::runtime_error("cannot set the time of " + path.string() + ": error " +
                                 std::to_string(GetLastError()));
    }
}

}  // namespace spellwick
