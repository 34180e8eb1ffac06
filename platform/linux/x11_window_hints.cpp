#include "platform/linux/x11_window_hints.h"

#include <algorithm>
#include <span>

namespace spellwick {

X11WindowHints::X11WindowHints(const X11Connection& connection) : m_connection(connection) {
    if (!connection.Works()) {
        return;
    }
    // The library frees the contents itself when it fails, but not the struct.
    auto hints = std::make_unique<xcb_ewmh_connection_t>();
    if (xcb_ewmh_init_atoms_replies(hints.get(), xcb_ewmh_init_atoms(connection.Get(), hints.get()),
                                    nullptr) != 0) {
        m_hints.reset(hints.release());
    }
}

bool X11WindowHints::ManagerSupports(xcb_atom_t hint) const {
    const auto supported = xcb_ewmh_get_supported(Get(), m_connection.Screen());
    const auto check = xcb_ewmh_get_supporting_wm_check(Get(), m_connection.Root());
    const auto reply = OwnReply(xcb_get_property_reply(m_connection.Get(), supported, nullptr));
    xcb_ewmh_get_atoms_reply_t hints{};
    const bool listed = xcb_ewmh_get_supported_from_reply(&hints, reply.get()) != 0;
    return ManagerRuns(check) && listed &&
           std::ranges::count(std::span(hints.atoms, hints.atoms_len), hint) != 0;
}

std::optional<std::vector<xcb_window_t>> X11WindowHints::ManagedWindows() const {
    const auto stackedCookie = xcb_ewmh_get_client_list_stacking(Get(), m_connection.Screen());
    const auto listedCookie = xcb_ewmh_get_client_list(Get(), m_connection.Screen());
    const auto check = xcb_ewmh_get_supporting_wm_check(Get(), m_connection.Root());
    const auto stacked =
        OwnReply(xcb_get_property_reply(m_connection.Get(), stackedCookie, nullptr));
    const auto listed = OwnReply(xcb_get_property_reply(m_connection.Get(), listedCookie, nullptr));
    xcb_ewmh_get_windows_reply_t windows{};
    const bool found = xcb_ewmh_get_windows_from_reply(&windows, stacked.get()) != 0 ||
                       xcb_ewmh_get_windows_from_reply(&windows, listed.get()) != 0;
    if (!ManagerRuns(check) || !found) {
        return std::nullopt;
    }
    return std::vector(windows.windows, windows.windows + windows.windows_len);
}

xcb_window_t X11WindowHints::ActiveWindow() const {
    xcb_window_t active = XCB_NONE;
    xcb_ewmh_get_active_window_reply(
        Get(), xcb_ewmh_get_active_window(Get(), m_connection.Screen()), &active, nullptr);
    return active;
}

std::optional<std::uint32_t> X11WindowHints::DesktopOf(xcb_window_t window) const {
    constexpr std::uint32_t kAll = 0xffffffff;
    std::uint32_t desktop = kAll;
    const bool told = xcb_ewmh_get_wm_desktop_reply(Get(), xcb_ewmh_get_wm_desktop(Get(), window),
                                                    &desktop, nullptr) != 0;
    return told && desktop != kAll ? std::optional(desktop) : std::nullopt;
}

std::optional<std::uint32_t> X11WindowHints::CurrentDesktop() const {
    std::uint32_t desktop = 0;
    const bool told = xcb_ewmh_get_current_desktop_reply(
                          Get(), xcb_ewmh_get_current_desktop(Get(), m_connection.Screen()),
                          &desktop, nullptr) != 0;
    return told ? std::optional(desktop) : std::nullopt;
}

void X11WindowHints::RequestDesktop(std::uint32_t desktop, xcb_timestamp_t time) const {
    xcb_ewmh_request_change_current_desktop(Get(), m_connection.Screen(), desktop, time);
    xcb_flush(m_connection.Get());
}

void X11WindowHints::RequestActivation(xcb_window_t window, xcb_timestamp_t time) const {
    // Send the request as a pager, on behalf of the user: one from an application may be refused.
    xcb_ewmh_request_change_active_window(Get(), m_connection.Screen(), window,
                                          XCB_EWMH_CLIENT_SOURCE_TYPE_OTHER, time, XCB_NONE);
    xcb_flush(m_connection.Get());
}

// The properties of a window manager that has ended remain on the root window; its check window
// does not.
bool X11WindowHints::ManagerRuns(xcb_get_property_cookie_t check) const {
    xcb_window_t named = XCB_NONE;
    if (xcb_ewmh_get_supporting_wm_check_reply(Get(), check, &named, nullptr) == 0) {
        return false;
    }
    xcb_window_t confirmed = XCB_NONE;
    return xcb_ewmh_get_supporting_wm_check_reply(
               Get(), xcb_ewmh_get_supporting_wm_check(Get(), named), &confirmed, nullptr) != 0 &&
           confirmed == named;
}

}  // namespace spellwick
