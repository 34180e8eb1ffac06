#include "platform/linux/x11_desktop.h"

#include <array>
#include <csignal>
#include <cstdlib>
#include <string_view>

#include <spawn.h>
#include <sys/types.h>
#include <sys/wait.h>
#include <unistd.h>
#include <xcb/xcb.h>

extern char** environ;

namespace spellwick {

namespace {

constexpr std::uint32_t kRemoveState = 0;
constexpr std::uint32_t kAddState = 1;
constexpr std::uint32_t kFromApplication = 1;

struct FreeReply {
    void operator()(void* reply) const { std::free(reply); }
};

xcb_atom_t Intern(xcb_connection_t* connection, std::string_view name) {
    const xcb_intern_atom_cookie_t cookie =
        xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(name.size()), name.data());
    const std::unique_ptr<xcb_intern_atom_reply_t, FreeReply> reply(
        xcb_intern_atom_reply(connection, cookie, nullptr));
    return reply ? reply->atom : XCB_ATOM_NONE;
}

// Starts the desktop's opener. It is the child of a child that ends at once, so that nobody has to
// wait for it.
bool StartOpener(const std::string& argument) {
    const std::array<const char*, 6> words{
        "sh",
        "-c",
        R"(command -v xdg-open >/dev/null 2>&1 || exit 127; xdg-open "$1" >/dev/null 2>&1 &)",
        "sh",
        argument.c_str(),
        nullptr};
    pid_t child = 0;
    if (posix_spawnp(&child, words[0], nullptr, nullptr, const_cast<char* const*>(words.data()),
                     environ) != 0) {
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

void X11Desktop::Disconnect::operator()(xcb_connection_t* connection) const {
    xcb_disconnect(connection);
}

X11Desktop::X11Desktop() {
    int screenNumber = 0;
    m_connection.reset(xcb_connect(nullptr, &screenNumber));
    if (!IsUp()) {
        return;
    }
    xcb_screen_iterator_t screen = xcb_setup_roots_iterator(xcb_get_setup(m_connection.get()));
    for (; screen.rem > 1 && screenNumber > 0; --screenNumber) {
        xcb_screen_next(&screen);
    }
    m_root = screen.data->root;
}

bool X11Desktop::IsUp() const {
    return xcb_connection_has_error(m_connection.get()) == 0;
}

void X11Desktop::Beep() {
    if (IsUp()) {
        xcb_bell(m_connection.get(), 0);
        xcb_flush(m_connection.get());
    }
}

bool X11Desktop::OpenDocument(const std::filesystem::path& file) {
    std::error_code trouble;
    return std::filesystem::is_regular_file(file, trouble) && StartOpener(file.string());
}

bool X11Desktop::OpenWebPage(const std::string& address) {
    return StartOpener(address);
}

bool X11Desktop::SetTopMost(WindowHandle window, bool topMost) {
    if (!IsUp() || window == 0) {
        return false;
    }
    xcb_connection_t* connection = m_connection.get();
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = window;
    event.type = Intern(connection, "_NET_WM_STATE");
    event.data.data32[0] = topMost ? kAddState : kRemoveState;
    event.data.data32[1] = Intern(connection, "_NET_WM_STATE_ABOVE");
    event.data.data32[3] = kFromApplication;
    static_assert(sizeof(event) == 32);
    xcb_send_event(connection, 0, m_root,
                   XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                   reinterpret_cast<const char*>(&event));
    xcb_flush(connection);
    return IsUp();
}

}  // namespace spellwick
