// Carries a key plan out on a keyboard.
#pragma once

#include <chrono>
#include <optional>

#include "link/borrowed_codes.h"
#include "link/key_sender.h"
#include "link/keystroke_plan.h"
#include "platform/keyboard.h"

namespace spellwick {

// A program that polls the keyboard sees every key if both times are 1.5 times its polling
// interval; these are for one that polls 60 times a second, as games do for their macro keys.
inline constexpr std::chrono::milliseconds kKeyHold{25};
inline constexpr std::chrono::milliseconds kKeyGap{25};

struct Pace {
    std::chrono::milliseconds hold = kKeyHold;
    std::chrono::milliseconds gap = kKeyGap;
    // Of text, which programs read from their queue of events; none: as the other keys.
    std::optional<std::chrono::milliseconds> textHold{};
    std::optional<std::chrono::milliseconds> textGap{};
};

// Returns when everything is typed, or with the reason why not. Before each keystroke it waits for
// a hand that holds a modifier to let go, and looks at the target. However it ends, every key that
// it has pressed is released, and the locks and the layout group are as before, as far as the
// connection still allows.
SendResult RunKeyPlan(const KeyPlan& plan, const Keymap& keymap, Keyboard& keyboard,
                      BorrowedCodes& borrowed, const Pace& pace, KeyTarget& target);

}  // namespace spellwick
