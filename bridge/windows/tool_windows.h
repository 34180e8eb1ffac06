// The windows of assist tools that are there, each with a number of its own.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <windows.h>

namespace spellwick::bridge {

struct ToolWindow {
    std::uint32_t id = 0;
    HWND window = nullptr;
    DWORD process = 0;
    int form = 0;
    std::string title;
};

struct ToolChanges {
    std::vector<std::uint32_t> gone;
    std::vector<ToolWindow> titles;  // new windows, and those with another title
};

class ToolWindows {
  public:
    // Looks at all top-level windows. One whose title takes the form of another tool is another
    // window from then on.
    ToolChanges Search();

    // Null if it is not there any more.
    HWND Find(std::uint32_t id) const;
    bool Empty() const { return m_windows.empty(); }

  private:
    std::vector<ToolWindow> m_windows;
    std::uint32_t m_lastId = 0;
};

}  // namespace spellwick::bridge
