#include "platform/linux/x11_desktop.h"

#include <array>
#include <csignal>
#include <cstdlib>
#include <string_view>

#include <spawn.h>
#include <sys/types.h>
#include <sys/wait.h>

extern char** environ;

namespace spellwick {

namespace {

// Does not wait for what it starts: the opener is the child of a child that exits at once.
constexpr const char* kOpen =
    R"(command -v xdg-open >/dev/null 2>&1 || exit 127; xdg-open "$1" >/dev/null 2>&1 &)";

// A desktop whose tool for kinds of files is missing says nothing; its opener may know.
constexpr const char* kHasProgram =
    R"sh(command -v xdg-mime >/dev/null 2>&1 || exit 0
       kind=$(xdg-mime query filetype "$1" 2>/dev/null </dev/null) && [ -n "$kind" ] || exit 1
       [ -n "$(xdg-mime query default "$kind" 2>/dev/null </dev/null)" ])sh";

// Runs a script of the shell with one argument; true if it ends well.
bool RunScript(const char* script, const std::string& argument) {
    const std::array<const char*, 6> words{"sh", "-c", script, "sh", argument.c_str(), nullptr};
    // Unblock for the opener the signals that this process blocks.
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    sigset_t none;
    sigemptyset(&none);
    posix_spawnattr_setsigmask(&attributes, &none);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGMASK);
    pid_t child = 0;
    const int trouble = posix_spawnp(&child, words[0], nullptr, &attributes,
                                     const_cast<char* const*>(words.data()), environ);
    posix_spawnattr_destroy(&attributes);
    if (trouble != 0) {
        return false;
    }
    int status = 0;
    while (waitpid(child, &status, 0) < 0) {
        if (errno != EINTR) {
            return false;
        }
    }
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

}  // namespace

void X11Desktop::Beep() {
    if (m_connection.Works()) {
        xcb_bell(m_connection.Get(), 0);
        xcb_flush(m_connection.Get());
    }
}

bool X11Desktop::OpenDocument(const std::filesystem::path& file) {
    std::error_code trouble;
    return std::filesystem::is_regular_file(file, trouble) && RunScript(kOpen, file.string());
}

bool X11Desktop::HasProgramFor(const std::filesystem::path& file) {
    return RunScript(kHasProgram, file.string());
}

bool X11Desktop::OpenWebPage(const std::string& address) {
    return RunScript(kOpen, address);
}

bool X11Desktop::SetTopMost(WindowHandle window, bool topMost) {
    if (!m_hints.Work() || window == 0) {
        return false;
    }
    xcb_ewmh_request_change_wm_state(m_hints.Get(), m_connection.Screen(), window,
                                     topMost ? XCB_EWMH_WM_STATE_ADD : XCB_EWMH_WM_STATE_REMOVE,
                                     m_hints.Get()->_NET_WM_STATE_ABOVE, XCB_NONE,
                                     XCB_EWMH_CLIENT_SOURCE_TYPE_NORMAL);
    xcb_flush(m_connection.Get());
    m_connection.DropEvents();
    return m_connection.Works();
}

bool X11Desktop::IsMapped(WindowHandle window) {
    xcb_connection_t* x = m_connection.Get();
    const auto attributes =
        OwnReply(xcb_get_window_attributes_reply(x, xcb_get_window_attributes(x, window), nullptr));
    return attributes != nullptr && attributes->map_state != XCB_MAP_STATE_UNMAPPED;
}

bool X11Desktop::LeaveTaskList(WindowHandle window) {
    if (!m_hints.Work() || window == 0) {
        return false;
    }
    std::array states{m_hints.Get()->_NET_WM_STATE_SKIP_TASKBAR,
                      m_hints.Get()->_NET_WM_STATE_SKIP_PAGER};
    if (IsMapped(window)) {
        xcb_ewmh_request_change_wm_state(m_hints.Get(), m_connection.Screen(), window,
                                         XCB_EWMH_WM_STATE_ADD, states[0], states[1],
                                         XCB_EWMH_CLIENT_SOURCE_TYPE_NORMAL);
        return m_connection.RoundTrip();
    }
    // Before the window is shown, its states are ours to write; the window manager reads them when
    // it maps the window and clears them when the window is hidden.
    xcb_ewmh_set_wm_state(m_hints.Get(), window, static_cast<std::uint32_t>(states.size()),
                          states.data());
    return m_connection.RoundTrip();
}

// Where the window with the focus belongs to this one, Qt sets the focus itself, and a window
// manager that still handles the click puts it back.
bool X11Desktop::Activate(WindowHandle window) {
    if (!m_hints.Work() || window == 0 ||
        !m_hints.ManagerSupports(m_hints.Get()->_NET_ACTIVE_WINDOW)) {
        return false;
    }
    m_hints.RequestActivation(window, XCB_CURRENT_TIME);
    m_connection.DropEvents();
    return m_connection.Works();
}

}  // namespace spellwick
