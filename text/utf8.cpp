#include "text/utf8.h"

#include <cstddef>

namespace spellwick {

namespace {

constexpr bool IsScalarValue(char32_t codePoint) {
    return codePoint <= 0x10ffff && (codePoint < 0xd800 || codePoint > 0xdfff);
}

}  // namespace

char32_t TakeCodePoint(std::string_view& text) {
    const auto byte = [&text](std::size_t index) -> char32_t {
        return static_cast<unsigned char>(text[index]);
    };
    const char32_t first = byte(0);
    std::size_t length = 1;
    char32_t smallest = 0;
    char32_t codePoint = first;
    if (first >= 0xf0 && first <= 0xf4) {
        length = 4;
        smallest = 0x10000;
        codePoint = first & 0x07;
    } else if (first >= 0xe0 && first <= 0xef) {
        length = 3;
        smallest = 0x800;
        codePoint = first & 0x0f;
    } else if (first >= 0xc2 && first <= 0xdf) {
        length = 2;
        smallest = 0x80;
        codePoint = first & 0x1f;
    } else if (first >= 0x80) {
        codePoint = kReplacementCharacter;
    }
    bool wellFormed = length <= text.size();
    for (std::size_t index = 1; wellFormed && index < length; ++index) {
        wellFormed = (byte(index) & 0xc0) == 0x80;
        codePoint = (codePoint << 6) | (byte(index) & 0x3f);
    }
    if (!wellFormed || codePoint < smallest || !IsScalarValue(codePoint)) {
        text.remove_prefix(1);
        return kReplacementCharacter;
    }
    text.remove_prefix(length);
    return codePoint;
}

void AppendUtf8(std::string& text, char32_t codePoint) {
    const char32_t code = IsScalarValue(codePoint) ? codePoint : kReplacementCharacter;
    const auto append = [&text](char32_t byte) { text.push_back(static_cast<char>(byte)); };
    if (code < 0x80) {
        append(code);
    } else if (code < 0x800) {
        append(0xc0 | (code >> 6));
        append(0x80 | (code & 0x3f));
    } else if (code < 0x10000) {
        append(0xe0 | (code >> 12));
        append(0x80 | ((code >> 6) & 0x3f));
        append(0x80 | (code & 0x3f));
    } else {
        append(0xf0 | (code >> 18));
        append(0x80 | ((code >> 12) & 0x3f));
        append(0x80 | ((code >> 6) & 0x3f));
        append(0x80 | (code & 0x3f));
    }
}

std::filesystem::path PathFromUtf8(std::string_view text) {
    return {std::u8string(text.begin(), text.end())};
}

std::string ValidUtf8(std::string_view text) {
    std::string valid;
    valid.reserve(text.size());
    while (!text.empty()) {
        AppendUtf8(valid, TakeCodePoint(text));
    }
    return valid;
}

}  // namespace spellwick
