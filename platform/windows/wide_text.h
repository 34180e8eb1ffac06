// Windows' texts, in UTF-16, and windows by their handles.
#pragma once

#include <string>
#include <string_view>

#include <windows.h>

#include "text/number_types.h"

namespace spellwick {

// Bytes that are no UTF-8 become U+FFFD.
std::wstring WideFromUtf8(std::string_view text);

// An unpaired surrogate becomes U+FFFD.
std::string Utf8FromWide(std::wstring_view text);

// The window's title; empty if the window is gone. Asks the system and not the window, because the
// usual call would wait forever for a hung thread of this program.
std::wstring WideTitle(HWND window);

inline HWND HwndOf(WindowHandle window) {
    // Sign-extend the significant bits, as the system does.
    return static_cast<HWND>(LongToHandle(static_cast<LONG>(window)));
}

inline WindowHandle HandleOf(HWND window) {
    return static_cast<WindowHandle>(HandleToULong(window));
}

}  // namespace spellwick
