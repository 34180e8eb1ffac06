// Turns keystrokes into key events for one keymap, or into the reason why it cannot be done.
#pragma once

#include <cstddef>
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
    std::uint8_t group = 0;  // the layout group to lock before it; the same for a whole keystroke
    bool text = false;       // of a line of text, which may be struck faster; likewise

    bool operator==(const KeyEvent&) const = default;
};

// A binding, and when to make it: between two events, by the number of events before.
struct PlannedBinding {
    SpareBinding binding;
    std::size_t freeFrom = 0;  // the code is used for another symbol before that
    std::size_t neededAt = 0;  // the keystroke with the symbol begins there

    bool operator==(const PlannedBinding&) const = default;
};

// To be carried out in this order. The events leave no key down, and whatever their number, the
// keys that are down after it are released in mirrored order by going back over them.
struct KeyPlan {
    std::vector<PlannedBinding> bindings;  // in the order of neededAt
    std::vector<Keycode> releaseFirst;     // keys that a hand holds; they are not pressed again
    ModifierMask unlock = 0;               // locks and latches to take away before
    ModifierMask relock = 0;               // those of them to set again after
    std::vector<KeyEvent> events;
};

struct PlanError {
    std::string text;     // a sentence
    std::string missing;  // the characters that cannot be given in any way, each once
};

// A character without marks is struck with the modifiers that it needs in the keymap. Marks make a
// chord: a digit or a small letter then names its key, which is struck with exactly the marked
// modifiers, whatever the character alone needs: "%1" is Alt and the key of 1 also where digits
// need Shift. Any other character keeps what it needs: "%A" is Alt, Shift and the key of a.
// Modifiers go down in the order Alt, Ctrl, Shift, then any that the layout needs.
// Text is each character without marks behind the first keystroke, and Enter behind text: the first
// keystroke is the macro key.
// Caps Lock is taken away for the time of the typing only if it would change one of the keys.
// A symbol that the group in force lacks is struck in another group that has it, else on a code
// that is bound to it: a spare, then one of `lent`, the codes bound by earlier plans, the one
// unused for the longest time first. When there are more such symbols than codes, codes change
// their symbols on the way.
[[nodiscard]] std::variant<KeyPlan, PlanError> PlanKeystrokes(
    std::span<const Keystroke> keystrokes, const Keymap& keymap,
    std::span<const SpareBinding> lent = {});

}  // namespace spellwick
