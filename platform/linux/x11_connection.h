// Owns a connection to the X server and its replies.
#pragma once

#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>

#include <xcb/xcb.h>

namespace spellwick {

struct FreeReply {
    void operator()(void* reply) const { std::free(reply); }
};

template <typename Reply>
using X11Reply = std::unique_ptr<Reply, FreeReply>;

// For xcb's reply functions: `OwnReply(xcb_x_reply(connection, cookie, nullptr))`. An error gives
// null and has no other effect.
template <typename Reply>
X11Reply<Reply> OwnReply(Reply* reply) {
    return X11Reply<Reply>(reply);
}

class X11Connection {
  public:
    // An empty name means the display in the environment. On failure Works() is false.
    explicit X11Connection(const std::string& display);
    X11Connection(const X11Connection&) = delete;
    X11Connection& operator=(const X11Connection&) = delete;
    ~X11Connection() { xcb_disconnect(m_connection); }

    xcb_connection_t* Get() const { return m_connection; }
    // Of the display's name or, without one there, the first.
    int Screen() const { return m_screen; }
    xcb_window_t Root() const { return m_root; }
    bool Works() const { return xcb_connection_has_error(m_connection) == 0; }

    // Discards pending events and errors. Errors of unchecked requests, such as for a window that
    // is gone, end here.
    void DropEvents() const;

    // Returns when the server has processed everything sent; false if the connection is lost.
    bool RoundTrip() const;

    // XCB_ATOM_NONE if the connection is lost.
    xcb_atom_t Atom(std::string_view name) const;

  private:
    xcb_connection_t* m_connection;
    int m_screen = 0;
    xcb_window_t m_root = XCB_NONE;
};

}  // namespace spellwick
