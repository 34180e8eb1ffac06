#include "platform/windows/desktop_windows.h"

#include <bit>

namespace spellwick {

namespace {

BOOL CALLBACK AddWindow(HWND window, LPARAM list) {
    std::bit_cast<std::vector<HWND>*>(list)->push_back(window);
    return TRUE;
}

}  // namespace

// EnumWindows lists the same, but Wine's asks its server about each window on the way.
std::vector<HWND> DesktopWindows() {
    std::vector<HWND> windows;
    EnumDesktopWindows(GetThreadDesktop(GetCurrentThreadId()), &AddWindow,
                       std::bit_cast<LPARAM>(&windows));
    return windows;
}

}  // namespace spellwick
