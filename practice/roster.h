// The characters of the practice game and the window titles that go with them.
#pragma once

#include <array>
#include <string>
#include <string_view>

namespace spellwick::practice {

struct Character {
    std::string_view name;
    std::string_view server;
};

inline constexpr std::string_view kWindowClass = "Ultima Online";
inline constexpr std::string_view kLoginTitle = "Ultima Online";

inline constexpr std::array<Character, 3> kRoster{{
    {"Mira Talon", "Atlantic"},
    {"Bran Oakley", "Atlantic"},
    {"Ysolde", "Oak Hill"},
}};

inline std::string TitleOf(const Character& character) {
    return std::string(kLoginTitle) + " - " + std::string(character.name) + " (" +
           std::string(character.server) + ")";
}

}  // namespace spellwick::practice
