// The macro keys of the practice game: which key casts which spell. This table is the game's own,
// as a player would set it up in the game's options.
#pragma once

#include <string>
#include <string_view>

namespace spellwick::practice {

struct Modifiers {
    bool ctrl = false;
    bool alt = false;
    bool shift = false;

    bool operator==(const Modifiers&) const = default;
};

// "Ctrl+Alt+Shift+Q": the modifiers always in this order, then the key.
std::string ChordName(Modifiers modifiers, std::string_view key);

// The spell that a chord casts; empty if it is not a macro key. The key is named as on its cap,
// letters in upper case.
std::string_view SpellOfChord(Modifiers modifiers, std::string_view key);

// A spell of Magery by its number, 1 to 64.
std::string_view MagerySpell(int number);

}  // namespace spellwick::practice
