#include "tests/support/write_time.h"

namespace spellwick {

void SetWriteTime(const std::filesystem::path& path, std::filesystem::file_time_type time) {
    std::filesystem::last_write_time(path, time);
}

}  // namespace spellwick
