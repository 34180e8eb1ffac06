// A private desktop with a mouse and eyes: what the end-to-end tests click and look at.
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

    // The newest managed and visible window whose title starts so; 0 if there is none.
    xcb_window_t FindWindow(std::string_view start) const;
    xcb_window_t WaitWindow(std::string_view start) const;
    bool WaitGone(xcb_window_t window) const;

    // Where a window's client area lies on the screen.
    Area AreaOf(xcb_window_t window) const;
    Picture PictureOf(xcb_window_t window) const;
    // The window's picture once it has stayed the same for a while.
    Picture RestingPicture(xcb_window_t window) const;
    // The words of a property that holds atoms, for example _NET_WM_STATE.
    std::vector<std::string> AtomsOf(xcb_window_t window, const std::string& property) const;

    void MoveMouse(Place onScreen) const;
    void MoveMouse(xcb_window_t window, Place inWindow) const;
    // A button (1 left, 3 right) goes down or up where the mouse is.
    void Button(int button, bool down) const;
    void PressButton(int button = 1) const;
    void Click(xcb_window_t window, Place inWindow) const;
    // One key down and up, by key symbol.
    void Tap(std::uint32_t keysym) const;
    void Hold(std::uint32_t keysym, bool down) const;
    // Digits, '+' and '-' of the us layout.
    void Type(std::string_view text) const;

    // What a click on the title bar's cross does.
    void AskToClose(xcb_window_t window) const;

  private:
    std::unique_ptr<XSession> m_session;
};

}  // namespace spellwick::testing_support
