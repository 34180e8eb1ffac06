#include "platform/windows/wide_text.h"

#include "text/utf16.h"
#include "text/utf8.h"

namespace spellwick {

std::wstring WideFromUtf8(std::string_view text) {
    std::wstring wide;
    wide.reserve(text.size());
    while (!text.empty()) {
        const char32_t codePoint = TakeCodePoint(text);
        if (codePoint < 0x10000) {
            wide.push_back(static_cast<wchar_t>(codePoint));
        } else {
            wide.push_back(static_cast<wchar_t>(HighSurrogate(codePoint)));
            wide.push_back(static_cast<wchar_t>(LowSurrogate(codePoint)));
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
            codePoint = FromSurrogates(codePoint, text[i + 1]);
            ++i;
        }
        AppendUtf8(utf8, codePoint);
    }
    return utf8;
}

std::wstring WideTitle(HWND window) {
    // Longer than any real title, so that the loop ends whatever the system returns.
    constexpr std::size_t kLongest = 0x100000;
    std::wstring title(256, L'\0');
    for (;;) {
        // A title that fills the buffer may be longer. Asking for its length would not help, since
        // it may change between the calls.
        const auto read = static_cast<std::size_t>(
            InternalGetWindowText(window, title.data(), static_cast<int>(title.size())));
        if (read + 1 < title.size() || title.size() >= kLongest) {
            title.resize(read);
            return title;
        }
        title.assign(title.size() * 4, L'\0');
    }
}

}  // namespace spellwick
