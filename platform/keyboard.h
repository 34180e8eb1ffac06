// The keyboard as a typist needs it: read its map, press and release keys, borrow unused codes.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <span>

#include "platform/keymap.h"

namespace spellwick {

// An unused key code and the symbol that it gives, at every level, for a while.
struct SpareBinding {
    Keycode code = 0;
    Symbol symbol = Symbol::kNothing;

    bool operator==(const SpareBinding&) const = default;
};

// Every bool is false only when the system did not take the call: the connection to it is lost.
// Nothing throws.
class Keyboard {
  public:
    virtual ~Keyboard() = default;

    // The map, the locks and the keys held, all of this moment. None when the connection is lost.
    [[nodiscard]] virtual std::optional<Keymap> ReadKeymap() = 0;

    // Returns when every program that asks for the map gets the new symbols. A code that is bound
    // already changes its symbol.
    [[nodiscard]] virtual bool Bind(std::span<const SpareBinding> bindings) = 0;
    // Makes the codes unused again; one that no longer gives the symbol told is left alone.
    [[nodiscard]] virtual bool Unbind(std::span<const SpareBinding> bindings) = 0;

    [[nodiscard]] virtual bool Press(Keycode code) = 0;
    [[nodiscard]] virtual bool Release(Keycode code) = 0;

    // Sets the lock state of the modifiers in `affected` to `locked`, and ends their latches.
    [[nodiscard]] virtual bool SetLocks(ModifierMask affected, ModifierMask locked) = 0;

    // Locks a layout group of the keymap, by its number.
    [[nodiscard]] virtual bool SetGroup(std::uint8_t group) = 0;

    // The modifiers of keys held at this moment, whoever holds them. None: connection lost.
    [[nodiscard]] virtual std::optional<ModifierMask> HeldModifiers() = 0;

    // Returns when the system has taken all that was sent before.
    [[nodiscard]] virtual bool Sync() = 0;

    virtual void Pause(std::chrono::milliseconds time) = 0;
    virtual std::chrono::steady_clock::time_point Now() const = 0;
};

}  // namespace spellwick
