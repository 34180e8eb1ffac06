// Lists the top-level windows of an X server and reads their classes and titles.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <xcb/xcb.h>

#include "platform/client_windows.h"
#include "platform/linux/x11_connection.h"
#include "platform/linux/x11_window_hints.h"
#include "platform/linux/x11_window_notes.h"

namespace spellwick {

class X11WindowSearch {
  public:
    // Both must outlive the search, which takes the connection's events.
    X11WindowSearch(const X11Connection& connection, const X11WindowHints& hints);

    struct Found {
        xcb_window_t window = XCB_NONE;
        bool certain = false;  // by the class itself or by the form of the title
    };

    // The window of this class, 0 if there is none. A window matches if its WM_CLASS, instance or
    // class, is exactly the text, or if it belongs to a Windows program (its WM_CLASS ends in
    // ".exe") and its title begins with the text. A folder or a help window of a Windows program
    // may match too, so a window with the class itself or with a title of the form "CLASS - NAME
    // (SHARD)" goes before the one that was found last time, and that one before any other. Among
    // equals the topmost is taken.
    Found Find(std::string_view windowClass);

    // The windows of these classes, topmost first; all windows for null.
    std::vector<TopLevelWindow> List(const std::vector<std::string>* classes);

    // Whether the window belongs to a Windows program; false if it is gone.
    bool IsWindowsProgram(xcb_window_t window) const { return m_notes.IsWindowsProgram(window); }

    // The whole title as valid UTF-8; empty if the window is gone.
    std::string Title(xcb_window_t window) const { return m_notes.Title(window); }

    // The machine that the window's program runs on, as it says itself; empty if it does not.
    std::string Machine(xcb_window_t window) const {
        return m_notes.Text(window, XCB_ATOM_WM_CLIENT_MACHINE).value_or(std::string());
    }

  private:
    Found FindByTitle(std::string_view windowClass, const std::vector<xcb_window_t>& windows);
    std::vector<xcb_window_t> NotedTopLevels();
    std::vector<xcb_window_t> TopLevels();
    std::vector<xcb_window_t> TopLevelsOfTree();
    // For each frame, the window that is managed in it, or XCB_NONE.
    std::vector<xcb_window_t> ManagedWithin(const std::vector<xcb_window_t>& frames);
    std::vector<xcb_window_t> AnswerChildren(xcb_query_tree_cookie_t cookie) const;

    const X11Connection& m_connection;
    const X11WindowHints& m_hints;
    xcb_atom_t m_wmState;
    X11WindowNotes m_notes;
    std::vector<xcb_window_t> m_tree;  // the top-level windows without a window manager
    xcb_window_t m_last = XCB_NONE;    // found by its title
};

}  // namespace spellwick
