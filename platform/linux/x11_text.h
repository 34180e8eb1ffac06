// Text properties of X windows as UTF-8.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace spellwick {

enum class X11TextForm : std::uint8_t {
    kUtf8,
    kLatin1,       // the type STRING
    kCompoundText  // ISO 2022: Latin and other one-byte alphabets and UTF-8 stretches are read
};

// Always valid UTF-8, up to the first NUL. Unreadable parts become U+FFFD.
std::string X11Text(X11TextForm form, std::string_view bytes);

}  // namespace spellwick
