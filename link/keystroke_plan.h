// Turns keystrokes into key events for one keymap, or into the reason why it cannot be done.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <variant>
#include <vector>

#include "link/keystroke_parse.h"
#include "platform/keyboard.h"

namespace spellwick {

// How long to wait after an event.
enum class PauseAfter : std::uint8_t {
    kNone,
    kHold,  // the key is down: long enough for the program in front to see it
    kGap    // the keystroke is over
};

struct KeyEvent {
    Keycode code = 0;
    bool down = false;
    PauseAfter pause = PauseAfter::kNone;

    bool operator==(const KeyEvent&) const = default;
};

// To be carried out in this order. The events leave no key down, and whatever their number, the
// keys that are down after it are released in mirrored order by going back over them.
struct KeyPlan {
    std::vector<SpareBinding> bindings;
    std::vector<Keycode> releaseFirst;  // keys that a hand holds; they are not pressed again
    ModifierMask unlock = 0;            // locks and latches to take away before
    ModifierMask relock = 0;            // those of them to set again after
    std::vector<KeyEvent> events;
};

using PlanError = std::string;

// A character is struck with the modifiers that it needs in the keymap and those of its marks
// together: "+1" is the key of 1 with Shift, "%A" is Alt, Shift and the key of a. Modifiers go
// down in the order Alt, Ctrl, Shift, then any that the layout needs.
// Caps Lock is taken away for the time of the typing only if it would change one of the keys.
[[nodiscard]] std::variant<KeyPlan, PlanError> PlanKeystrokes(std::span<const Keystroke> keystrokes,
                                                              const Keymap& keymap);

}  // namespace spellwick
