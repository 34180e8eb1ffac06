// What each key of the keyboard gives at one moment, as a value. The keypad is left out.
#pragma once

#include <cstdint>
#include <vector>

namespace spellwick {

using Keycode = std::uint16_t;

// A set of the system's modifiers, one bit each. The Keymap says which bit is which.
using ModifierMask = std::uint8_t;

// What a key gives: a character, by its code point, or a named key, with a number above all
// characters.
enum class Symbol : std::uint32_t {
    kNothing = 0,
    kFirstNamed = 0x110000,
    kEnter = kFirstNamed,
    kTab,
    kEscape,
    kBackspace,
    kDelete,
    kInsert,
    kHome,
    kEnd,
    kPageUp,
    kPageDown,
    kUp,
    kDown,
    kLeft,
    kRight,
    kClear,
    kHelp,
    kPause,
    kPrint,
    kCapsLock,
    kNumLock,
    kScrollLock,
    kF1,
    kF16 = kF1 + 15,
    kModifier,  // a key that acts as a modifier while it is held
    kOther      // a key that no keystroke string can name
};

constexpr Symbol CharacterSymbol(char32_t character) {
    return static_cast<Symbol>(character);
}
constexpr bool IsCharacter(Symbol symbol) {
    return symbol > Symbol::kNothing && symbol < Symbol::kFirstNamed;
}

// The symbol that a key gives while exactly these of its relevant modifiers are active.
struct KeyLevel {
    ModifierMask modifiers = 0;
    Symbol symbol = Symbol::kNothing;
};

struct Key {
    Keycode code = 0;
    ModifierMask relevant = 0;     // other modifiers make no difference to this key
    std::vector<KeyLevel> levels;  // a combination that is not listed acts like no modifiers
    // The digit or small letter that programs know the key by, whatever it gives; else kNothing.
    Symbol cap = Symbol::kNothing;
};

// A key that can be held for a modifier; never a lock key.
struct ModifierKey {
    Keycode code = 0;
    ModifierMask modifier = 0;  // one bit
};

// What the keys give while another layout group is locked.
struct KeyGroup {
    std::uint8_t number = 0;
    std::vector<Key> keys;  // ordered by code
};

struct Keymap {
    std::vector<Key> keys;                  // in the layout group in force, ordered by code
    std::uint8_t group = 0;                 // its number
    std::vector<KeyGroup> otherGroups;      // those that can be locked in its place
    std::vector<ModifierKey> modifierKeys;  // for each modifier the first one is preferred
    ModifierMask shift = 0;                 // 0: the keyboard has none
    ModifierMask control = 0;
    ModifierMask alt = 0;
    ModifierMask capsLock = 0;
    ModifierMask numLock = 0;
    ModifierMask locked = 0;
    ModifierMask latched = 0;     // locked for the next key only
    std::vector<Keycode> down;    // keys that are held now
    std::vector<Keycode> spares;  // codes that no key uses and that can be given a symbol
};

// What the key gives under these modifiers, by its levels.
Symbol SymbolAt(const Key& key, ModifierMask modifiers);

}  // namespace spellwick
