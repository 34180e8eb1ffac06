// Names of the registry's keys for sections of any name, and back.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace spellwick {

// Most names are their keys' names. A backslash, a zero and a per cent sign are written as "%5C",
// "%00" and "%25", the empty name as "%". Nothing when that is longer than a key's name may be.
std::optional<std::wstring> KeyNameOfSection(std::wstring_view section);

// The section of such a key name; a per cent sign with nothing of this kind behind it is itself.
std::wstring SectionOfKeyName(std::wstring_view keyName);

// A section that has no key name of its own, being too long or differing from another one only in
// the case of its letters, has a numbered key, which holds the section's name as its default value.
std::wstring NumberedKeyName(int number);
bool IsNumberedKeyName(std::wstring_view keyName);

}  // namespace spellwick
