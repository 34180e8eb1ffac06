// The single-byte code page of the game client's text files. A byte that has no meaning in it
// stands for the control character of its number, and back.
#pragma once

#include <string>
#include <string_view>

namespace spellwick {

std::string Utf8FromWindows1252(std::string_view bytes);

// A character that the code page lacks becomes a question mark.
std::string Windows1252FromUtf8(std::string_view text);

// The letter's capital within the code page; any other byte as it is.
unsigned char UpperCaseWindows1252(unsigned char letter);

}  // namespace spellwick
