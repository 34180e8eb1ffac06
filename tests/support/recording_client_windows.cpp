#include "tests/support/recording_client_windows.h"

#include <algorithm>
#include <utility>

namespace spellwick {

WindowHandle RecordingClientWindows::FindWindowByClass(std::string_view windowClass) {
    Log("find " + std::string(windowClass));
    const auto found = std::ranges::find(windows, windowClass, &Window::windowClass);
    return found == windows.end() ? 0 : found->handle;
}

std::vector<TopLevelWindow> RecordingClientWindows::WindowsOfClasses(
    const std::vector<std::string>& classes) {
    std::vector<TopLevelWindow> found = AllWindows();
    std::erase_if(found, [&](const TopLevelWindow& window) {
        return std::ranges::find(classes, window.windowClass) == classes.end() &&
               std::ranges::find(classes, window.instance) == classes.end();
    });
    return found;
}

std::vector<TopLevelWindow> RecordingClientWindows::AllWindows() {
    std::vector<TopLevelWindow> all;
    for (const Window& window : windows) {
        all.push_back({window.handle, window.windowClass, window.instance, window.title});
    }
    return all;
}

std::string RecordingClientWindows::WindowTitle(WindowHandle window) {
    const Window* found = Find(window);
    return found == nullptr ? std::string() : found->title;
}

bool RecordingClientWindows::SetForegroundWindow(WindowHandle window) {
    Log("foreground " + std::to_string(window));
    const bool exists = Find(window) != nullptr;
    if (exists) {
        foreground = window;
    }
    if (afterSetForeground) {
        afterSetForeground();
    }
    return exists;
}

bool RecordingClientWindows::SetFocus(WindowHandle window) {
    Log("focus " + std::to_string(window));
    const Window* found = Find(window);
    if (found == nullptr || found->refusesFocus) {
        return false;
    }
    focus = window;
    return true;
}

const RecordingClientWindows::Window* RecordingClientWindows::Find(WindowHandle window) const {
    const auto found = std::ranges::find(windows, window, &Window::handle);
    return found == windows.end() ? nullptr : &*found;
}

void RecordingClientWindows::Log(std::string line) {
    if (m_log != nullptr) {
        m_log->push_back(std::move(line));
    }
}

}  // namespace spellwick
