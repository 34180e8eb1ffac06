// All top-level windows of the desktop.
#pragma once

#include <vector>

#include <windows.h>

namespace spellwick {

// Topmost first, as the system lists them; one may be gone by the time it is used.
std::vector<HWND> DesktopWindows();

}  // namespace spellwick
