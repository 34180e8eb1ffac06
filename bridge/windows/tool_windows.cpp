#include "bridge/windows/tool_windows.h"

#include <array>
#include <bit>
#include <string_view>

#include "bridge/tool_forms.h"

namespace spellwick::bridge {

namespace {

constexpr int kMostLetters = 512;
constexpr int kMostBytes = kMostLetters * 3;

std::string Utf8(const wchar_t* text, int length) {
    std::array<char, kMostBytes> bytes{};
    const int count =
        WideCharToMultiByte(CP_UTF8, 0, text, length, bytes.data(), kMostBytes, nullptr, nullptr);
    return {bytes.data(), static_cast<std::size_t>(count)};
}

BOOL CALLBACK Visit(HWND window, LPARAM found) {
    std::array<wchar_t, kMostLetters> text{};
    // Of another program's window the system keeps the text; a program that hangs is not asked.
    const int length = GetWindowTextW(window, text.data(), kMostLetters);
    if (length <= 0) {
        return TRUE;
    }
    std::string title = Utf8(text.data(), length);
    const int classLength = GetClassNameW(window, text.data(), kMostLetters);
    const int form = FindToolForm(Utf8(text.data(), classLength), title);
    if (form != kNoToolForm) {
        DWORD process = 0;
        GetWindowThreadProcessId(window, &process);
        std::bit_cast<std::vector<ToolWindow>*>(found)->push_back(
            {0, window, process, form, std::move(title)});
    }
    return TRUE;
}

bool AreSame(const ToolWindow& one, const ToolWindow& other) {
    return one.window == other.window && one.process == other.process && one.form == other.form;
}

}  // namespace

ToolChanges ToolWindows::Search() {
    std::vector<ToolWindow> found;
    // EnumWindows lists the same, but Wine's asks its server about each window on the way.
    EnumDesktopWindows(GetThreadDesktop(GetCurrentThreadId()), &Visit,
                       std::bit_cast<LPARAM>(&found));
    ToolChanges changes;
    std::vector<ToolWindow> kept;
    for (ToolWindow& known : m_windows) {
        bool there = false;
        for (ToolWindow& window : found) {
            if (AreSame(known, window)) {
                there = true;
                window.id = known.id;
                if (window.title != known.title) {
                    known.title = window.title;
                    changes.titles.push_back(known);
                }
            }
        }
        if (there) {
            kept.push_back(std::move(known));
        } else {
            changes.gone.push_back(known.id);
        }
    }
    for (ToolWindow& window : found) {
        if (window.id == 0) {
            window.id = ++m_lastId;
            changes.titles.push_back(window);
            kept.push_back(std::move(window));
        }
    }
    m_windows = std::move(kept);
    return changes;
}

HWND ToolWindows::Find(std::uint32_t id) const {
    for (const ToolWindow& window : m_windows) {
        if (window.id == id) {
            return window.window;
        }
    }
    return nullptr;
}

}  // namespace spellwick::bridge
