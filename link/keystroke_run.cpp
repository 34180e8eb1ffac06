#include "link/keystroke_run.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

namespace spellwick {

namespace {

constexpr const char* kLost = "The connection to the keyboard is lost.";

// How long the user has to release a key where the system does not let us do it.
constexpr std::chrono::milliseconds kPatienceForHand{500};
constexpr std::chrono::milliseconds kLookAtHand{10};

// How long a program that follows the map late has for a change, if it says when it has read it
// and if it does not.
constexpr std::chrono::milliseconds kPatienceForMap{1000};
constexpr std::chrono::milliseconds kPauseForMap{200};

// On every way out, releases the keys that are down in mirrored order and puts locks and group
// back.
class Undo {
  public:
    Undo(const KeyPlan& plan, const Keymap& keymap, Keyboard& keyboard)
        : m_plan(plan), m_keyboard(keyboard), m_before(keymap.group), m_group(keymap.group) {}
    Undo(const Undo&) = delete;
    Undo& operator=(const Undo&) = delete;
    ~Undo() {
        // These fail only with the connection, and RunKeyPlan then returns that error.
        for (; !m_down.empty(); m_down.pop_back()) {
            static_cast<void>(m_keyboard.Release(m_down.back()));
        }
        static_cast<void>(SetGroup(m_before));
        if (m_unlocked) {
            static_cast<void>(m_keyboard.SetLocks(m_plan.unlock, m_plan.relock));
        }
    }

    std::uint8_t Group() const { return m_group; }
    std::uint8_t GroupBefore() const { return m_before; }

    bool Unlock() {
        m_unlocked = m_plan.unlock != 0;
        return !m_unlocked || m_keyboard.SetLocks(m_plan.unlock, 0);
    }

    // A key may be down even if its press was not confirmed.
    bool Do(const KeyEvent& event) {
        if (event.down) {
            m_down.push_back(event.code);
            return SetGroup(event.group) && m_keyboard.Press(event.code);
        }
        const bool released = m_keyboard.Release(event.code);
        if (released) {
            std::erase(m_down, event.code);
        }
        return released;
    }

  private:
    bool SetGroup(std::uint8_t group) {
        if (group == m_group) {
            return true;
        }
        m_group = group;
        return m_keyboard.SetGroup(group);
    }

    const KeyPlan& m_plan;
    Keyboard& m_keyboard;
    std::uint8_t m_before;
    std::uint8_t m_group;
    std::vector<Keycode> m_down;
    bool m_unlocked = false;
};

class Run {
  public:
    Run(const KeyPlan& plan, const Keymap& keymap, Keyboard& keyboard, BorrowedCodes& borrowed,
        const Pace& pace, KeyTarget& target)
        : m_plan(plan),
          m_keyboard(keyboard),
          m_borrowed(borrowed),
          m_pace(pace),
          m_target(target),
          m_late(target.FollowsKeyMapLate()),
          m_undo(plan, keymap, keyboard) {
        for (const ModifierKey& key : keymap.modifierKeys) {
            m_pressable |= key.modifier;
        }
    }

    SendResult Type() && {
        TypeAll();
        WaitBeforeGroup(m_undo.GroupBefore());
        return std::move(m_result);
    }

  private:
    void TypeAll() {
        // Wine notices changes of the map only behind the first key that it gets.
        if ((!m_late && !BindWhatIsFree(0)) || !ReleaseHands() ||
            !HandsAreOff("Nothing was typed, because Shift, Ctrl, Alt or a key like them is held "
                         "down.") ||
            !Confirm(m_undo.Unlock())) {
            return;
        }
        bool begins = true;
        for (std::size_t index = 0; index < m_plan.events.size(); ++index) {
            if (begins && !MayStrike(index)) {
                return;
            }
            const KeyEvent& event = m_plan.events[index];
            if (!Confirm(m_undo.Do(event))) {
                return;
            }
            if (event.pause != PauseAfter::kNone) {
                m_keyboard.Pause(PauseBehind(event));
            }
            m_borrowed.NoteUse(event.code);
            begins = event.pause == PauseAfter::kGap;
            m_result.strokes += begins ? 1 : 0;
        }
    }

