// Stands in for an assist tool and times how long a report takes to reach the screen:
//   report_probe COUNT    COUNT times, milliseconds from writing a stock report to the first
//   changed
//                         pixel on the screen; the environment gives the socket folder
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include <xcb/xcb.h>

#include "platform/linux/assist_folder.h"
#include "tests/support/tool_socket.h"

namespace {

using Clock = std::chrono::steady_clock;
using spellwick::testing_support::ToolSocket;
using Screen = std::vector<std::uint8_t>;

constexpr std::chrono::seconds kPatience{2};
constexpr std::uint16_t kWidth = 400;
constexpr std::uint16_t kHeight = 760;

class Eye {
  public:
    Screen Look() const {
        Screen seen;
        xcb_get_image_reply_t* const image =
            xcb_get_image_reply(m_connection,
                                xcb_get_image(m_connection, XCB_IMAGE_FORMAT_Z_PIXMAP, m_root, 0, 0,
                                              kWidth, kHeight, 0xFFFFFFFFU),
                                nullptr);
        if (image != nullptr) {
            const std::uint8_t* bytes = xcb_get_image_data(image);
            seen.assign(bytes, bytes + xcb_get_image_data_length(image));
        }
        std::free(image);
        return seen;
    }

  private:
    xcb_connection_t* m_connection = xcb_connect(nullptr, nullptr);
    xcb_window_t m_root = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data->root;
};

// Waits until the program has registered; false if it does not.
bool Register(ToolSocket& tool) {
    return tool.AcceptAndGreet("UOAssist") && tool.ReadLine().has_value() &&
           tool.Write("result 1\n");
}

int MeasureReports(ToolSocket& tool, int count) {
    const Eye eye;
    for (int turn = 0; turn < count; ++turn) {
        std::this_thread::sleep_for(std::chrono::milliseconds(200));
        const Screen before = eye.Look();
        const Clock::time_point start = Clock::now();
        // Bloodmoss: its counter and the amounts on the page change.
        if (!tool.Write("send 1325 1 " + std::to_string(100 + turn) + '\n')) {
            return 1;
        }
        while (eye.Look() == before) {
            if (Clock::now() - start > kPatience) {
                std::fprintf(stderr, "nothing changed on the screen\n");
                return 1;
            }
        }
        const std::chrono::duration<double, std::milli> time = Clock::now() - start;
        std::printf("%.2f\n", time.count());
        std::fflush(stdout);
        if (!tool.ReadLine()) {
            return 1;
        }
    }
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    const int count = argc == 2 ? std::atoi(argv[1]) : 0;
    if (count < 1) {
        std::fprintf(stderr, "usage: report_probe COUNT\n");
        return 2;
    }
    const std::filesystem::path folder = spellwick::AssistFolder();
    spellwick::testing_support::MakeAssistFolder(folder);
    ToolSocket tool(folder, "probe.sock");
    if (!Register(tool)) {
        std::fprintf(stderr, "the program did not register\n");
        return 1;
    }
    return MeasureReports(tool, count);
}
