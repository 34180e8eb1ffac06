#include "platform/linux/x11_window_search.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "platform/linux/x11_text.h"

namespace spellwick {

namespace {

// In cells of four bytes: more than any server sends, so that a property comes whole.
constexpr std::uint32_t kWholeProperty = 1U << 24U;

std::vector<std::uint32_t> CellsOf(const xcb_get_property_reply_t* reply) {
    if (reply == nullptr || reply->format != 32) {
        return {};
    }
    const auto* values = static_cast<const std::uint32_t*>(xcb_get_property_value(reply));
    return {values, values + reply->value_len};
}

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

// Windows programs are called by file names, which their system compares without regard to case.
bool EndsInExe(std::string_view name) {
    constexpr std::string_view kExe = ".exe";
    return name.size() >= kExe.size() &&
           std::ranges::equal(name.substr(name.size() - kExe.size()), kExe,
                              [](char ours, char plain) {
                                  return (ours >= 'A' && ours <= 'Z' ? ours + 32 : ours) == plain;
                              });
}

}  // namespace

X11WindowAtoms::X11WindowAtoms(const X11Connection& connection)
    : netSupported(connection.Atom("_NET_SUPPORTED")),
      netSupportingWmCheck(connection.Atom("_NET_SUPPORTING_WM_CHECK")),
      netClientList(connection.Atom("_NET_CLIENT_LIST")),
      netClientListStacking(connection.Atom("_NET_CLIENT_LIST_STACKING")),
      netActiveWindow(connection.Atom("_NET_ACTIVE_WINDOW")),
      netWmName(connection.Atom("_NET_WM_NAME")),
      utf8String(connection.Atom("UTF8_STRING")),
      compoundText(connection.Atom("COMPOUND_TEXT")),
      wmState(connection.Atom("WM_STATE")),
      wmProtocols(connection.Atom("WM_PROTOCOLS")),
      wmTakeFocus(connection.Atom("WM_TAKE_FOCUS")) {}

xcb_window_t X11WindowSearch::Find(std::string_view windowClass) const {
    const std::vector<xcb_window_t> windows = TopLevels();
    std::vector<xcb_get_property_cookie_t> classes;
    classes.reserve(windows.size());
    for (const xcb_window_t window : windows) {
        classes.push_back(Ask(window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING));
    }
    xcb_window_t found = XCB_NONE;
    std::vector<xcb_window_t> byTitle;  // they lie above the one found
    for (std::size_t index = 0; index < windows.size(); ++index) {
        const auto reply = Answer(classes[index]);
        const WindowClass ours = SplitClass(BytesOf(reply.get()));
        if (found != XCB_NONE) {
            continue;
        }
        if (!windowClass.empty() && (ours.instance == windowClass || ours.name == windowClass)) {
            found = windows[index];
        } else if (EndsInExe(ours.instance) || EndsInExe(ours.name)) {
            byTitle.push_back(windows[index]);
        }
    }
    std::vector<TitleCookies> titles;
    titles.reserve(byTitle.size());
    for (const xcb_window_t window : byTitle) {
        titles.push_back(AskTitle(window));
    }
    xcb_window_t foundByTitle = XCB_NONE;
    for (std::size_t index = 0; index < byTitle.size(); ++index) {
        const std::string title = AnswerTitle(titles[index]);
        if (foundByTitle == XCB_NONE && !windowClass.empty() && title.starts_with(windowClass)) {
            foundByTitle = byTitle[index];
        }
    }
    return foundByTitle != XCB_NONE ? foundByTitle : found;
}

std::string X11WindowSearch::Title(xcb_window_t window) const {
    return AnswerTitle(AskTitle(window));
}

bool X11WindowSearch::ManagerSupports(xcb_atom_t feature) const {
    const auto supported = Ask(m_connection.Root(), m_atoms.netSupported, XCB_ATOM_ATOM);
    const auto check = Ask(m_connection.Root(), m_atoms.netSupportingWmCheck, XCB_ATOM_WINDOW);
    const std::vector<std::uint32_t> features = CellsOf(Answer(supported).get());
    return ManagerRuns(check) && std::ranges::find(features, feature) != features.end();
}

std::vector<std::uint32_t> X11WindowSearch::Cells(xcb_window_t window, xcb_atom_t property) const {
    return CellsOf(Answer(Ask(window, property, XCB_GET_PROPERTY_TYPE_ANY)).get());
}

// The lists of a window manager that is gone stay on the root window; the window that it names
// itself by does not.
bool X11WindowSearch::ManagerRuns(xcb_get_property_cookie_t check) const {
    const std::vector<std::uint32_t> named = CellsOf(Answer(check).get());
    return !named.empty() && Cells(named.front(), m_atoms.netSupportingWmCheck) == named;
}

// Uppermost first, as the search of the system that the client was made for goes.
std::vector<xcb_window_t> X11WindowSearch::TopLevels() const {
    const auto stacked = Ask(m_connection.Root(), m_atoms.netClientListStacking, XCB_ATOM_WINDOW);
    const auto listed = Ask(m_connection.Root(), m_atoms.netClientList, XCB_ATOM_WINDOW);
    const auto check = Ask(m_connection.Root(), m_atoms.netSupportingWmCheck, XCB_ATOM_WINDOW);
    const auto stackedReply = Answer(stacked);
    const auto listedReply = Answer(listed);
    const bool runs = ManagerRuns(check);
    const bool hasStacking = stackedReply && stackedReply->format == 32;
    const bool hasList = listedReply && listedReply->format == 32;
    if ((!hasStacking && !hasList) || !runs) {
        return TopLevelsOfTree();
    }
    std::vector<xcb_window_t> windows =
        CellsOf(hasStacking ? stackedReply.get() : listedReply.get());
    std::ranges::reverse(windows);
    return windows;
}

// Without a manager the visible children of the root are the top-level windows.
std::vector<xcb_window_t> X11WindowSearch::TopLevelsOfTree() const {
    xcb_connection_t* x = m_connection.Get();
    std::vector<xcb_window_t> children = AnswerChildren(xcb_query_tree(x, m_connection.Root()));
    std::ranges::reverse(children);
    const std::vector<xcb_window_t> managed = ManagedWithin(children);
    std::vector<xcb_get_window_attributes_cookie_t> cookies;
    cookies.reserve(children.size());
    for (const xcb_window_t child : children) {
        cookies.push_back(xcb_get_window_attributes(x, child));
    }
    std::vector<xcb_window_t> windows;
    for (std::size_t index = 0; index < children.size(); ++index) {
        const auto looks = OwnReply(xcb_get_window_attributes_reply(x, cookies[index], nullptr));
        if (managed[index] != XCB_NONE) {
            windows.push_back(managed[index]);
        } else if (looks && looks->map_state == XCB_MAP_STATE_VIEWABLE &&
                   looks->override_redirect == 0) {
            windows.push_back(children[index]);
        }
    }
    return windows;
}

// A window manager without lists marks the windows that it manages with WM_STATE, somewhere within
// its frames.
std::vector<xcb_window_t> X11WindowSearch::ManagedWithin(
    const std::vector<xcb_window_t>& frames) const {
    constexpr int kDepth = 4;
    struct Node {
        xcb_window_t window;
        std::size_t frame;
    };
    xcb_connection_t* x = m_connection.Get();
    std::vector<xcb_window_t> managed(frames.size(), XCB_NONE);
    std::vector<Node> level;
    level.reserve(frames.size());
    for (std::size_t index = 0; index < frames.size(); ++index) {
        level.push_back({frames[index], index});
    }
    for (int depth = 0; depth < kDepth && !level.empty(); ++depth) {
        std::vector<xcb_get_property_cookie_t> states;
        std::vector<xcb_query_tree_cookie_t> trees;
        for (const Node& node : level) {
            states.push_back(xcb_get_property(x, 0, node.window, m_atoms.wmState,
                                              XCB_GET_PROPERTY_TYPE_ANY, 0, 0));
            trees.push_back(xcb_query_tree(x, node.window));
        }
        std::vector<Node> next;
        for (std::size_t index = 0; index < level.size(); ++index) {
            const auto state = Answer(states[index]);
            const std::vector<xcb_window_t> children = AnswerChildren(trees[index]);
            const Node& node = level[index];
            if (managed[node.frame] == XCB_NONE && state && state->type != XCB_ATOM_NONE) {
                managed[node.frame] = node.window;
            }
            for (const xcb_window_t child : children) {
                next.push_back({child, node.frame});
            }
        }
        std::erase_if(next, [&](const Node& node) { return managed[node.frame] != XCB_NONE; });
        level = std::move(next);
    }
    return managed;
}

std::vector<xcb_window_t> X11WindowSearch::AnswerChildren(xcb_query_tree_cookie_t cookie) const {
    const auto tree = OwnReply(xcb_query_tree_reply(m_connection.Get(), cookie, nullptr));
    if (!tree) {
        return {};
    }
    const xcb_window_t* first = xcb_query_tree_children(tree.get());
    return {first, first + xcb_query_tree_children_length(tree.get())};
}

xcb_get_property_cookie_t X11WindowSearch::Ask(xcb_window_t window, xcb_atom_t property,
                                               xcb_atom_t type) const {
    return xcb_get_property(m_connection.Get(), 0, window, property, type, 0, kWholeProperty);
}

X11Reply<xcb_get_property_reply_t> X11WindowSearch::Answer(xcb_get_property_cookie_t cookie) const {
    return OwnReply(xcb_get_property_reply(m_connection.Get(), cookie, nullptr));
}

X11WindowSearch::TitleCookies X11WindowSearch::AskTitle(xcb_window_t window) const {
    return {Ask(window, m_atoms.netWmName, XCB_GET_PROPERTY_TYPE_ANY),
            Ask(window, XCB_ATOM_WM_NAME, XCB_GET_PROPERTY_TYPE_ANY)};
}

std::string X11WindowSearch::AnswerTitle(const TitleCookies& cookies) const {
    const auto modern = Answer(cookies.modern);
    const auto old = Answer(cookies.old);
    const std::optional<std::string> title = Text(modern.get());
    return title ? *title : Text(old.get()).value_or(std::string());
}

std::optional<std::string> X11WindowSearch::Text(const xcb_get_property_reply_t* reply) const {
    if (reply == nullptr || reply->format != 8) {
        return std::nullopt;
    }
    X11TextForm form = X11TextForm::kUtf8;
    if (reply->type == XCB_ATOM_STRING) {
        form = X11TextForm::kLatin1;
    } else if (reply->type == m_atoms.compoundText) {
        form = X11TextForm::kCompoundText;
    }
    return X11Text(form, BytesOf(reply));
}

}  // namespace spellwick
