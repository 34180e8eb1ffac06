// Types a keystroke string into whatever window has the keyboard.
#pragma once

#include <chrono>
#include <cstddef>
#include <string>
#include <string_view>

namespace spellwick {

struct [[nodiscard]] SendResult {
    std::string error;        // empty, or a sentence that says why not all was typed
    bool stopped = false;     // the target did not allow the rest
    std::size_t strokes = 0;  // keystrokes that are typed; all of them if there is no error
    std::string missing{};    // characters that the keyboard can give in no way, each once

    bool Ok() const { return error.empty(); }
};

// The window that the keys are meant for.
class KeyTarget {
  public:
    virtual ~KeyTarget() = default;

    // Asked before each keystroke; false ends the typing there.
    [[nodiscard]] virtual bool MayType() = 0;

    // True once the window has read all the keys typed before; false if it does not say so within
    // the patience.
    [[nodiscard]] virtual bool HasRead(std::chrono::milliseconds patience) = 0;

    // True if the window follows a change of the key map late, and only for few codes.
    [[nodiscard]] virtual bool FollowsKeyMapLate() = 0;
};

class KeySender {
  public:
    virtual ~KeySender() = default;

    // Returns when the keys are typed; with `wait`, when the system has taken them all as well.
    // What cannot be typed whole is not begun. However it ends, no key stays down.
    virtual SendResult SendKeys(std::string_view text, bool wait, KeyTarget& target) = 0;

    // Puts away what the last sends had to borrow of the keyboard, once nobody can need it any
    // more. Cheap; to be called about once a second.
    virtual void Tick() {}
};

}  // namespace spellwick
