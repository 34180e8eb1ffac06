#include "text/utf8.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

#include <utf8/checked.h>
#include <utf8/unchecked.h>

#include "text/utf16.h"

namespace spellwick {

char32_t TakeCodePoint(std::string_view& text) {
    constexpr unsigned char kFirstBeyondAscii = 0x80;
    if (const auto first = static_cast<unsigned char>(text.front()); first < kFirstBeyondAscii) {
        text.remove_prefix(1);
        return first;
    }
    // find_invalid tells whether the first sequence is well-formed without throwing; a sequence
    // that the window cuts off is not the first one.
    constexpr std::size_t kLongestSequence = 4;
    const char* const begin = text.data();
    const char* const window = begin + std::min(text.size(), kLongestSequence);
    if (utf8::find_invalid(begin, window) == begin) {
        text.remove_prefix(1);
        return kReplacementCharacter;
    }
    const char* next = begin;
    const char32_t codePoint = utf8::unchecked::next(next);
    text.remove_prefix(static_cast<std::size_t>(next - begin));
    return codePoint;
}

void AppendUtf8(std::string& text, char32_t codePoint) {
    const bool isScalarValue = codePoint <= 0x10ffff && !IsSurrogate(codePoint);
    utf8::unchecked::append(isScalarValue ? codePoint : kReplacementCharacter,
                            std::back_inserter(text));
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
