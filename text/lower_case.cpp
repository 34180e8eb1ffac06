#include "text/lower_case.h"

#include "text/utf8.h"

namespace spellwick {

namespace {

constexpr bool Within(char32_t letter, char32_t first, char32_t last) {
    return letter >= first && letter <= last;
}

// In these stretches capitals and small letters take turns.
char32_t LowerOfPair(char32_t letter, char32_t parityOfCapitals) {
    return letter % 2 == parityOfCapitals ? letter + 1 : letter;
}

char32_t LowerLatinExtended(char32_t letter) {
    if (letter == U'\u0130') {
        return U'i';
    }
    if (letter == U'\u0178') {
        return U'\u00ff';
    }
    if (letter == U'\u0131' || letter == U'\u0138' || letter == U'\u0149' || letter == U'\u017f') {
        return letter;
    }
    const bool oddCapitals = Within(letter, 0x139, 0x148) || Within(letter, 0x179, 0x17e);
    return LowerOfPair(letter, oddCapitals ? 1 : 0);
}

char32_t LowerGreek(char32_t letter) {
    switch (letter) {
        case U'\u0386':
            return U'\u03ac';
        case U'\u038c':
            return U'\u03cc';
        case U'\u038e':
            return U'\u03cd';
        case U'\u038f':
            return U'\u03ce';
        default:
            break;
    }
    if (Within(letter, 0x388, 0x38a)) {
        return letter + 37;
    }
    return Within(letter, 0x391, 0x3ab) && letter != 0x3a2 ? letter + 32 : letter;
}

char32_t LowerCyrillic(char32_t letter) {
    if (letter <= 0x40f) {
        return letter + 80;
    }
    if (letter <= 0x42f) {
        return letter + 32;
    }
    if (Within(letter, 0x460, 0x481) || Within(letter, 0x48a, 0x4bf) || letter >= 0x4d0) {
        return LowerOfPair(letter, 0);
    }
    if (letter == 0x4c0) {
        return 0x4cf;
    }
    return Within(letter, 0x4c1, 0x4ce) ? LowerOfPair(letter, 1) : letter;
}

}  // namespace

char32_t LowerCase(char32_t letter) {
    if (Within(letter, U'A', U'Z')) {
        return letter + 32;
    }
    if (Within(letter, 0xc0, 0xde)) {
        return letter == 0xd7 ? letter : letter + 32;
    }
    if (Within(letter, 0x100, 0x17f)) {
        return LowerLatinExtended(letter);
    }
    if (Within(letter, 0x386, 0x3ab)) {
        return LowerGreek(letter);
    }
    if (Within(letter, 0x400, 0x52f)) {
        return LowerCyrillic(letter);
    }
    if (Within(letter, 0x531, 0x556)) {
        return letter + 48;
    }
    return letter == 0x1e9e ? U'\u00df' : letter;
}

std::string LowerCase(std::string_view text) {
    std::string lower;
    lower.reserve(text.size());
    while (!text.empty()) {
        AppendUtf8(lower, LowerCase(TakeCodePoint(text)));
    }
    return lower;
}

}  // namespace spellwick
