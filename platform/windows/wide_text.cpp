#include "platform/windows/wide_text.h"

#include "platform/utf8.h"

namespace spellwick {

namespace {

constexpr bool IsHighSurrogate(wchar_t unit) {
    return unit >= 0xd800 && unit < 0xdc00;
}

constexpr bool IsLowSurrogate(wchar_t unit) {
    return unit >= 0xdc00 && unit < 0xe000;
}

}  // namespace

std::wstring WideFromUtf8(std::string_view text) {
    std::wstring wide;
    wide.reserve(text.size());
    while (!text.empty()) {
        const char32_t codePoint = TakeCodePoint(text);
        if (codePoint < 0x10000) {
            wide.push_back(static_cast<wchar_t>(codePoint));
        } else {
            wide.push_back(static_cast<wchar_t>(0xd800 + ((codePoint - 0x10000) >> 10)));
            wide.push_back(static_cast<wchar_t>(0xdc00 + ((codePoint - 0x10000) & 0x3ff)));
        }
    }
    return wide;
}

std::string Utf8FromWide(std::wstring_view text) {
    std::string utf8;
    utf8.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        char32_t codePoint = text[i];
        if (IsHighSurrogate(text[i]) && i + 1 < text.size() && IsLowSurrogate(text[i + 1])) {
            codePoint = 0x10000 + ((codePoint - 0xd800) << 10) + (char32_t{text[i + 1]} - 0xdc00);
            ++i;
        }
        AppendUtf8(utf8, codePoint);
    }
    return utf8;
}

std::wstring WideTitle(HWND window) {
    // The title may grow between the two reads: one that fills the room is read again.
    std::wstring title(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
    for (;;) {
        const auto read = static_cast<std::size_t>(
            GetWindowTextW(window, title.data(), static_cast<int>(title.size())));
        if (read + 1 < title.size() || title.size() > 0x100000) {
            title.resize(read);
            return title;
        }
        const auto now = static_cast<std::size_t>(GetWindowTextLengthW(window));
        if (now <= read) {
            title.resize(read);
            return title;
        }
        title.assign(now + 1, L'\0');
    }
}

}  // namespace spellwick
