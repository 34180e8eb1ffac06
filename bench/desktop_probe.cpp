// Times a program from outside, on the display given by the environment:
//   desktop_probe paint CLASS COMMAND...   milliseconds from the start of the command to the first
//                                          painted window of that class, and its peak memory in KiB
//   desktop_probe cast X Y COUNT           COUNT times, milliseconds from a click on the screen to
//                                          the first key in a window of class "Ultima Online"
//   desktop_probe open X Y TITLE COUNT     COUNT times, milliseconds from a click to the painted
//                                          window with that title, which is then closed
#include <array>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include <poll.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <xcb/xcb.h>
#include <xcb/xtest.h>

extern char** environ;

namespace {

using Clock = std::chrono::steady_clock;
constexpr std::chrono::seconds kPatience{20};
// Between two looks at the screen: looking takes a processor, and the X server's time, from the
// program that is measured.
constexpr std::chrono::microseconds kBetweenLooks{200};

struct FreeReply {
    void operator()(void* reply) const { std::free(reply); }
};
template <typename Reply>
std::unique_ptr<Reply, FreeReply> Own(Reply* reply) {
    return std::unique_ptr<Reply, FreeReply>(reply);
}

double Milliseconds(Clock::duration time) {
    return std::chrono::duration<double, std::milli>(time).count();
}

struct Display {
    xcb_connection_t* connection = xcb_connect(nullptr, nullptr);
    xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
};

// Returns once the server has done all that was asked of it.
void Sync(const Display& display) {
    Own(xcb_get_input_focus_reply(display.connection, xcb_get_input_focus(display.connection),
                                  nullptr));
}

bool HasClass(const Display& display, xcb_window_t window, std::string_view windowClass) {
    const auto reply = Own(xcb_get_property_reply(
        display.connection,
        xcb_get_property(display.connection, 0, window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 0, 64),
        nullptr));
    if (reply == nullptr) {
        return false;
    }
    const std::string_view value(
        static_cast<const char*>(xcb_get_property_value(reply.get())),
        static_cast<std::size_t>(xcb_get_property_value_length(reply.get())));
    return value.find(windowClass) != std::string_view::npos;
}

// Whether the window shows more than one colour.
bool IsPainted(const Display& display, xcb_window_t window) {
    const auto size = Own(xcb_get_geometry_reply(
        display.connection, xcb_get_geometry(display.connection, window), nullptr));
    if (size == nullptr || size->width < 100 || size->height < 50) {
        return false;
    }
    const auto image =
        Own(xcb_get_image_reply(display.connection,
                                xcb_get_image(display.connection, XCB_IMAGE_FORMAT_Z_PIXMAP, window,
                                              0, 0, size->width, size->height, 0xFFFFFFFFU),
                                nullptr));
    if (image == nullptr) {
        return false;
    }
    const std::uint8_t* bytes = xcb_get_image_data(image.get());
    std::set<std::uint32_t> colours;
    for (int at = 0; at + 4 <= xcb_get_image_data_length(image.get()) && colours.size() < 8;
         at += 4) {
        std::uint32_t pixel = 0;
        std::memcpy(&pixel, bytes + at, sizeof pixel);
        colours.insert(pixel & 0xFFFFFFU);
    }
    return colours.size() >= 8;
}

bool FindPainted(const Display& display, xcb_window_t parent, std::string_view windowClass) {
    const auto tree = Own(xcb_query_tree_reply(
        display.connection, xcb_query_tree(display.connection, parent), nullptr));
    if (tree == nullptr) {
        return false;
    }
    const xcb_window_t* children = xcb_query_tree_children(tree.get());
    for (int i = 0; i < xcb_query_tree_children_length(tree.get()); ++i) {
        const bool found = HasClass(display, children[i], windowClass)
                               ? IsPainted(display, children[i])
                               : FindPainted(display, children[i], windowClass);
        if (found) {
            return true;
        }
    }
    return false;
}

// The painted window with the title, at any depth; 0 if there is none.
xcb_window_t FindTitled(const Display& display, xcb_window_t parent, std::string_view title) {
    const auto tree = Own(xcb_query_tree_reply(
        display.connection, xcb_query_tree(display.connection, parent), nullptr));
    if (tree == nullptr) {
        return 0;
    }
    const xcb_window_t* children = xcb_query_tree_children(tree.get());
    for (int i = 0; i < xcb_query_tree_children_length(tree.get()); ++i) {
        const auto name =
            Own(xcb_get_property_reply(display.connection,
                                       xcb_get_property(display.connection, 0, children[i],
                                                        XCB_ATOM_WM_NAME, XCB_ATOM_ANY, 0, 64),
                                       nullptr));
        const std::string_view value =
            name == nullptr
                ? std::string_view()
                : std::string_view(
                      static_cast<const char*>(xcb_get_property_value(name.get())),
                      static_cast<std::size_t>(xcb_get_property_value_length(name.get())));
        if (value == title && IsPainted(display, children[i])) {
            return children[i];
        }
        if (const xcb_window_t found = FindTitled(display, children[i], title)) {
            return found;
        }
    }
    return 0;
}

xcb_atom_t Atom(const Display& display, std::string_view name) {
    const auto reply = Own(
        xcb_intern_atom_reply(display.connection,
                              xcb_intern_atom(display.connection, 0,
                                              static_cast<std::uint16_t>(name.size()), name.data()),
                              nullptr));
    return reply == nullptr ? xcb_atom_t{XCB_ATOM_NONE} : reply->atom;
}

void Close(const Display& display, xcb_window_t window) {
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window;
    message.type = Atom(display, "WM_PROTOCOLS");
    message.data.data32[0] = Atom(display, "WM_DELETE_WINDOW");
    xcb_send_event(display.connection, 0, window, XCB_EVENT_MASK_NO_EVENT,
                   reinterpret_cast<const char*>(&message));
    xcb_flush(display.connection);
}

// Waits, without a look at the screen, until a window is mapped on it.
void WaitForWindow(const Display& display, Clock::time_point until) {
    while (Clock::now() < until) {
        const auto event = Own(xcb_poll_for_event(display.connection));
        if (event != nullptr && (event->response_type & 0x7F) == XCB_MAP_NOTIFY) {
            return;
        }
        if (event == nullptr && xcb_connection_has_error(display.connection) != 0) {
            return;
        }
        if (event == nullptr) {
            struct pollfd ready {
                xcb_get_file_descriptor(display.connection), POLLIN, 0
            };
            poll(&ready, 1, 1000);
        }
    }
}

int MeasurePaint(std::string_view windowClass, char** command) {
    const Display display;
    const std::uint32_t events = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    xcb_change_window_attributes(display.connection, display.root, XCB_CW_EVENT_MASK, &events);
    Sync(display);
    const Clock::time_point start = Clock::now();
    pid_t child = 0;
    if (posix_spawnp(&child, command[0], nullptr, nullptr, command, environ) != 0) {
        return 1;
    }
    WaitForWindow(display, start + kPatience);
    bool painted = false;
    while (!painted && Clock::now() - start < kPatience) {
        painted = FindPainted(display, display.root, windowClass);
        if (!painted) {
            std::this_thread::sleep_for(kBetweenLooks);
        }
    }
    const double time = Milliseconds(Clock::now() - start);
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    kill(child, SIGTERM);
    int status = 0;
    struct rusage usage {};
    wait4(child, &status, 0, &usage);
    std::printf("%.2f %ld\n", time, usage.ru_maxrss);
    return painted ? 0 : 1;
}

void FakeInput(const Display& display, std::uint8_t type, std::uint8_t detail, int x, int y) {
    xcb_test_fake_input(display.connection, type, detail, XCB_CURRENT_TIME, display.root,
                        static_cast<std::int16_t>(x), static_cast<std::int16_t>(y), 0);
    xcb_flush(display.connection);
}

xcb_window_t MakeClient(const Display& display) {
    const xcb_window_t window = xcb_generate_id(display.connection);
    const std::uint32_t events = XCB_EVENT_MASK_KEY_PRESS;
    xcb_create_window(display.connection, XCB_COPY_FROM_PARENT, window, display.root, 200, 400, 300,
                      200, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                      XCB_CW_EVENT_MASK, &events);
    constexpr std::string_view kClass("Ultima Online\0Ultima Online\0", 28);
    constexpr std::string_view kTitle = "Ultima Online - Bench (Local)";
    xcb_change_property(display.connection, XCB_PROP_MODE_REPLACE, window, XCB_ATOM_WM_CLASS,
                        XCB_ATOM_STRING, 8, kClass.size(), kClass.data());
    xcb_change_property(display.connection, XCB_PROP_MODE_REPLACE, window, XCB_ATOM_WM_NAME,
                        XCB_ATOM_STRING, 8, kTitle.size(), kTitle.data());
    xcb_map_window(display.connection, window);
    xcb_flush(display.connection);
    return window;
}

// Milliseconds to the first key press, or a negative number if none comes.
double WaitForKey(const Display& display, Clock::time_point start) {
    double first = -1.0;
    Clock::time_point quiet = start + kPatience / 10;
    while (Clock::now() < quiet) {
        const auto event = Own(xcb_poll_for_event(display.connection));
        if (event != nullptr && (event->response_type & 0x7F) == XCB_KEY_PRESS) {
            if (first < 0.0) {
                first = Milliseconds(Clock::now() - start);
            }
            quiet = Clock::now() + std::chrono::milliseconds(400);
        } else if (event == nullptr) {
            std::this_thread::sleep_for(std::chrono::microseconds(50));
        }
    }
    return first;
}

int MeasureCast(int x, int y, int count) {
    const Display display;
    MakeClient(display);
    // The watch needs a tick to find the client.
    std::this_thread::sleep_for(std::chrono::milliseconds(2500));
    for (int i = 0; i < count; ++i) {
        FakeInput(display, XCB_MOTION_NOTIFY, 0, x, y);
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
        FakeInput(display, XCB_BUTTON_PRESS, 1, 0, 0);
        std::this_thread::sleep_for(std::chrono::milliseconds(60));
        const Clock::time_point start = Clock::now();
        FakeInput(display, XCB_BUTTON_RELEASE, 1, 0, 0);
        const double time = WaitForKey(display, start);
        if (time < 0.0) {
            std::fprintf(stderr, "no key arrived\n");
            return 1;
        }
        std::printf("%.2f\n", time);
        std::fflush(stdout);
    }
    return 0;
}

int MeasureOpen(int x, int y, std::string_view title, int count) {
    const Display display;
    for (int i = 0; i < count; ++i) {
        FakeInput(display, XCB_MOTION_NOTIFY, 0, x, y);
        std::this_thread::sleep_for(std::chrono::milliseconds(300));
        FakeInput(display, XCB_BUTTON_PRESS, 1, 0, 0);
        std::this_thread::sleep_for(std::chrono::milliseconds(60));
        const Clock::time_point start = Clock::now();
        FakeInput(display, XCB_BUTTON_RELEASE, 1, 0, 0);
        xcb_window_t window = 0;
        while (window == 0 && Clock::now() - start < kPatience / 4) {
            window = FindTitled(display, display.root, title);
        }
        const double time = Milliseconds(Clock::now() - start);
        if (window == 0) {
            std::fprintf(stderr, "no window came\n");
            return 1;
        }
        std::printf("%.2f\n", time);
        std::fflush(stdout);
        std::this_thread::sleep_for(std::chrono::milliseconds(300));
        Close(display, window);
        std::this_thread::sleep_for(std::chrono::milliseconds(300));
    }
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    const std::string_view what = argc > 1 ? argv[1] : "";
    if (what == "paint" && argc > 3) {
        return MeasurePaint(argv[2], argv + 3);
    }
    if (what == "cast" && argc == 5) {
        return MeasureCast(std::atoi(argv[2]), std::atoi(argv[3]), std::atoi(argv[4]));
    }
    if (what == "open" && argc == 6) {
        return MeasureOpen(std::atoi(argv[2]), std::atoi(argv[3]), argv[4], std::atoi(argv[5]));
    }
    std::fprintf(stderr,
                 "usage: desktop_probe paint CLASS COMMAND... | cast X Y COUNT | "
                 "open X Y TITLE COUNT\n");
    return 2;
}
