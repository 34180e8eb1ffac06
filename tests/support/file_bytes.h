// The whole content of a file in a test; empty if it cannot be read.
#pragma once

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

namespace spellwick {

inline std::string BytesOf(const std::filesystem::path& file) {
    std::ostringstream bytes;
    bytes << std::ifstream(file, std::ios::binary).rdbuf();
    return bytes.str();
}

}  // namespace spellwick
