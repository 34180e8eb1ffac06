#include "platform/linux/x11_window_notes.h"

#include <algorithm>
#include <cstddef>
#include <unordered_set>

#include "platform/linux/x11_text.h"
#include "text/ascii_case.h"

namespace spellwick {

namespace {

constexpr std::uint32_t kOfAWindow =
    XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY;
constexpr std::uint32_t kOfTheTree = kOfAWindow | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;

// In units of four bytes.
constexpr std::uint32_t kLongestProperty = 1U << 24U;

std::string_view BytesOf(const xcb_get_property_reply_t* reply) {
    if (reply == nullptr || reply->format != 8) {
        return {};
    }
    return {static_cast<const char*>(xcb_get_property_value(reply)), reply->value_len};
}

struct WindowClass {
    std::string_view instance;
    std::string_view name;
};

WindowClass SplitClass(std::string_view bytes) {
    const std::size_t end = std::min(bytes.find('\0'), bytes.size());
    const std::string_view after = bytes.substr(std::min(end + 1, bytes.size()));
    return {bytes.substr(0, end), after.substr(0, after.find('\0'))};
}

bool IsWindowsProgram(const WindowClass& ours) {
    return EndsInExe(ours.instance) || EndsInExe(ours.name);
}

}  // namespace

X11WindowNotes::X11WindowNotes(const X11Connection& connection, const X11WindowHints& hints)
    : m_connection(connection),
      m_hints(hints),
      m_compoundText(connection.Atom("COMPOUND_TEXT")),
      m_wmState(connection.Atom("WM_STATE")),
      m_events(kOfAWindow) {}

void X11WindowNotes::TakeEvents() {
    xcb_connection_t* x = m_connection.Get();
    // The answer comes behind all events of before.
    const auto answer = OwnReply(xcb_get_input_focus_reply(x, xcb_get_input_focus(x), nullptr));
    while (const auto event = OwnReply(xcb_poll_for_event(x))) {
        TakeEvent(*event);
    }
    if (answer == nullptr) {
        m_notes.clear();
        m_treeHasChanged = true;
    }
}

void X11WindowNotes::TakeEvent(const xcb_generic_event_t& event) {
    const void* untyped = &event;
    switch (event.response_type & 0x7f) {
        case 0:  // an error of an unchecked request, such as for a window that is gone
            return;
        case XCB_PROPERTY_NOTIFY:
            TakePropertyChange(*static_cast<const xcb_property_notify_event_t*>(untyped));
            return;
        case XCB_DESTROY_NOTIFY:
            m_notes.erase(static_cast<const xcb_destroy_notify_event_t*>(untyped)->window);
            break;
        default:
            break;
    }
    m_treeHasChanged = true;
}

void X11WindowNotes::TakePropertyChange(const xcb_property_notify_event_t& change) {
    m_treeHasChanged = m_treeHasChanged || change.atom == m_wmState;
    const auto note = m_notes.find(change.window);
    if (note == m_notes.end()) {
        return;
    }
    if (change.atom == XCB_ATOM_WM_CLASS) {
        m_notes.erase(note);
    } else if (change.atom == XCB_ATOM_WM_NAME || change.atom == m_hints.Get()->_NET_WM_NAME) {
        note->second.title.reset();
    }
}

void X11WindowNotes::Listen(xcb_window_t window) const {
    xcb_change_window_attributes(m_connection.Get(), window, XCB_CW_EVENT_MASK, &m_events);
}

void X11WindowNotes::ListenToTree() {
    m_events = kOfTheTree;
    Listen(m_connection.Root());
}

void X11WindowNotes::LearnClasses(const std::vector<xcb_window_t>& windows) {
    ForgetTheGone(windows);
    std::vector<xcb_window_t> unknown;
    std::vector<xcb_get_property_cookie_t> cookies;
    for (const xcb_window_t window : windows) {
        if (!m_notes.contains(window)) {
            Listen(window);
            unknown.push_back(window);
            cookies.push_back(Ask(window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING));
        }
    }
    for (std::size_t index = 0; index < unknown.size(); ++index) {
        // The number of a window that is gone may be given to another without a word.
        if (const auto reply = Answer(cookies[index])) {
            const WindowClass ours = SplitClass(BytesOf(reply.get()));
            m_notes[unknown[index]] = {std::string(ours.instance), std::string(ours.name),
                                       spellwick::IsWindowsProgram(ours), std::nullopt};
        }
    }
}

void X11WindowNotes::LearnTitles(const std::vector<xcb_window_t>& windows) {
    std::vector<Note*> unknown;
    std::vector<TitleCookies> cookies;
    for (const xcb_window_t window : windows) {
        const auto note = m_notes.find(window);
        if (note != m_notes.end() && !note->second.title) {
            unknown.push_back(&note->second);
            cookies.push_back(AskTitle(window));
        }
    }
    for (std::size_t index = 0; index < unknown.size(); ++index) {
        unknown[index]->title = AnswerTitle(cookies[index]);
    }
}

const X11WindowNotes::Note& X11WindowNotes::Of(xcb_window_t window) const {
    static const Note kNone;
    const auto note = m_notes.find(window);
    return note == m_notes.end() ? kNone : note->second;
}

// Not every window that goes says so: one that was never listed again may have changed its parent.
void X11WindowNotes::ForgetTheGone(const std::vector<xcb_window_t>& windows) {
    constexpr std::size_t kSpare = 1000;
    if (m_notes.size() > windows.size() + kSpare) {
        const std::unordered_set<xcb_window_t> there(windows.begin(), windows.end());
        std::erase_if(m_notes, [&](const auto& each) { return !there.contains(each.first); });
    }
}

bool X11WindowNotes::IsWindowsProgram(xcb_window_t window) const {
    const auto reply = Answer(Ask(window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING));
    return spellwick::IsWindowsProgram(SplitClass(BytesOf(reply.get())));
}

std::string X11WindowNotes::Title(xcb_window_t window) const {
    return AnswerTitle(AskTitle(window));
}

std::optional<std::string> X11WindowNotes::Text(xcb_window_t window, xcb_atom_t property) const {
    const auto reply = Answer(Ask(window, property, XCB_GET_PROPERTY_TYPE_ANY));
    return TextOf(reply.get());
}

// Class and title come from windows of any program, so they are read here: xcb-icccm reads past the
// end of a WM_CLASS that is empty or lacks its last NUL, and both libraries ask for text of any
// length and of one type only.
xcb_get_property_cookie_t X11WindowNotes::Ask(xcb_window_t window, xcb_atom_t property,
                                              xcb_atom_t type) const {
    return xcb_get_property(m_connection.Get(), 0, window, property, type, 0, kLongestProperty);
}

X11Reply<xcb_get_property_reply_t> X11WindowNotes::Answer(xcb_get_property_cookie_t cookie) const {
    return OwnReply(xcb_get_property_reply(m_connection.Get(), cookie, nullptr));
}

X11WindowNotes::TitleCookies X11WindowNotes::AskTitle(xcb_window_t window) const {
    return {Ask(window, m_hints.Get()->_NET_WM_NAME, XCB_GET_PROPERTY_TYPE_ANY),
            Ask(window, XCB_ATOM_WM_NAME, XCB_GET_PROPERTY_TYPE_ANY)};
}

std::string X11WindowNotes::AnswerTitle(const TitleCookies& cookies) const {
    const auto modern = Answer(cookies.modern);
    const auto old = Answer(cookies.old);
    const std::optional<std::string> title = TextOf(modern.get());
    return title ? *title : TextOf(old.get()).value_or(std::string());
}

std::optional<std::string> X11WindowNotes::TextOf(const xcb_get_property_reply_t* reply) const {
    if (reply == nullptr || reply->format != 8) {
        return std::nullopt;
    }
    X11TextForm form = X11TextForm::kUtf8;
    if (reply->type == XCB_ATOM_STRING) {
        form = X11TextForm::kLatin1;
    } else if (reply->type == m_compoundText) {
        form = X11TextForm::kCompoundText;
    }
    return X11Text(form, BytesOf(reply));
}

}  // namespace spellwick
