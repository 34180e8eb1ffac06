// What the practice programs share: the window class and the message loop.
#pragma once

#include <string>
#include <string_view>

#include <windows.h>

namespace spellwick::practice {

// Takes ASCII only, which is all that the roster and the tables contain.
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
    windowClass.hIcon = LoadIconW(instance, MAKEINTRESOURCEW(1));
    windowClass.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    windowClass.hbrBackground = GetSysColorBrush(background);
    RegisterClassW(&windowClass);
}

// Dispatches messages until the program is told to end. In the window `dialogKeys`, Tab and Space
// work the buttons; it may be null.
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
