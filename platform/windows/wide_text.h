// Texts as Windows has them, in UTF-16, and windows by their handles.
#pragma once

#include <string>
#include <string_view>

#include <windows.h>

#include "text/number_types.h"

namespace spellwick {

// Bytes that are no UTF-8 become U+FFFD.
std::wstring WideFromUtf8(std::string_view text);

// Half a surrogate pair becomes U+FFFD.
std::string Utf8FromWide(std::wstring_view text);

// The window's title; empty when the window is gone. Asks the system and not the window: one of a
// thread of this program that hangs would hold the usual reading up for ever.
std::wstring WideTitle(HWND window);

inline HWND HwndOf(WindowHandle window) {
    // The significant bits are extended by their sign, as the system does it.
    return static_cast<HWND>(LongToHandle(static_cast<LONG>(window)));
}

inline WindowHandle HandleOf(HWND window) {
    return static_cast<WindowHandle>(HandleToULong(window));
}

}  // namespace spellwick
