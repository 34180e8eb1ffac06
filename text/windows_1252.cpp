#include "text/windows_1252.h"

#include <algorithm>
#include <array>

#include "text/utf8.h"

namespace spellwick {

namespace {

constexpr std::size_t kFirst = 0x80;

// The characters of 0x80 to 0x9f.
constexpr std::array<char32_t, 32> kCharacters{
    0x20ac, 0x0081, 0x201a, 0x0192, 0x201e, 0x2026, 0x2020, 0x2021,  //
    0x02c6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008d, 0x017d, 0x008f,  //
    0x0090, 0x2018, 0x2019, 0x201c, 0x201d, 0x2022, 0x2013, 0x2014,  //
    0x02dc, 0x2122, 0x0161, 0x203a, 0x0153, 0x009d, 0x017e, 0x0178,
};

unsigned char ByteOf(char32_t character) {
    if (character < kFirst || (character >= kFirst + kCharacters.size() && character <= 0xff)) {
        return static_cast<unsigned char>(character);
    }
    const auto* const found = std::ranges::find(kCharacters, character);
    return found != kCharacters.end()
               ? static_cast<unsigned char>(kFirst +
                                            static_cast<std::size_t>(found - kCharacters.begin()))
               : static_cast<unsigned char>('?');
}

}  // namespace

std::string Utf8FromWindows1252(std::string_view bytes) {
    std::string text;
    text.reserve(bytes.size());
    for (const char byte : bytes) {
        const std::size_t code = static_cast<unsigned char>(byte);
        const bool inTable = code >= kFirst && code < kFirst + kCharacters.size();
        AppendUtf8(text, inTable ? kCharacters[code - kFirst] : static_cast<char32_t>(code));
    }
    return text;
}

std::string Windows1252FromUtf8(std::string_view text) {
    std::string bytes;
    bytes.reserve(text.size());
    while (!text.empty()) {
        bytes.push_back(static_cast<char>(ByteOf(TakeCodePoint(text))));
    }
    return bytes;
}

unsigned char UpperCaseWindows1252(unsigned char letter) {
    constexpr unsigned char kGap = 0x20;
    constexpr unsigned char kDivision = 0xf7;
    const bool isSmall = (letter >= 'a' && letter <= 'z') ||
                         (letter >= 0xe0 && letter <= 0xfe && letter != kDivision);
    if (isSmall) {
        return static_cast<unsigned char>(letter - kGap);
    }
    switch (letter) {
        case 0x9a:
        case 0x9c:
        case 0x9e:
            return static_cast<unsigned char>(letter - 0x10);
        case 0xff:
            return 0x9f;
        default:
            return letter;
    }
}

}  // namespace spellwick
