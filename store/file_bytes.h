// Whole files: reads them, and replaces their contents so that nothing is lost on the way.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

namespace spellwick {

// The content of a regular file. RuntimeFailure (file) if it is something else, cannot be read or
// has more than `mostBytes`.
std::string ReadFileBytes(const std::filesystem::path& file, std::uintmax_t mostBytes);

// At most `count` bytes from the beginning of a regular file; none if it cannot be read.
std::string FirstFileBytes(const std::filesystem::path& file, std::size_t count);

// Replaces the contents of a file, or makes it. The bytes are written beside it first, so that
// nothing is lost if the disk is full. False if it is no regular file or cannot be written.
[[nodiscard]] bool ReplaceFileBytes(const std::filesystem::path& file, const std::string& bytes);

}  // namespace spellwick
