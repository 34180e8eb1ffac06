// A private desktop that the end-to-end tests can click on and look at.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/x_session.h"

namespace spellwick::testing_support {

struct Place {
    int x = 0;
    int y = 0;
};

struct Area {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;

    bool operator==(const Area&) const = default;
};

using Picture = std::vector<std::uint8_t>;

class Desk {
  public:
    explicit Desk(std::unique_ptr<XSession> session) : m_session(std::move(session)) {}

    XSession& Session() { return *m_session; }

    // The newest managed and visible window whose title starts like this; 0 if there is none.
    xcb_window_t FindWindow(std::string_view start) const;
    xcb_window_t WaitWindow(std::string_view start) const;
    bool WaitGone(xcb_window_t window) const;
    // Whether a menu or a tip is open: a window of a program that the window manager has no part
    // in. To try a grab of the keyboard would keep the menu's own out.
    bool HasMenu() const;

    // The position of a window's client area on the screen.
    Area AreaOf(xcb_window_t window) const;
    Picture PictureOf(xcb_window_t window) const;
    // The window's picture, once it has not changed for a while.
    Picture RestingPicture(xcb_window_t window) const;
    // The names in a property that holds atoms, for example _NET_WM_STATE.
    std::vector<std::string> AtomsOf(xcb_window_t window, const std::string& property) const;

    void MoveMouse(Place onScreen) const;
    void MoveMouse(xcb_window_t window, Place inWindow) const;
    // Presses or releases a button (1 left, 3 right) where the mouse is.
    void Button(int button, bool down) const;
    void PressButton(int button = 1) const;
    void Click(xcb_window_t window, Place inWindow) const;
    // Presses and releases one key, by key symbol.
    void Tap(std::uint32_t keysym) const;
    void Hold(std::uint32_t keysym, bool down) const;
    // Types digits, '+' and '-' on the US layout.
    void Type(std::string_view text) const;

    // Does what a click on the close button of the title bar does.
    void AskToClose(xcb_window_t window) const;

  private:
    std::unique_ptr<XSession> m_session;
};

}  // namespace spellwick::testing_support
