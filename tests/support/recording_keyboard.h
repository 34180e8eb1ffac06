// A keyboard with a given keymap that records each key event with the modifiers held.
#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "platform/keyboard.h"

namespace spellwick {

class RecordingKeyboard : public Keyboard {
  public:
    struct Event {
        Keycode code = 0;
        bool down = false;
        ModifierMask held = 0;    // before the event, as a program sees it
        ModifierMask locked = 0;  // likewise
        Symbol symbol = Symbol::kNothing;
        std::chrono::milliseconds time{0};  // since the beginning

        bool operator==(const Event&) const = default;
    };

    explicit RecordingKeyboard(Keymap map);

    std::optional<Keymap> ReadKeymap() override;
    bool Bind(std::span<const SpareBinding> bindings) override;
    bool Unbind(std::span<const SpareBinding> bindings) override;
    bool Press(Keycode code) override;
    bool Release(Keycode code) override;
    bool SetLocks(ModifierMask affected, ModifierMask locked) override;
    bool SetGroup(std::uint8_t group) override;
    std::optional<ModifierMask> HeldModifiers() override;
    bool Sync() override { return Works(); }
    void Pause(std::chrono::milliseconds time) override;
    std::chrono::steady_clock::time_point Now() const override { return m_now; }

    // The text that a program in front would see: characters as they are, named keys and everything
    // pressed with Ctrl or Alt as "<Ctrl+Alt+Shift+name>".
    std::string Typed() const;
    void ForgetEvents() { events.clear(); }
    const std::set<Keycode>& Down() const { return m_down; }
    // As a hand does, behind the back of the program.
    void Hold(Keycode code) { m_down.insert(code); }
    void LetGo(Keycode code) { m_down.erase(code); }

    // May be changed by a test at any time, as a user changes the layout.
    Keymap keymap;
    std::vector<Event> events;
    std::vector<SpareBinding> bound;
    std::size_t bindCalls = 0;
    // Each binding ever, with its time since the beginning.
    std::vector<std::pair<std::chrono::milliseconds, SpareBinding>> allBindings;
    std::uint8_t group = 0;  // the one in force
    // Runs before each pause ends.
    std::function<void()> inPause;
    // Calls left until the connection is lost; none if it never is.
    std::optional<std::size_t> callsUntilLost;
    // Keys that stay down even if released: the user holds them, and the system cannot overrule
    // that.
    std::set<Keycode> stuck;

  private:
    bool Works();
    ModifierMask Held() const;
    Symbol Gives(Keycode code) const;
    bool Record(Keycode code, bool down);

    std::set<Keycode> m_down;
    std::chrono::steady_clock::time_point m_now;
};

}  // namespace spellwick
