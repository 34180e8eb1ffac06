// Types lines of text into the window that has the keyboard, at a pace to be tried.
//   typing_probe HOLD GAP <LINES    both in milliseconds; one line of text per line

#include <charconv>
#include <chrono>
#include <iostream>
#include <string>
#include <string_view>

#include "link/keystroke_sender.h"
#include "platform/linux/x11_keyboard.h"

namespace {

using namespace spellwick;

class WindowInFront : public KeyTarget {
  public:
    bool MayType() override { return true; }
    bool HasRead(std::chrono::milliseconds /*patience*/) override { return false; }
    bool FollowsKeyMapLate() override { return false; }
};

std::chrono::milliseconds Milliseconds(std::string_view word) {
    int number = 0;
    std::from_chars(word.data(), word.data() + word.size(), number);
    return std::chrono::milliseconds(number);
}

}  // namespace

int main(int argc, char* argv[]) {
    std::string error;
    const auto keyboard = X11Keyboard::Open("", error);
    if (argc != 3 || !keyboard) {
        std::cerr << (keyboard ? "usage: typing_probe HOLD GAP" : error) << '\n';
        return 2;
    }
    const Pace pace{Milliseconds(argv[1]), Milliseconds(argv[2])};
    KeystrokeSender sender(*keyboard, pace);
    WindowInFront target;
    for (std::string line; std::getline(std::cin, line);) {
        const SendResult result = sender.SendKeys(line + "{ENTER}", true, target);
        if (!result.Ok()) {
            std::cerr << result.error << '\n';
            return 1;
        }
    }
}
