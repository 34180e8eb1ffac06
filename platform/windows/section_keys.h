// Converts names of sections to names of registry keys, and back.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace spellwick {

// Most names are used unchanged. A backslash, a zero and a per cent sign become "%5C", "%00" and
// "%25", the empty name "%". Nothing if the result is too long for a key's name.
std::optional<std::wstring> KeyNameOfSection(std::wstring_view section);

// The section of such a key name; any other per cent sign stands for itself.
std::wstring SectionOfKeyName(std::wstring_view keyName);

// A section whose name is too long, or differs from another's only in case, has a numbered key with
// the section's name as its default value.
std::wstring NumberedKeyName(int number);
bool IsNumberedKeyName(std::wstring_view keyName);

}  // namespace spellwick