    std::chrono::milliseconds PauseBehind(const KeyEvent& event) const {
        if (event.pause == PauseAfter::kHold) {
            return event.text ? m_pace.textHold.value_or(m_pace.hold) : m_pace.hold;
        }
        return event.text ? m_pace.textGap.value_or(m_pace.gap) : m_pace.gap;
    }

    // Keeps the error if the system did not take a call.
    bool Confirm(bool taken) {
        if (!taken) {
            m_result.error = kLost;
        }
        return taken;
    }

    bool ReleaseHands() {
        return std::ranges::all_of(m_plan.releaseFirst, [this](Keycode code) {
            return Confirm(m_keyboard.Release(code));
        });
    }

    // Waits for the user to let go of modifiers.
    bool HandsAreOff(const char* otherwise) {
        for (auto waited = std::chrono::milliseconds(0);; waited += kLookAtHand) {
            const std::optional<ModifierMask> held = m_keyboard.HeldModifiers();
            if (!Confirm(held.has_value())) {
                return false;
            }
            if ((*held & m_pressable) == 0) {
                return true;
            }
            if (waited >= kPatienceForHand) {
                m_result.error = otherwise;
                return false;
            }
            m_keyboard.Pause(kLookAtHand);
        }
    }

    // Between keystrokes: whether the next may follow, which begins with this event.
    bool MayStrike(std::size_t index) {
        if (!BindWhatIsNeeded(index)) {
            return false;
        }
        // A modifier that a hand has pressed meanwhile would act on the rest.
        if (!HandsAreOff("Not all was typed, because Shift, Ctrl, Alt or a key like them is held "
                         "down.")) {
            return false;
        }
        WaitBeforeGroup(m_plan.events[index].group);
        if (!m_target.MayType()) {
            m_result.error = "The window that the keys are for has lost the keyboard.";
            m_result.stopped = true;
            return false;
        }
        return true;
    }

    // Wine looks a key's symbol up in the group of that moment.
    void WaitBeforeGroup(std::uint8_t group) {
        if (m_late && group != m_undo.Group() && m_keyboard.Sync()) {
            static_cast<void>(m_target.HasRead(kPatienceForMap));
        }
    }

    bool BindWhatIsNeeded(std::size_t index) {
        if (m_bound == m_plan.bindings.size() || m_plan.bindings[m_bound].neededAt != index) {
            return true;
        }
        const Keycode code = m_plan.bindings[m_bound].binding.code;
        if (const auto rest = m_borrowed.Rest(code); rest > std::chrono::milliseconds(0)) {
            if (!Confirm(m_keyboard.Sync())) {
                return false;
            }
            if (m_target.HasRead(rest)) {
                m_borrowed.NoteAllRead();
            } else if (const auto left = m_borrowed.Rest(code);
                       left > std::chrono::milliseconds(0)) {
                m_keyboard.Pause(left);
            }
        }
        return BindWhatIsFree(index);
    }

    // Binds the next codes that no earlier keystroke needs any more, all at once: each change of
    // the map makes every program read it anew.
    bool BindWhatIsFree(std::size_t index) {
        std::vector<SpareBinding> bindings;
        for (; m_bound < m_plan.bindings.size(); ++m_bound) {
            const PlannedBinding& planned = m_plan.bindings[m_bound];
            if (planned.freeFrom > index ||
                m_borrowed.Rest(planned.binding.code) > std::chrono::milliseconds(0)) {
                break;
            }
            bindings.push_back(planned.binding);
        }
        if (bindings.empty()) {
            return true;
        }
        if (!Confirm(m_borrowed.Bind(bindings))) {
            return false;
        }
        if (m_late && !m_target.HasRead(kPatienceForMap)) {
            m_keyboard.Pause(kPauseForMap);
        }
        return true;
    }

    const KeyPlan& m_plan;
    Keyboard& m_keyboard;
    BorrowedCodes& m_borrowed;
    const Pace& m_pace;
    KeyTarget& m_target;
    bool m_late;
    unsigned m_pressable = 0;
    std::size_t m_bound = 0;  // bindings made
    SendResult m_result;
    Undo m_undo;
};

}  // namespace

SendResult RunKeyPlan(const KeyPlan& plan, const Keymap& keymap, Keyboard& keyboard,
                      BorrowedCodes& borrowed, const Pace& pace, KeyTarget& target) {
    return Run(plan, keymap, keyboard, borrowed, pace, target).Type();
}

}  // namespace spellwick
