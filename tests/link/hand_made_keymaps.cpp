#include "tests/link/hand_made_keymaps.h"

#include <algorithm>
#include <string_view>

#include "text/lower_case.h"

namespace spellwick::hand_made {

namespace {

constexpr std::string_view kUsRows =
    "qwertyuiop"
    "asdfghjkl"
    "zxcvbnm";
constexpr Keycode kFirstLetterKey = 120;

char32_t Capital(char32_t letter) {
    for (char32_t capital = 'A'; capital < 0x530; ++capital) {
        if (capital != letter && LowerCase(capital) == letter) {
            return capital;
        }
    }
    return letter;
}

void AddLetter(Keymap& map, Keycode code, char32_t letter, char32_t levelThree = 0) {
    const Symbol small = CharacterSymbol(letter);
    const Symbol capital = CharacterSymbol(Capital(letter));
    Key key{code, kShift | kCaps, {{0, small}, {kShift, capital}, {kCaps, capital}}};
    if (levelThree != 0) {
        key.relevant = kShift | kCaps | kLevelThree;
        key.levels.push_back({kLevelThree, CharacterSymbol(levelThree)});
    }
    map.keys.push_back(key);
}

void AddPair(Keymap& map, Keycode code, char32_t plain, char32_t shifted, char32_t levelThree = 0) {
    Key key{code, kShift, {{0, CharacterSymbol(plain)}, {kShift, CharacterSymbol(shifted)}}};
    if (levelThree != 0) {
        key.relevant = kShift | kLevelThree;
        key.levels.push_back({kLevelThree, CharacterSymbol(levelThree)});
    }
    map.keys.push_back(key);
}

void AddSingle(Keymap& map, Keycode code, Symbol symbol) {
    map.keys.push_back({code, 0, {{0, symbol}}});
}

void AddRow(Keymap& map, std::u32string_view plain, std::u32string_view shifted,
            std::u32string_view levelThree = U"") {
    for (std::size_t index = 0; index < plain.size(); ++index) {
        AddPair(map, static_cast<Keycode>(kDigitOneKey + index), plain[index], shifted[index],
                index < levelThree.size() && levelThree[index] != U' ' ? levelThree[index] : 0);
    }
}

Keymap Frame() {
    Keymap map;
    map.shift = kShift;
    map.control = kControl;
    map.alt = kAlt;
    map.capsLock = kCaps;
    map.numLock = kNum;
    map.modifierKeys = {{kShiftKey, kShift}, {62, kShift},    {kControlKey, kControl},
                        {105, kControl},     {kAltKey, kAlt}, {kLevelThreeKey, kLevelThree}};
    for (const ModifierKey& key : map.modifierKeys) {
        AddSingle(map, key.code, Symbol::kModifier);
    }
    AddSingle(map, kCapsKey, Symbol::kCapsLock);
    AddSingle(map, kEnterKey, Symbol::kEnter);
    AddSingle(map, 23, Symbol::kTab);
    AddSingle(map, 9, Symbol::kEscape);
    AddSingle(map, kSpaceKey, CharacterSymbol(U' '));
    for (Keycode number = 0; number < 12; ++number) {
        AddSingle(map, kFirstFunctionKey + number,
                  static_cast<Symbol>(static_cast<std::uint32_t>(Symbol::kF1) + number));
    }
    map.spares = {255, 254, 253, 252, 251, 250, 249, 248};
    return map;
}

Keymap Ordered(Keymap map) {
    std::ranges::sort(map.keys, {}, &Key::code);
    return map;
}

}  // namespace

Keycode LetterKey(char letter) {
    return static_cast<Keycode>(kFirstLetterKey + kUsRows.find(letter));
}

Keymap Us() {
    Keymap map = Frame();
    AddRow(map, U"1234567890-=", U"!@#$%^&*()_+");
    for (const char letter : kUsRows) {
        AddLetter(map, LetterKey(letter), static_cast<char32_t>(letter));
    }
    AddPair(map, 110, U'.', U'>');
    AddPair(map, 111, U'/', U'?');
    AddPair(map, 112, U'[', U'{');
    AddPair(map, 113, U']', U'}');
    AddPair(map, 114, U'`', U'~');
    return Ordered(map);
}

Keymap De() {
    Keymap map = Frame();
    AddRow(map, U"1234567890\u00df", U"!\"\u00a7$%&/()=?", U"      {[]}\\");
    for (const char place : kUsRows) {
        const char letter = place == 'y' ? 'z' : place == 'z' ? 'y' : place;
        const char32_t levelThree = letter == 'q' ? U'@' : letter == 'e' ? U'\u20ac' : 0;
        AddLetter(map, LetterKey(place), static_cast<char32_t>(letter), levelThree);
    }
    AddLetter(map, 115, U'\u00e4');
    AddLetter(map, 116, U'\u00f6');
    AddLetter(map, 117, U'\u00fc');
    AddPair(map, 118, U'+', U'*', U'~');
    AddPair(map, 110, U'.', U':');
    return Ordered(map);
}

Keymap Fr() {
    Keymap map = Frame();
    AddRow(map, U"&\u00e9\"'(-\u00e8_\u00e7\u00e0", U"1234567890", U" ~#{[|`\\^@");
    for (const char place : kUsRows) {
        constexpr std::string_view kFrom = "qwaz";
        constexpr std::string_view kTo = "azqw";
        const std::size_t swapped = kFrom.find(place);
        const char letter = swapped == std::string_view::npos ? place : kTo[swapped];
        AddLetter(map, LetterKey(place), static_cast<char32_t>(letter));
    }
    AddPair(map, 110, U';', U'.');
    return Ordered(map);
}

Keymap Ru() {
    Keymap map = Frame();
    AddRow(map, U"1234567890-=", U"!\"\u2116;%:?*()_+");
    constexpr std::u32string_view kLetters =
        U"\u0439\u0446\u0443\u043a\u0435\u043d\u0433\u0448\u0449\u0437"
        U"\u0444\u044b\u0432\u0430\u043f\u0440\u043e\u043b\u0434"
        U"\u044f\u0447\u0441\u043c\u0438\u0442\u044c";
    for (std::size_t index = 0; index < kUsRows.size(); ++index) {
        AddLetter(map, LetterKey(kUsRows[index]), kLetters[index]);
    }
    AddPair(map, 111, U'.', U',');
    return Ordered(map);
}

}  // namespace spellwick::hand_made
