// Names compared without regard to the case of A to Z, as Windows compares those of files; other
// letters must be the same.
#pragma once

#include <algorithm>
#include <string_view>

namespace spellwick {

constexpr char LowerAscii(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

constexpr bool SameWithoutCase(std::string_view left, std::string_view right) {
    return std::ranges::equal(left, right, {}, LowerAscii, LowerAscii);
}

constexpr bool EndsWithoutCase(std::string_view text, std::string_view end) {
    return text.size() >= end.size() && SameWithoutCase(text.substr(text.size() - end.size()), end);
}

// Windows programs are named by their files.
constexpr bool EndsInExe(std::string_view name) {
    return EndsWithoutCase(name, ".exe");
}

}  // namespace spellwick
