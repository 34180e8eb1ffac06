#include "platform/linux/x11_window_search.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "platform/linux/x11_text.h"
#include "text/ascii_case.h"

namespace spellwick {

namespace {

bool IsOneOf(const std::vector<std::string>& classes, const X11WindowNotes::Note& note) {
    return std::ranges::any_of(classes, [&](const std::string& each) {
        return EndsInExe(each)
                   ? SameWithoutCase(each, note.name) || SameWithoutCase(each, note.instance)
                   : each == note.name || each == note.instance;
    });
}

std::string TextOfClass(std::string_view bytes) {
    return X11Text(X11TextForm::kLatin1, bytes);
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
      m_wmState(connection.Atom("WM_STATE")),
      m_notes(connection, hints) {}

X11WindowSearch::Found X11WindowSearch::Find(std::string_view windowClass) {
    if (windowClass.empty()) {
        return {};
    }
    xcb_window_t byClass = XCB_NONE;
    std::vector<xcb_window_t> byTitle;  // of Windows programs, above the one found
    for (const xcb_window_t window : NotedTopLevels()) {
        const X11WindowNotes::Note& note = m_notes.Of(window);
        if (note.instance == windowClass || note.name == windowClass) {
            byClass = window;
            break;
        }
        if (note.windowsProgram) {
            byTitle.push_back(window);
        }
    }
    const Found found = FindByTitle(windowClass, byTitle);
    if (found.window != XCB_NONE && (found.certain || byClass == XCB_NONE)) {
        m_last = found.window;
        return found;
    }
    return {byClass, byClass != XCB_NONE};
}

std::vector<TopLevelWindow> X11WindowSearch::List(const std::vector<std::string>* classes) {
    std::vector<xcb_window_t> windows = NotedTopLevels();
    if (classes != nullptr) {
        std::erase_if(windows,
                      [&](xcb_window_t window) { return !IsOneOf(*classes, m_notes.Of(window)); });
    }
    m_notes.LearnTitles(windows);
    std::vector<TopLevelWindow> listed;
    listed.reserve(windows.size());
    for (const xcb_window_t window : windows) {
        const X11WindowNotes::Note& note = m_notes.Of(window);
        listed.push_back({window, TextOfClass(note.name), TextOfClass(note.instance),
                          note.title.value_or(std::string())});
    }
    return listed;
}

// The best of these windows of Windows programs, topmost first.
X11WindowSearch::Found X11WindowSearch::FindByTitle(std::string_view windowClass,
                                                    const std::vector<xcb_window_t>& windows) {
    m_notes.LearnTitles(windows);
    Found best;
    for (const xcb_window_t window : windows) {
        const std::string title = m_notes.Of(window).title.value_or(std::string());
        if (best.certain || !title.starts_with(windowClass)) {
            continue;
        }
        const bool hasForm = HasGameForm(title, windowClass);
        if (best.window == XCB_NONE || hasForm || window == m_last) {
            best = {window, hasForm};
        }
    }
    return best;
}

// With the classes noted.
std::vector<xcb_window_t> X11WindowSearch::NotedTopLevels() {
    m_notes.TakeEvents();
    std::vector<xcb_window_t> windows = TopLevels();
    m_notes.LearnClasses(windows);
    return windows;
}

// Topmost first, as Windows searches.
std::vector<xcb_window_t> X11WindowSearch::TopLevels() {
    std::optional<std::vector<xcb_window_t>> managed = m_hints.ManagedWindows();
    if (!managed) {
        return TopLevelsOfTree();
    }
    std::ranges::reverse(*managed);
    return *std::move(managed);
}

// Without a window manager, the visible children of the root are the top-level windows.
std::vector<xcb_window_t> X11WindowSearch::TopLevelsOfTree() {
    if (!m_notes.TreeHasChanged()) {
        return m_tree;
    }
    m_notes.TreeIsKnown();
    m_notes.ListenToTree();
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
    m_tree = windows;
    return windows;
}

// A window manager without lists marks the windows that it manages with WM_STATE, somewhere inside
// its frames.
std::vector<xcb_window_t> X11WindowSearch::ManagedWithin(const std::vector<xcb_window_t>& frames) {
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
            m_notes.Listen(node.window);
            states.push_back(
                xcb_get_property(x, 0, node.window, m_wmState, XCB_GET_PROPERTY_TYPE_ANY, 0, 0));
            trees.push_back(xcb_query_tree(x, node.window));
        }
        std::vector<Node> next;
        for (std::size_t index = 0; index < level.size(); ++index) {
            const auto state = OwnReply(xcb_get_property_reply(x, states[index], nullptr));
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

}  // namespace spellwick
