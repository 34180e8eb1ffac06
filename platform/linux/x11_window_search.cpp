#include "platform/linux/x11_window_search.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "platform/linux/x11_text.h"

namespace spellwick {

namespace {

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

char LowerAscii(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool SameWithoutCase(std::string_view left, std::string_view right) {
    return std::ranges::equal(left, right, {}, LowerAscii, LowerAscii);
}

// Windows programs are named by their files, and Windows ignores the case of file names.
bool EndsInExe(std::string_view name) {
    constexpr std::string_view kExe = ".exe";
    return name.size() >= kExe.size() &&
           SameWithoutCase(name.substr(name.size() - kExe.size()), kExe);
}

bool IsOneOf(const std::vector<std::string>& classes, const WindowClass& ours) {
    return std::ranges::any_of(classes, [&](const std::string& each) {
        return EndsInExe(each)
                   ? SameWithoutCase(each, ours.name) || SameWithoutCase(each, ours.instance)
                   : each == ours.name || each == ours.instance;
    });
}

std::string TextOfClass(std::string_view bytes) {
    return X11Text(X11TextForm::kLatin1, bytes);
}

bool IsWindowsProgram(const WindowClass& ours) {
    return EndsInExe(ours.instance) || EndsInExe(ours.name);
}

// "CLASS - NAME (SHARD)".
bool HasGameForm(std::string_view title, std::string_view windowClass) {
    title.remove_prefix(std::min(windowClass.size(), title.size()));
    constexpr std::string_view kDash = " - ";
    const std::size_t bracket = title.find(" (");
    return title.starts_with(kDash) && bracket != std::string_view::npos &&
           bracket > kDash.size() && title.ends_with(')') && title.size() > bracket + 3;
}

}  // namespace

X11WindowSearch::X11WindowSearch(const X11Connection& connection, const X11WindowHints& hints)
    : m_connection(connection),
      m_hints(hints),
      m_compoundText(connection.Atom("COMPOUND_TEXT")),
      m_wmState(connection.Atom("WM_STATE")) {}

X11WindowSearch::Found X11WindowSearch::Find(std::string_view windowClass) {
    if (windowClass.empty()) {
        return {};
    }
    const std::vector<xcb_window_t> windows = TopLevels();
    std::vector<xcb_get_property_cookie_t> classes;
    classes.reserve(windows.size());
    for (const xcb_window_t window : windows) {
        classes.push_back(Ask(window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING));
    }
    xcb_window_t byClass = XCB_NONE;
    std::vector<xcb_window_t> byTitle;  // of Windows programs, above the one found
    for (std::size_t index = 0; index < windows.size(); ++index) {
        const auto reply = Answer(classes[index]);
        const WindowClass ours = SplitClass(BytesOf(reply.get()));
        if (byClass != XCB_NONE) {
            continue;
        }
        if (ours.instance == windowClass || ours.name == windowClass) {
            byClass = windows[index];
        } else if (spellwick::IsWindowsProgram(ours)) {
            byTitle.push_back(windows[index]);
        }
    }
    const Found found = FindByTitle(windowClass, byTitle);
    if (found.window != XCB_NONE && (found.certain || byClass == XCB_NONE)) {
        m_last = found.window;
        return found;
    }
    return {byClass, byClass != XCB_NONE};
}

std::vector<TopLevelWindow> X11WindowSearch::List(const std::vector<std::string>* classes) const {
    const std::vector<xcb_window_t> windows = TopLevels();
    std::vector<xcb_get_property_cookie_t> cookies;
    cookies.reserve(windows.size());
    for (const xcb_window_t window : windows) {
        cookies.push_back(Ask(window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING));
    }
    std::vector<TopLevelWindow> listed;
    for (std::size_t index = 0; index < windows.size(); ++index) {
        const auto reply = Answer(cookies[index]);
        const WindowClass ours = SplitClass(BytesOf(reply.get()));
        if (classes == nullptr || IsOneOf(*classes, ours)) {
            listed.push_back(
                {windows[index], TextOfClass(ours.name), TextOfClass(ours.instance), {}});
        }
    }
    std::vector<TitleCookies> titles;
    titles.reserve(listed.size());
    for (const TopLevelWindow& window : listed) {
        titles.push_back(AskTitle(window.handle));
    }
    for (std::size_t index = 0; index < listed.size(); ++index) {
        listed[index].title = AnswerTitle(titles[index]);
    }
    return listed;
}

// The best of these windows of Windows programs, topmost first.
X11WindowSearch::Found X11WindowSearch::FindByTitle(
    std::string_view windowClass, const std::vector<xcb_window_t>& windows) const {
    std::vector<TitleCookies> cookies;
    cookies.reserve(windows.size());
    for (const xcb_window_t window : windows) {
        cookies.push_back(AskTitle(window));
    }
    Found best;
    for (std::size_t index = 0; index < windows.size(); ++index) {
        const std::string title = AnswerTitle(cookies[index]);
        if (best.certain || !title.starts_with(windowClass)) {
            continue;
        }
        const bool hasForm = HasGameForm(title, windowClass);
        if (best.window == XCB_NONE || hasForm || windows[index] == m_last) {
            best = {windows[index], hasForm};
        }
    }
    return best;
}

bool X11WindowSearch::IsWindowsProgram(xcb_window_t window) const {
    const auto reply = Answer(Ask(window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING));
    return spellwick::IsWindowsProgram(SplitClass(BytesOf(reply.get())));
}

std::string X11WindowSearch::Title(xcb_window_t window) const {
    return AnswerTitle(AskTitle(window));
}

std::string X11WindowSearch::Machine(xcb_window_t window) const {
    const auto reply = Answer(Ask(window, XCB_ATOM_WM_CLIENT_MACHINE, XCB_GET_PROPERTY_TYPE_ANY));
    return Text(reply.get()).value_or(std::string());
}

// Topmost first, as Windows searches.
std::vector<xcb_window_t> X11WindowSearch::TopLevels() const {
    std::optional<std::vector<xcb_window_t>> managed = m_hints.ManagedWindows();
    if (!managed) {
        return TopLevelsOfTree();
    }
    std::ranges::reverse(*managed);
    return *std::move(managed);
}

// Without a window manager, the visible children of the root are the top-level windows.
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

// A window manager without lists marks the windows that it manages with WM_STATE, somewhere inside
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
            states.push_back(
                xcb_get_property(x, 0, node.window, m_wmState, XCB_GET_PROPERTY_TYPE_ANY, 0, 0));
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

// Class and title come from windows of any program, so they are read here: xcb-icccm reads past the
// end of a WM_CLASS that is empty or lacks its last NUL, and both libraries ask for text of any
// length and of one type only.
xcb_get_property_cookie_t X11WindowSearch::Ask(xcb_window_t window, xcb_atom_t property,
                                               xcb_atom_t type) const {
    return xcb_get_property(m_connection.Get(), 0, window, property, type, 0, kLongestProperty);
}

X11Reply<xcb_get_property_reply_t> X11WindowSearch::Answer(xcb_get_property_cookie_t cookie) const {
    return OwnReply(xcb_get_property_reply(m_connection.Get(), cookie, nullptr));
}

X11WindowSearch::TitleCookies X11WindowSearch::AskTitle(xcb_window_t window) const {
    return {Ask(window, m_hints.Get()->_NET_WM_NAME, XCB_GET_PROPERTY_TYPE_ANY),
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
    } else if (reply->type == m_compoundText) {
        form = X11TextForm::kCompoundText;
    }
    return X11Text(form, BytesOf(reply));
}

}  // namespace spellwick
