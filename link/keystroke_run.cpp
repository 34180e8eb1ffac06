#include "link/keystroke_run.h"

#include <optional>
#include <vector>

namespace spellwick {

namespace {

constexpr const char* kLost = "The connection to the keyboard is lost.";

// How long the user has to release a key where the system does not let us do it.
constexpr std::chrono::milliseconds kPatienceForHand{500};
constexpr std::chrono::milliseconds kLookAtHand{10};

// On every way out, releases the keys that are down in mirrored order and sets the locks again.
class Undo {
  public:
    Undo(const KeyPlan& plan, Keyboard& keyboard) : m_plan(plan), m_keyboard(keyboard) {}
    Undo(const Undo&) = delete;
    Undo& operator=(const Undo&) = delete;
    ~Undo() {
        // These fail only with the connection, and RunKeyPlan then returns that error.
        for (; !m_down.empty(); m_down.pop_back()) {
            static_cast<void>(m_keyboard.Release(m_down.back()));
        }
        if (m_unlocked) {
            static_cast<void>(m_keyboard.SetLocks(m_plan.unlock, m_plan.relock));
        }
    }

    bool Unlock() {
        m_unlocked = m_plan.unlock != 0;
        return !m_unlocked || m_keyboard.SetLocks(m_plan.unlock, 0);
    }

    // A key may be down even if its press was not confirmed.
    bool Do(const KeyEvent& event) {
        if (event.down) {
            m_down.push_back(event.code);
            return m_keyboard.Press(event.code);
        }
        const bool released = m_keyboard.Release(event.code);
        if (released) {
            std::erase(m_down, event.code);
        }
        return released;
    }

  private:
    const KeyPlan& m_plan;
    Keyboard& m_keyboard;
    std::vector<Keycode> m_down;
    bool m_unlocked = false;
};

SendResult ReleaseHands(const KeyPlan& plan, const Keymap& keymap, Keyboard& keyboard) {
    unsigned pressable = 0;
    for (const ModifierKey& key : keymap.modifierKeys) {
        pressable |= key.modifier;
    }
    for (const Keycode code : plan.releaseFirst) {
        if (!keyboard.Release(code)) {
            return {kLost};
        }
    }
    for (auto waited = std::chrono::milliseconds(0);; waited += kLookAtHand) {
        const std::optional<ModifierMask> held = keyboard.HeldModifiers();
        if (!held) {
            return {kLost};
        }
        if ((*held & pressable) == 0) {
            return {};
        }
        if (waited >= kPatienceForHand) {
            return {"Nothing was typed, because Shift, Ctrl, Alt or a key like them is held down."};
        }
        keyboard.Pause(kLookAtHand);
    }
}

}  // namespace

SendResult RunKeyPlan(const KeyPlan& plan, const Keymap& keymap, Keyboard& keyboard,
                      const Pace& pace, KeyTarget& target) {
    if (!plan.bindings.empty() && !keyboard.Bind(plan.bindings)) {
        return {kLost};
    }
    if (SendResult hands = ReleaseHands(plan, keymap, keyboard); !hands.Ok()) {
        return hands;
    }
    Undo undo(plan, keyboard);
    if (!undo.Unlock()) {
        return {kLost};
    }
    SendResult result;
    bool begins = true;
    for (const KeyEvent& event : plan.events) {
        if (begins && !target.MayType()) {
            result.error = "The window that the keys are for has lost the keyboard.";
            result.stopped = true;
            return result;
        }
        if (!undo.Do(event)) {
            result.error = kLost;
            return result;
        }
        begins = event.pause == PauseAfter::kGap;
        result.strokes += begins ? 1 : 0;
        if (event.pause != PauseAfter::kNone) {
            keyboard.Pause(event.pause == PauseAfter::kHold ? pace.hold : pace.gap);
        }
    }
    return result;
}

}  // namespace spellwick
