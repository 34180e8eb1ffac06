// The surrogates of UTF-16, two of which stand for a code point beyond U+FFFF.
#pragma once

namespace spellwick {

constexpr bool IsHighSurrogate(char32_t unit) {
    return unit >= 0xd800 && unit < 0xdc00;
}

constexpr bool IsLowSurrogate(char32_t unit) {
    return unit >= 0xdc00 && unit < 0xe000;
}

constexpr bool IsSurrogate(char32_t unit) {
    return IsHighSurrogate(unit) || IsLowSurrogate(unit);
}

constexpr char32_t FromSurrogates(char32_t high, char32_t low) {
    return 0x10000 + ((high - 0xd800) << 10) + (low - 0xdc00);
}

// The two halves of a code point from U+10000 on.
constexpr char32_t HighSurrogate(char32_t codePoint) {
    return 0xd800 + ((codePoint - 0x10000) >> 10);
}

constexpr char32_t LowSurrogate(char32_t codePoint) {
    return 0xdc00 + ((codePoint - 0x10000) & 0x3ff);
}

}  // namespace spellwick
