#include "store/file_bytes.h"

#include <fstream>
#include <system_error>

#include "text/runtime_failure.h"

namespace spellwick {

namespace {

namespace fs = std::filesystem;

// A pipe or a device is not even opened: that could wait, or never end.
std::ifstream OpenRegular(const fs::path& file) {
    std::error_code trouble;
    std::ifstream input;
    if (fs::is_regular_file(file, trouble)) {
        input.open(file, std::ios::binary);
    }
    return input;
}

std::string Take(std::ifstream& input, std::uintmax_t count) {
    std::string bytes(static_cast<std::size_t>(count), '\0');
    input.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    bytes.resize(static_cast<std::size_t>(input.gcount()));
    return bytes;
}

bool Write(const fs::path& file, const std::string& bytes) {
    std::ofstream output(file, std::ios::binary | std::ios::trunc);
    output << bytes;
    output.close();
    return output.good();
}

}  // namespace

std::string ReadFileBytes(const fs::path& file, std::uintmax_t mostBytes) {
    std::ifstream input = OpenRegular(file);
    std::error_code trouble;
    const std::uintmax_t size = fs::file_size(file, trouble);
    const bool fits = input.is_open() && !trouble && size <= mostBytes;
    std::string bytes;
    if (fits) {
        bytes = Take(input, size);
    }
    if (!fits || input.bad()) {
        throw RuntimeFailure(FailureKind::kFile,
                             "The file \"" + file.string() + "\" cannot be read.");
    }
    return bytes;
}

std::string FirstFileBytes(const fs::path& file, std::size_t count) {
    std::ifstream input = OpenRegular(file);
    return input.is_open() ? Take(input, count) : std::string();
}

bool ReplaceFileBytes(const fs::path& file, const std::string& bytes) {
    std::error_code trouble;
    if (!fs::exists(file, trouble)) {
        return Write(file, bytes);
    }
    const fs::path target = fs::canonical(file, trouble);
    if (trouble || !fs::is_regular_file(target, trouble) ||
        !std::ofstream(target, std::ios::binary | std::ios::app).is_open()) {
        return false;
    }
    fs::path beside = target;
    beside += ".spellwick-new";
    if (!std::ofstream(beside, std::ios::binary | std::ios::trunc).is_open()) {
        // The file may be writable even if its folder is not.
        return Write(target, bytes);
    }
    const fs::perms rights = fs::status(target, trouble).permissions();
    bool isReplaced = Write(beside, bytes);
    if (isReplaced) {
        fs::permissions(beside, rights, trouble);
        fs::rename(beside, target, trouble);
        isReplaced = !trouble;
    }
    if (!isReplaced) {
        fs::remove(beside, trouble);
    }
    return isReplaced;
}

}  // namespace spellwick
