// Types a keystroke string into whatever window has the keyboard.
#pragma once

#include <string>
#include <string_view>

namespace spellwick {

// `error` is empty, or a sentence for the user that says why not all was typed.
struct [[nodiscard]] SendResult {
    std::string error;

    bool Ok() const { return error.empty(); }
};

class KeySender {
  public:
    virtual ~KeySender() = default;

    // Returns when the keys are typed; with `wait`, when the system has taken them all as well.
    // What cannot be typed whole is not begun. However it ends, no key stays down.
    virtual SendResult SendKeys(std::string_view text, bool wait) = 0;

    // Puts away what the last sends had to borrow of the keyboard, once nobody can need it any
    // more. Cheap; to be called about once a second.
    virtual void Tick() {}
};

}  // namespace spellwick
