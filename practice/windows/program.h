// What the practice programs have in common: a class of windows, and the loop of messages.
#pragma once

#include <string>
#include <string_view>

#include <windows.h>

namespace spellwick::practice {

// Text of ASCII alone, as the roster and the tables have it.
inline std::wstring Wide(std::string_view text) {
    return {text.begin(), text.end()};
}

// `background` is a system colour, for example COLOR_WINDOW.
inline void RegisterWindowClass(HINSTANCE instance, const std::wstring& name, WNDPROC procedure,
                                int background) {
    WNDCLASSW windowClass{};
    windowClass.lpfnWndProc = procedure;
    windowClass.hInstance = instance;
    windowClass.lpszClassName = name.c_str();
    windowClass.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    windowClass.hbrBackground = GetSysColorBrush(background);
    RegisterClassW(&windowClass);
}

// Hands messages on until one says that the program ends. In a window of `dialogKeys` Tab and Space
// work its buttons; null if there is none.
inline void RunMessages(HWND dialogKeys) {
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        if (dialogKeys == nullptr || IsDialogMessageW(dialogKeys, &message) == FALSE) {
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
    }
}

}  // namespace spellwick::practice
