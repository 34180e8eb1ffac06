#include "platform/linux/x11_connection.h"

#include <fcntl.h>

namespace spellwick {

X11Connection::X11Connection(const std::string& display) {
    m_connection = xcb_connect(display.empty() ? nullptr : display.c_str(), &m_screen);
    if (!Works()) {
        return;
    }
    fcntl(xcb_get_file_descriptor(m_connection), F_SETFD, FD_CLOEXEC);
    auto screen = xcb_setup_roots_iterator(xcb_get_setup(m_connection));
    for (int number = 0; number < m_screen; ++number) {
        xcb_screen_next(&screen);
    }
    m_root = screen.data->root;
}

void X11Connection::DropEvents() const {
    while (OwnReply(xcb_poll_for_event(m_connection))) {
    }
}

bool X11Connection::RoundTrip() const {
    const auto reply = OwnReply(
        xcb_get_input_focus_reply(m_connection, xcb_get_input_focus(m_connection), nullptr));
    DropEvents();
    return reply != nullptr;
}

xcb_atom_t X11Connection::Atom(std::string_view name) const {
    const auto reply = OwnReply(xcb_intern_atom_reply(
        m_connection,
        xcb_intern_atom(m_connection, 0, static_cast<std::uint16_t>(name.size()), name.data()),
        nullptr));
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

}  // namespace spellwick
