// The single-byte code page of the game client's text files. A byte without a meaning in it stands
// for the control character with that number, in both directions.
#pragma once

#include <string>
#include <string_view>

namespace spellwick {

std::string Utf8FromWindows1252(std::string_view bytes);

// A character that the code page lacks becomes a question mark.
std::string Windows1252FromUtf8(std::string_view text);

// The capital of a letter within the code page; any other byte unchanged.
unsigned char UpperCaseWindows1252(unsigned char letter);

}  // namespace spellwick
