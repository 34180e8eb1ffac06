// Parses a keystroke string into the list of keys that it stands for.
#pragma once

#include <string_view>
#include <vector>

#include "platform/keymap.h"

namespace spellwick {

struct Marks {
    bool alt = false;
    bool control = false;
    bool shift = false;

    bool operator==(const Marks&) const = default;
};

// A key to press: a character or a named key, with the modifiers that the text holds for it.
struct Keystroke {
    Marks marks;
    Symbol symbol = Symbol::kNothing;

    bool operator==(const Keystroke&) const = default;
};

// "%" Alt, "^" Ctrl and "+" Shift hold for the next key; at the end of the text they do nothing.
// "{name}" is a named key, without regard to case; "{c}" with a single character is that
// character; any other name is typed literally, braces included. A name cannot contain a brace, so
// a brace that is followed by another is typed. A line end of any kind is Enter; a tab is Tab;
// control characters, which no key gives, are left out. Invalid UTF-8 gives U+FFFD.
std::vector<Keystroke> ParseKeystrokes(std::string_view text);

}  // namespace spellwick
