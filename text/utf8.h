// Reads and writes UTF-8 one code point at a time; whatever comes in, what goes out is valid.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace spellwick {

inline constexpr char32_t kReplacementCharacter = 0xfffd;

// Takes the first code point off `text`, which must not be empty. A byte that does not belong to
// well-formed UTF-8 is taken alone and gives U+FFFD.
char32_t TakeCodePoint(std::string_view& text);

// A surrogate or a number beyond U+10FFFF is written as U+FFFD.
void AppendUtf8(std::string& text, char32_t codePoint);

// The text with every byte that does not belong to well-formed UTF-8 replaced by U+FFFD.
std::string ValidUtf8(std::string_view text);

// The path of this text, which is UTF-8 whatever the system's own narrow texts are.
std::filesystem::path PathFromUtf8(std::string_view text);

}  // namespace spellwick
