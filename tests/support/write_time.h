// The time at which a file or a folder was last written, set by a test.
#pragma once

#include <filesystem>

namespace spellwick {

// std::runtime_error if it cannot be set. The standard library sets none of folders on Windows.
void SetWriteTime(const std::filesystem::path& path, std::filesystem::file_time_type time);

}  // namespace spellwick
