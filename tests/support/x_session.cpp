#include "tests/support/x_session.h"

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <thread>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <xcb/xtest.h>

#include "platform/linux/x11_connection.h"
#include "platform/linux/xcb_xkb.h"

namespace spellwick::testing_support {

using namespace std::chrono_literals;

namespace {

const char* NameOf(WindowManager manager) {
    return manager == WindowManager::kMetacity ? "metacity" : "openbox";
}

}  // namespace

std::string XSession::WhatIsMissing(WindowManager manager) {
    std::vector<std::string> programs{"Xvfb", "setxkbmap", "xkbcomp"};
    if (manager != WindowManager::kNone) {
        programs.emplace_back(NameOf(manager));
    }
    std::string missing;
    for (const std::string& program : programs) {
        if (!HasProgram(program)) {
            missing += (missing.empty() ? "not installed: " : ", ") + program;
        }
    }
    return missing;
}

std::unique_ptr<XSession> XSession::Start(WindowManager manager) {
    std::unique_ptr<XSession> session(new XSession);
    session->MakeFolders();
    if (!session->StartServer() || !session->Connect()) {
        return nullptr;
    }
    if (manager != WindowManager::kNone && !session->StartManager(manager)) {
        return nullptr;
    }
    return session;
}

XSession::~XSession() {
    m_windowManager.reset();
    if (m_connection != nullptr) {
        xcb_disconnect(m_connection);
    }
    m_server.reset();
    std::error_code ignored;
    std::filesystem::remove_all(m_folder, ignored);
}

void XSession::MakeFolders() {
    std::string folder = (std::filesystem::temp_directory_path() / "x_session.XXXXXX").string();
    m_folder = mkdtemp(folder.data());
    for (const char* name : {"home", "data", "config", "cache", "runtime"}) {
        std::filesystem::create_directory(m_folder / name);
        chmod((m_folder / name).c_str(), 0700);
    }
    m_environment = {{"HOME", m_folder / "home"},
                     {"XDG_DATA_HOME", m_folder / "data"},
                     {"XDG_CONFIG_HOME", m_folder / "config"},
                     {"XDG_CACHE_HOME", m_folder / "cache"},
                     {"XDG_RUNTIME_DIR", m_folder / "runtime"},
                     {"WAYLAND_DISPLAY", ""},
                     {"XAUTHORITY", ""},
                     {"LC_ALL", "C.UTF-8"}};
}

bool XSession::StartServer() {
    // The server writes the display number that it has chosen into this file once it listens.
    // Nothing here draws by OpenGL, which takes most of the time of its start.
    const std::filesystem::path numberFile = m_folder / "display";
    m_server =
        ChildProcess::Start({"sh", "-c",
                             "exec Xvfb -displayfd 7 -screen 0 1280x1024x24 -nolisten tcp -noreset "
                             "-extension GLX 7>\"$0\"",
                             numberFile.string()},
                            m_environment);
    std::string number;
    const bool listens = m_server && WaitUntil([&] {
                             std::ifstream file(numberFile);
                             return std::getline(file, number) && !file.eof() && !number.empty();
                         });
    m_display = ":" + number;
    m_environment["DISPLAY"] = m_display;
    return listens;
}

bool XSession::Connect() {
    m_connection = xcb_connect(m_display.c_str(), nullptr);
    if (xcb_connection_has_error(m_connection) != 0) {
        return false;
    }
    fcntl(xcb_get_file_descriptor(m_connection), F_SETFD, FD_CLOEXEC);
    m_root = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data->root;
    const auto extension = OwnReply(xcb_xkb_use_extension_reply(
        m_connection, xcb_xkb_use_extension(m_connection, 1, 0), nullptr));
    return extension && extension->supported != 0;
}

bool XSession::StartManager(WindowManager manager) {
    // It takes no text, so it need not read 6,000 compose sequences at each start.
    auto environment = m_environment;
    environment["XCOMPOSEFILE"] = "/dev/null";
    m_windowManager = ChildProcess::Start({NameOf(manager), "--sm-disable"}, environment);
    // While starting, it announces itself but still misses new windows, so map one repeatedly until
    // it manages it.
    return m_windowManager && WaitUntil([this] {
               if (LongProperty(m_root, "_NET_SUPPORTING_WM_CHECK").empty()) {
                   return false;
               }
               const xcb_window_t probe = ShowWindow("probe", "Probe", "probe");
               const bool managed = WaitUntil([&] { return IsManaged(probe); }, 200ms);
               DestroyWindow(probe);
               return managed;
           });
}

bool XSession::IsManaged(xcb_window_t window) const {
    const auto clients = ClientList();
    return std::ranges::find(clients, window) != clients.end();
}

std::unique_ptr<ChildProcess> XSession::Spawn(const std::vector<std::string>& command) const {
    return ChildProcess::Start(command, m_environment);
}

RunResult XSession::Run(const std::vector<std::string>& command) const {
    return RunToEnd(command, m_environment);
}

void XSession::KillServer() {
    m_server->Signal(SIGKILL);
    m_server->WaitForEnd(5s);
}

void XSession::KillWindowManager() {
    m_windowManager->Signal(SIGKILL);
    m_windowManager.reset();
    Sync();
}

bool XSession::SetLayout(const std::string& layout, const std::string& variant,
                         const std::string& option) const {
    std::vector<std::string> command{"setxkbmap", "-layout", layout, "-option", ""};
    if (!variant.empty()) {
        command.insert(command.end(), {"-variant", variant});
    }
    if (!option.empty()) {
        command.insert(command.end(), {"-option", option});
    }
    return Run(command).exitCode == 0;
}

void XSession::LockGroup(std::uint8_t group) const {
    xcb_xkb_latch_lock_state(m_connection, XCB_XKB_ID_USE_CORE_KBD, 0, 0, 1, group, 0, 0, 0);
    Sync();
}

void XSession::LockModifiers(std::uint8_t modifiers) const {
    xcb_xkb_latch_lock_state(m_connection, XCB_XKB_ID_USE_CORE_KBD, 0xff, modifiers, 0, 0, 0, 0, 0);
    Sync();
}

void XSession::FakeKey(std::uint8_t keycode, bool down) const {
    xcb_test_fake_input(m_connection, down ? XCB_KEY_PRESS : XCB_KEY_RELEASE, keycode,
                        XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
    Sync();
}

std::uint8_t XSession::KeycodeOf(std::uint32_t keysym) const {
    const xcb_setup_t* setup = xcb_get_setup(m_connection);
    const auto count = static_cast<std::uint8_t>(setup->max_keycode - setup->min_keycode + 1);
    const auto map = OwnReply(xcb_get_keyboard_mapping_reply(
        m_connection, xcb_get_keyboard_mapping(m_connection, setup->min_keycode, count), nullptr));
    const xcb_keysym_t* symbols = xcb_get_keyboard_mapping_keysyms(map.get());
    for (int key = 0; key < count; ++key) {
        if (symbols[std::ptrdiff_t{key} * map->keysyms_per_keycode] == keysym) {
            return static_cast<std::uint8_t>(setup->min_keycode + key);
        }
    }
    return 0;
}

KeyboardState XSession::Keyboard() const {
    KeyboardState state;
    const auto keys =
        OwnReply(xcb_query_keymap_reply(m_connection, xcb_query_keymap(m_connection), nullptr));
    std::copy_n(keys->keys, state.keysDown.size(), state.keysDown.begin());
    const auto locks = OwnReply(xcb_xkb_get_state_reply(
        m_connection, xcb_xkb_get_state(m_connection, XCB_XKB_ID_USE_CORE_KBD), nullptr));
    state.lockedModifiers = locks->lockedMods;
    state.latchedModifiers = locks->latchedMods;
    state.lockedGroup = locks->lockedGroup;
    state.keymap = Run({"xkbcomp", "-w0", m_display, "-"}).output;
    return state;
}

xcb_atom_t XSession::Atom(const std::string& name) const {
    const auto reply = OwnReply(xcb_intern_atom_reply(
        m_connection,
        xcb_intern_atom(m_connection, 0, static_cast<std::uint16_t>(name.size()), name.c_str()),
        nullptr));
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

std::vector<std::uint32_t> XSession::LongProperty(xcb_window_t window,
                                                  const std::string& name) const {
    const auto reply = OwnReply(xcb_get_property_reply(
        m_connection, xcb_get_property(m_connection, 0, window, Atom(name), XCB_ATOM_ANY, 0, 4096),
        nullptr));
    if (!reply || reply->format != 32) {
        return {};
    }
    const auto* values = static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()));
    return {values, values + reply->value_len};
}

std::vector<xcb_window_t> XSession::ClientList() const {
    return LongProperty(m_root, "_NET_CLIENT_LIST");
}

bool XSession::PutOnDesktop(xcb_window_t window, std::uint32_t desktop) const {
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window;
    message.type = Atom("_NET_WM_DESKTOP");
    message.data.data32[0] = desktop;
    message.data.data32[1] = 2;  // on behalf of the user
    xcb_send_event(m_connection, 0, m_root,
                   XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   reinterpret_cast<const char*>(&message));
    return WaitUntil([&] {
        return LongProperty(window, "_NET_WM_DESKTOP") == std::vector<std::uint32_t>{desktop};
    });
}

std::uint32_t XSession::CurrentDesktop() const {
    return LongProperty(m_root, "_NET_CURRENT_DESKTOP").at(0);
}

xcb_window_t XSession::ActiveWindow() const {
    const auto active = LongProperty(m_root, "_NET_ACTIVE_WINDOW");
    return active.empty() ? 0 : active.front();
}

xcb_window_t XSession::FocusedWindow() const {
    const auto focus = OwnReply(
        xcb_get_input_focus_reply(m_connection, xcb_get_input_focus(m_connection), nullptr));
    return focus ? focus->focus : 0;
}

std::string XSession::WindowName(xcb_window_t window) const {
    for (const char* name : {"_NET_WM_NAME", "WM_NAME"}) {
        const auto reply = OwnReply(xcb_get_property_reply(
            m_connection,
            xcb_get_property(m_connection, 0, window, Atom(name), XCB_ATOM_ANY, 0, 1U << 20),
            nullptr));
        if (reply && reply->format == 8) {
            return {static_cast<const char*>(xcb_get_property_value(reply.get())),
                    reply->value_len};
        }
    }
    return {};
}

void XSession::SetWindowName(xcb_window_t window, const std::string& title) const {
    xcb_change_property(m_connection, XCB_PROP_MODE_REPLACE, window, Atom("_NET_WM_NAME"),
                        Atom("UTF8_STRING"), 8, static_cast<std::uint32_t>(title.size()),
                        title.data());
    Sync();
}

void XSession::SetWindowClass(xcb_window_t window, const std::string& instance,
                              const std::string& windowClass) const {
    std::string both = instance;
    both.push_back('\0');
    both.append(windowClass).push_back('\0');
    xcb_change_property(m_connection, XCB_PROP_MODE_REPLACE, window, XCB_ATOM_WM_CLASS,
                        XCB_ATOM_STRING, 8, static_cast<std::uint32_t>(both.size()), both.data());
    Sync();
}

xcb_window_t XSession::WaitForWindow(const std::string& title) const {
    xcb_window_t found = 0;
    WaitUntil([&] {
        std::vector<xcb_window_t> windows = ClientList();
        if (windows.empty()) {
            const auto tree = OwnReply(
                xcb_query_tree_reply(m_connection, xcb_query_tree(m_connection, m_root), nullptr));
            const xcb_window_t* children = xcb_query_tree_children(tree.get());
            windows.assign(children, children + xcb_query_tree_children_length(tree.get()));
        }
        for (const xcb_window_t window : windows) {
            const auto attributes = OwnReply(xcb_get_window_attributes_reply(
                m_connection, xcb_get_window_attributes(m_connection, window), nullptr));
            if (attributes && attributes->map_state == XCB_MAP_STATE_VIEWABLE &&
                WindowName(window) == title) {
                found = window;
            }
        }
        return found != 0;
    });
    return found;
}

xcb_window_t XSession::ShowWindow(const std::string& instance, const std::string& windowClass,
                                  const std::string& title) const {
    const xcb_screen_t* screen = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data;
    const xcb_window_t window = xcb_generate_id(m_connection);
    xcb_create_window(m_connection, XCB_COPY_FROM_PARENT, window, m_root, 20, 20, 300, 200, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, screen->root_visual, 0, nullptr);
    SetWindowClass(window, instance, windowClass);
    SetWindowName(window, title);
    xcb_map_window(m_connection, window);
    Sync();
    return window;
}

xcb_window_t XSession::MakeWindow(const std::string& instance, const std::string& windowClass,
                                  const std::string& title) const {
    const xcb_window_t window = ShowWindow(instance, windowClass, title);
    if (m_windowManager) {
        WaitUntil([&] { return IsManaged(window); });
    }
    return window;
}

void XSession::DestroyWindow(xcb_window_t window) const {
    xcb_destroy_window(m_connection, window);
    Sync();
    if (m_windowManager) {
        WaitUntil([&] { return !IsManaged(window); });
    }
}

void XSession::Sync() const {
    OwnReply(xcb_get_input_focus_reply(m_connection, xcb_get_input_focus(m_connection), nullptr));
}

bool XSession::SyncWindowManager() const {
    if (!m_windowManager) {
        return true;
    }
    // It answers this request even for a window that it does not manage.
    const xcb_window_t probe = xcb_generate_id(m_connection);
    xcb_create_window(m_connection, XCB_COPY_FROM_PARENT, probe, m_root, 0, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
    xcb_client_message_event_t question{};
    question.response_type = XCB_CLIENT_MESSAGE;
    question.format = 32;
    question.window = probe;
    question.type = Atom("_NET_REQUEST_FRAME_EXTENTS");
    xcb_send_event(m_connection, 0, m_root,
                   XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   reinterpret_cast<const char*>(&question));
    const bool answered =
        WaitUntil([&] { return !LongProperty(probe, "_NET_FRAME_EXTENTS").empty(); });
    xcb_destroy_window(m_connection, probe);
    Sync();
    return answered;
}

bool WaitUntil(const std::function<bool()>& holds, std::chrono::milliseconds patience) {
    const auto deadline = std::chrono::steady_clock::now() + patience;
    while (!holds()) {
        if (std::chrono::steady_clock::now() >= deadline) {
            return false;
        }
        std::this_thread::sleep_for(5ms);
    }
    return true;
}

}  // namespace spellwick::testing_support
