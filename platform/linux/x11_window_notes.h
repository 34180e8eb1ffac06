// What is known of other programs' windows, their classes and titles, so that only what has changed
// is asked for again.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include <xcb/xcb.h>

#include "platform/linux/x11_connection.h"
#include "platform/linux/x11_window_hints.h"

namespace spellwick {

class X11WindowNotes {
  public:
    struct Note {
        // The two halves of WM_CLASS, as they are.
        std::string instance;
        std::string name;
        bool windowsProgram = false;  // one of the halves ends in ".exe"
        std::optional<std::string> title;
    };

    // Both outlive the notes. Nobody else takes the connection's events.
    X11WindowNotes(const X11Connection& connection, const X11WindowHints& hints);

    // Forgets what has changed. Nothing that was changed before the call is missed.
    void TakeEvents();

    // Asks for the classes of these windows as far as they are unknown.
    void LearnClasses(const std::vector<xcb_window_t>& windows);
    // The same for the titles.
    void LearnTitles(const std::vector<xcb_window_t>& windows);
    // Empty for a window that is gone.
    const Note& Of(xcb_window_t window) const;

    // Whether windows may have come, gone or changed places since TreeIsKnown.
    bool TreeHasChanged() const { return m_treeHasChanged; }
    void TreeIsKnown() { m_treeHasChanged = false; }
    // From now on, changes of the tree are noticed at the root, and at all windows listened to.
    void ListenToTree();
    // Changes of this window are noticed from now on.
    void Listen(xcb_window_t window) const;

    // The text of a property; nothing if it is none.
    std::optional<std::string> Text(xcb_window_t window, xcb_atom_t property) const;
    std::string Title(xcb_window_t window) const;
    bool IsWindowsProgram(xcb_window_t window) const;

  private:
    struct TitleCookies {
        xcb_get_property_cookie_t modern;
        xcb_get_property_cookie_t old;
    };

    void TakeEvent(const xcb_generic_event_t& event);
    void TakePropertyChange(const xcb_property_notify_event_t& change);
    void ForgetTheGone(const std::vector<xcb_window_t>& windows);
    xcb_get_property_cookie_t Ask(xcb_window_t window, xcb_atom_t property, xcb_atom_t type) const;
    X11Reply<xcb_get_property_reply_t> Answer(xcb_get_property_cookie_t cookie) const;
    TitleCookies AskTitle(xcb_window_t window) const;
    std::string AnswerTitle(const TitleCookies& cookies) const;
    std::optional<std::string> TextOf(const xcb_get_property_reply_t* reply) const;

    const X11Connection& m_connection;
    const X11WindowHints& m_hints;
    xcb_atom_t m_compoundText;
    xcb_atom_t m_wmState;
    std::uint32_t m_events;  // that are listened to at each window
    std::unordered_map<xcb_window_t, Note> m_notes;
    bool m_treeHasChanged = true;
};

}  // namespace spellwick
