#include "platform/linux/x11_client_windows.h"

#include <algorithm>
#include <array>
#include <span>

#include <poll.h>
#include <unistd.h>
#include <xcb/xcb_icccm.h>

#include "platform/linux/program_folders.h"

namespace spellwick {

using namespace std::chrono_literals;

namespace {

constexpr auto kActivation = 500ms;
// The time between a window manager's report that a window is active and the arrival of the focus.
constexpr auto kFocusFollows = 100ms;

}  // namespace

std::unique_ptr<X11ClientWindows> X11ClientWindows::Open(const std::string& display,
                                                         std::string& error) {
    std::unique_ptr<X11ClientWindows> windows(new X11ClientWindows(display));
    if (!windows->m_hints.Work() || !windows->m_connection.Works() ||
        !windows->m_searchHints.Work()) {
        error = "There is no X display to look for windows on.";
        return nullptr;
    }
    return windows;
}

X11ClientWindows::X11ClientWindows(const std::string& display)
    : m_connection(display),
      m_hints(m_connection),
      m_searchConnection(display),
      m_searchHints(m_searchConnection),
      m_search(m_searchConnection, m_searchHints),
      m_wmTakeFocus(m_connection.Atom("WM_TAKE_FOCUS")) {
    if (!m_hints.Work()) {
        return;
    }
    xcb_connection_t* x = m_connection.Get();
    const std::uint32_t propertyChanges = XCB_EVENT_MASK_PROPERTY_CHANGE;
    ListenToRoot(kRootEvents);
    m_clock = xcb_generate_id(x);
    xcb_create_window(x, 0, m_clock, m_connection.Root(), -1, -1, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK,
                      &propertyChanges);
    xcb_flush(x);
}

WindowHandle X11ClientWindows::FindWindowByClass(std::string_view windowClass) {
    m_connection.DropEvents();
    return m_search.Find(windowClass).window;
}

WindowHandle X11ClientWindows::FindWindowOfClasses(
    std::span<const std::string_view> windowClasses) {
    m_connection.DropEvents();
    xcb_window_t likely = XCB_NONE;
    for (const std::string_view windowClass : windowClasses) {
        const X11WindowSearch::Found found = m_search.Find(windowClass);
        if (found.certain) {
            return found.window;
        }
        if (likely == XCB_NONE) {
            likely = found.window;
        }
    }
    return likely;
}

std::vector<TopLevelWindow> X11ClientWindows::AllWindows() {
    std::vector<TopLevelWindow> windows = m_search.List(nullptr);
    std::erase_if(windows, [this](const TopLevelWindow& window) {
        return ProcessOf(window.handle) == getpid();
    });
    return windows;
}

// A program names its process itself, and the machine that it runs on.
std::optional<pid_t> X11ClientWindows::ProcessOf(WindowHandle window) {
    std::array<char, 256> machine{};
    std::uint32_t process = 0;
    const bool told =
        window != 0 && m_connection.Works() &&
        xcb_ewmh_get_wm_pid_reply(m_hints.Get(), xcb_ewmh_get_wm_pid(m_hints.Get(), window),
                                  &process, nullptr) != 0;
    if (!told || gethostname(machine.data(), machine.size() - 1) != 0) {
        return std::nullopt;
    }
    const std::string named = m_search.Machine(window);
    if (!named.empty() && named != machine.data()) {
        return std::nullopt;
    }
    return static_cast<pid_t>(process);
}

std::vector<std::filesystem::path> X11ClientWindows::ProgramFolders(WindowHandle window) {
    const std::optional<pid_t> process = ProcessOf(window);
    return process ? ProgramFoldersOf(*process) : std::vector<std::filesystem::path>();
}

std::string X11ClientWindows::WindowTitle(WindowHandle window) {
    return window == 0 ? std::string() : m_search.Title(window);
}

bool X11ClientWindows::SetForegroundWindow(WindowHandle window) {
    if (window == 0 || !Exists(window)) {
        return false;
    }
    return ManagerActivates() ? ActivateThroughManager(window) : ActivateByHand(window);
}

bool X11ClientWindows::IsForegroundWindow(WindowHandle window) {
    m_connection.DropEvents();
    // For a moment, a window manager still names a window that is gone.
    return window != 0 && Exists(window) &&
           (ManagerActivates() ? m_hints.ActiveWindow() == window : HasFocus(window));
}

bool X11ClientWindows::SetFocus(WindowHandle window) {
    if (window == 0 || !IsViewable(window)) {
        return false;
    }
    if (ManagerActivates()) {
        const xcb_window_t active = m_hints.ActiveWindow();
        if (active != XCB_NONE && active != window) {
            return false;
        }
    }
    return HasFocus(window) || GiveFocus(window);
}

bool X11ClientWindows::HasKeyboard(WindowHandle window) {
    m_connection.DropEvents();
    return window != 0 && HasFocus(window);
}

// The upper bits of a window's number are those of the program that has made it.
bool X11ClientWindows::ProgramHasKeyboard(WindowHandle window) {
    m_connection.DropEvents();
    const xcb_window_t mask = xcb_get_setup(m_connection.Get())->resource_id_mask;
    const xcb_window_t base = window & ~mask;
    const xcb_window_t focus = Focus();
    if (window == 0 || !m_connection.Works()) {
        return false;
    }
    return focus == XCB_INPUT_FOCUS_POINTER_ROOT ? PointerIsInProgram(base)
                                                 : (focus & ~mask) == base;
}

bool X11ClientWindows::ManagerActivates() const {
    return m_hints.ManagerSupports(m_hints.Get()->_NET_ACTIVE_WINDOW);
}

// Asked for a window on another desktop, window managers may only mark it as demanding attention;
// so go there first, as a pager does.
void X11ClientWindows::GoToDesktopOf(xcb_window_t window) {
    const std::optional<std::uint32_t> desktop = m_hints.DesktopOf(window);
    const std::optional<std::uint32_t> current = m_hints.CurrentDesktop();
    if (desktop && current && *desktop != *current) {
        m_hints.RequestDesktop(*desktop, ServerTime());
        WaitFor(kActivation, [&] { return m_hints.CurrentDesktop() == desktop; });
    }
}

bool X11ClientWindows::ActivateThroughManager(xcb_window_t window) {
    const auto start = std::chrono::steady_clock::now();
    GoToDesktopOf(window);
    m_hints.RequestActivation(window, ServerTime());
    bool gone = false;
    const auto spent = std::chrono::steady_clock::now() - start;
    const bool ended =
        WaitFor(std::chrono::ceil<std::chrono::milliseconds>(kActivation - spent), [&] {
            gone = !Exists(window);
            return gone || m_hints.ActiveWindow() == window;
        });
    if (gone || !ended) {
        return false;
    }
    WaitFor(kFocusFollows, [&] { return HasFocus(window); });
    return true;
}

bool X11ClientWindows::ActivateByHand(xcb_window_t window) {
    if (!IsViewable(window)) {
        return false;
    }
    xcb_window_t frame = window;
    for (auto parent = ParentOf(frame); parent && *parent != m_connection.Root();
         parent = ParentOf(frame)) {
        frame = *parent;
    }
    const std::uint32_t above = XCB_STACK_MODE_ABOVE;
    xcb_configure_window(m_connection.Get(), frame, XCB_CONFIG_WINDOW_STACK_MODE, &above);
    if (!HasFocus(window)) {
        GiveFocus(window);
    }
    return WaitFor(kActivation, [&] { return HasFocus(window) || !Exists(window); }) &&
           HasFocus(window);
}

// Follow the window's input model: we set the focus, or tell the window to take it, or both, or
// neither.
bool X11ClientWindows::GiveFocus(xcb_window_t window) {
    const bool wantsInput = WantsInput(window);
    const bool takesFocus = Speaks(window, m_wmTakeFocus);
    if (takesFocus) {
        Tell(window, m_wmTakeFocus, ServerTime());
    }
    if (wantsInput) {
        xcb_set_input_focus(m_connection.Get(), XCB_INPUT_FOCUS_PARENT, window, XCB_CURRENT_TIME);
    }
    if (!takesFocus && !wantsInput) {
        return false;
    }
    return takesFocus ? WaitFor(kFocusFollows, [&] { return HasFocus(window); }) : HasFocus(window);
}

bool X11ClientWindows::WantsInput(xcb_window_t window) const {
    xcb_connection_t* x = m_connection.Get();
    xcb_icccm_wm_hints_t hints{};
    return xcb_icccm_get_wm_hints_reply(x, xcb_icccm_get_wm_hints(x, window), &hints, nullptr) ==
               0 ||
           (hints.flags & XCB_ICCCM_WM_HINT_INPUT) == 0 || hints.input != 0;
}

// Whether the window takes part in one of the protocols between windows and their managers.
bool X11ClientWindows::Speaks(xcb_window_t window, xcb_atom_t protocol) const {
    xcb_connection_t* x = m_connection.Get();
    const auto reply = OwnReply(xcb_get_property_reply(
        x, xcb_icccm_get_wm_protocols(x, window, m_hints.Get()->WM_PROTOCOLS), nullptr));
    xcb_icccm_get_wm_protocols_reply_t protocols{};
    return xcb_icccm_get_wm_protocols_from_reply(reply.get(), &protocols) != 0 &&
           std::ranges::count(std::span(protocols.atoms, protocols.atoms_len), protocol) != 0;
}

void X11ClientWindows::Tell(xcb_window_t window, xcb_atom_t protocol, xcb_timestamp_t time) const {
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window;
    message.type = m_hints.Get()->WM_PROTOCOLS;
    message.data = {.data32 = {protocol, time, window, 0, 0}};
    const void* untyped = &message;
    xcb_send_event(m_connection.Get(), 0, window, XCB_EVENT_MASK_NO_EVENT,
                   static_cast<const char*>(untyped));
    xcb_flush(m_connection.Get());
}

void X11ClientWindows::ListenToRoot(std::uint32_t events) const {
    xcb_change_window_attributes(m_connection.Get(), m_connection.Root(), XCB_CW_EVENT_MASK,
                                 &events);
}

std::optional<WindowArea> X11ClientWindows::AreaOf(WindowHandle window) {
    const auto id = static_cast<xcb_window_t>(window);
    if (id == XCB_NONE || !IsViewable(id)) {
        return std::nullopt;
    }
    xcb_connection_t* x = m_connection.Get();
    const auto shape = OwnReply(xcb_get_geometry_reply(x, xcb_get_geometry(x, id), nullptr));
    if (!shape) {
        return std::nullopt;
    }
    const auto corner = OwnReply(xcb_translate_coordinates_reply(
        x, xcb_translate_coordinates(x, id, shape->root, 0, 0), nullptr));
    if (!corner) {
        return std::nullopt;
    }
    return WindowArea{corner->dst_x, corner->dst_y, shape->width, shape->height};
}

bool X11ClientWindows::IsViewable(xcb_window_t window) const {
    xcb_connection_t* x = m_connection.Get();
    const auto attributes =
        OwnReply(xcb_get_window_attributes_reply(x, xcb_get_window_attributes(x, window), nullptr));
    return attributes && attributes->map_state == XCB_MAP_STATE_VIEWABLE;
}

bool X11ClientWindows::Exists(xcb_window_t window) const {
    return ParentOf(window).has_value();
}

bool X11ClientWindows::HasFocus(xcb_window_t window) const {
    std::optional<xcb_window_t> inside;
    if (const xcb_window_t focus = Focus(); focus > XCB_INPUT_FOCUS_POINTER_ROOT) {
        inside = focus;
    }
    while (inside && *inside != window && *inside != XCB_NONE) {
        inside = ParentOf(*inside);
    }
    return inside == window;
}

// XCB_NONE also when the connection is lost.
xcb_window_t X11ClientWindows::Focus() const {
    xcb_connection_t* x = m_connection.Get();
    const auto focus = OwnReply(xcb_get_input_focus_reply(x, xcb_get_input_focus(x), nullptr));
    return focus ? focus->focus : xcb_window_t{XCB_NONE};
}

// With the focus on the pointer's root, keys go to the window below the pointer.
bool X11ClientWindows::PointerIsInProgram(xcb_window_t base) const {
    xcb_connection_t* x = m_connection.Get();
    const xcb_window_t mask = xcb_get_setup(x)->resource_id_mask;
    for (xcb_window_t window = m_connection.Root(); window != XCB_NONE;) {
        if ((window & ~mask) == base) {
            return true;
        }
        const auto pointer =
            OwnReply(xcb_query_pointer_reply(x, xcb_query_pointer(x, window), nullptr));
        window = pointer ? pointer->child : xcb_window_t{XCB_NONE};
    }
    return false;
}

std::optional<xcb_window_t> X11ClientWindows::ParentOf(xcb_window_t window) const {
    xcb_connection_t* x = m_connection.Get();
    const auto tree = OwnReply(xcb_query_tree_reply(x, xcb_query_tree(x, window), nullptr));
    return tree ? std::optional(tree->parent) : std::nullopt;
}

// Window managers compare timestamps; to learn the server's time, change a property of our own
// window.
xcb_timestamp_t X11ClientWindows::ServerTime() const {
    m_connection.DropEvents();
    xcb_change_property(m_connection.Get(), XCB_PROP_MODE_APPEND, m_clock, XCB_ATOM_WM_NAME,
                        XCB_ATOM_STRING, 8, 0, nullptr);
    xcb_flush(m_connection.Get());
    xcb_timestamp_t time = XCB_CURRENT_TIME;
    WaitForEvent(std::chrono::steady_clock::now() + kActivation,
                 [&](const xcb_generic_event_t& event) {
                     if ((event.response_type & 0x7f) != XCB_PROPERTY_NOTIFY) {
                         return false;
                     }
                     const void* untyped = &event;
                     const auto& change = *static_cast<const xcb_property_notify_event_t*>(untyped);
                     if (change.window != m_clock) {
                         return false;
                     }
                     time = change.time;
                     return true;
                 });
    return time;
}

// Returns after a moment at the latest.
void X11ClientWindows::WaitForInput() const {
    pollfd waiting{xcb_get_file_descriptor(m_connection.Get()), POLLIN, 0};
    poll(&waiting, 1, kLookAgainMilliseconds);
}

bool X11ClientWindows::WaitForEvent(
    std::chrono::steady_clock::time_point deadline,
    const std::function<bool(const xcb_generic_event_t&)>& wanted) const {
    while (m_connection.Works() && std::chrono::steady_clock::now() < deadline) {
        const auto event = OwnReply(xcb_poll_for_event(m_connection.Get()));
        if (event == nullptr) {
            WaitForInput();
        } else if (wanted(*event)) {
            return true;
        }
    }
    return false;
}

bool X11ClientWindows::WaitFor(std::chrono::milliseconds patience,
                               const std::function<bool()>& holds) const {
    const auto deadline = std::chrono::steady_clock::now() + patience;
    while (!holds()) {
        if (!m_connection.Works() || std::chrono::steady_clock::now() >= deadline) {
            return false;
        }
        WaitForInput();
        m_connection.DropEvents();
    }
    return true;
}

}  // namespace spellwick
