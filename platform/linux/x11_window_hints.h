// The window manager hints of an X server: the library's handle with its atoms, looked up once, and
// the window manager's own properties.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include <xcb/xcb_ewmh.h>

#include "platform/linux/x11_connection.h"

namespace spellwick {

struct WipeWindowHints {
    void operator()(xcb_ewmh_connection_t* hints) const {
        xcb_ewmh_connection_wipe(hints);
        delete hints;
    }
};

class X11WindowHints {
  public:
    // The connection must outlive the hints. If it is already lost, Work() is false and nothing
    // else may be called; if it is lost later, every call returns an empty result.
    explicit X11WindowHints(const X11Connection& connection);

    bool Work() const { return m_hints != nullptr; }

    // For the library's functions. Its members are the atoms.
    xcb_ewmh_connection_t* Get() const { return m_hints.get(); }

    // Whether a window manager that supports this hint is running.
    bool ManagerSupports(xcb_atom_t hint) const;

    // The window manager's windows, lowest first if it keeps them in that order; nothing if none is
    // running or it keeps no list.
    std::optional<std::vector<xcb_window_t>> ManagedWindows() const;

    // XCB_NONE if there is none.
    xcb_window_t ActiveWindow() const;

    // The desktop that the window is on; nothing if it is on all of them or none is told.
    std::optional<std::uint32_t> DesktopOf(xcb_window_t window) const;

    // Nothing if the window manager has no desktops.
    std::optional<std::uint32_t> CurrentDesktop() const;

    void RequestDesktop(std::uint32_t desktop, xcb_timestamp_t time) const;

    void RequestActivation(xcb_window_t window, xcb_timestamp_t time) const;

  private:
    // The cookie is for the root window's _NET_SUPPORTING_WM_CHECK.
    bool ManagerRuns(xcb_get_property_cookie_t check) const;

    const X11Connection& m_connection;
    std::unique_ptr<xcb_ewmh_connection_t, WipeWindowHints> m_hints;
};

}  // namespace spellwick
