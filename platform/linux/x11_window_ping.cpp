// How X11ClientWindows learns that a window has read its events.
#include "platform/linux/x11_client_windows.h"

namespace spellwick {

// A program reads its events in order, so its answer to a ping says that it has read all before.
// It answers to the root window, as if to the window manager.
bool X11ClientWindows::WaitUntilRead(WindowHandle window, std::chrono::milliseconds patience) {
    const auto deadline = std::chrono::steady_clock::now() + patience;
    if (window == 0 || !Speaks(window, m_hints.Get()->_NET_WM_PING)) {
        return false;
    }
    ListenToRoot(kRootEvents | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY);
    // Wine answers when it has queued the keys for its program, and reads more events when the
    // program has taken them all: a second answer says that.
    const bool read =
        Answers(window, deadline) && (!FollowsKeyMapLate(window) || Answers(window, deadline));
    ListenToRoot(kRootEvents);
    return read;
}

bool X11ClientWindows::Answers(xcb_window_t window,
                               std::chrono::steady_clock::time_point deadline) const {
    const xcb_timestamp_t time = ServerTime();
    Tell(window, m_hints.Get()->_NET_WM_PING, time);
    return ArrivesPong(window, time, deadline);
}

bool X11ClientWindows::ArrivesPong(xcb_window_t window, xcb_timestamp_t time,
                                   std::chrono::steady_clock::time_point deadline) const {
    return WaitForEvent(deadline, [&](const xcb_generic_event_t& event) {
        if ((event.response_type & 0x7f) != XCB_CLIENT_MESSAGE) {
            return false;
        }
        const void* untyped = &event;
        const auto& message = *static_cast<const xcb_client_message_event_t*>(untyped);
        const auto& data = message.data.data32;
        return message.window == m_connection.Root() &&
               message.type == m_hints.Get()->WM_PROTOCOLS &&
               data[0] == m_hints.Get()->_NET_WM_PING && data[1] == time && data[2] == window;
    });
}

}  // namespace spellwick
