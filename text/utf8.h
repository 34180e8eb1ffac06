// Reads and writes UTF-8, one code point at a time. The output is always valid.
//
// One rule for every function that meets malformed UTF-8, here and in text/characters.h: a byte
// that is not part of a well-formed sequence counts as one character of its own and reads as
// U+FFFD. So a sequence that is cut short, overlong, a surrogate or beyond U+10FFFF is as many
// characters as it has bytes.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace spellwick {

inline constexpr char32_t kReplacementCharacter = 0xfffd;

// What some editors put before the first character of a file in UTF-8.
inline constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

// Takes the first code point off `text`, which must not be empty.
char32_t TakeCodePoint(std::string_view& text);

// A surrogate or a number beyond U+10FFFF is written as U+FFFD.
void AppendUtf8(std::string& text, char32_t codePoint);

// The text with every stray byte replaced by U+FFFD.
std::string ValidUtf8(std::string_view text);

// The path that this text names. The text is UTF-8, whatever the system's own narrow encoding is.
std::filesystem::path PathFromUtf8(std::string_view text);

}  // namespace spellwick
