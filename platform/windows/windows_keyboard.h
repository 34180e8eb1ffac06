// The keyboard of Windows: sends scan codes, like the hardware.
#pragma once

#include <map>

#include "platform/keyboard.h"
#include "platform/windows/windows_keymap.h"

namespace spellwick {

// A program with higher rights than this one gets none of the keys, and the system does not report
// it.
class WindowsKeyboard : public Keyboard {
  public:
    // In the layout of the window in front.
    std::optional<Keymap> ReadKeymap() override;

    // A spare code stands for a character that is typed without a key. Other programs do not see
    // the binding.
    bool Bind(std::span<const SpareBinding> bindings) override;
    bool Unbind(std::span<const SpareBinding> bindings) override;

    bool Press(Keycode code) override { return Send(code, 0); }
    bool Release(Keycode code) override { return Send(code, KEYEVENTF_KEYUP); }

    // Presses the lock keys, starting from the state at the last reading.
    bool SetLocks(ModifierMask affected, ModifierMask locked) override;
    // A layout is a window's own; the keymap has one group.
    bool SetGroup(std::uint8_t /*group*/) override { return true; }
    std::optional<ModifierMask> HeldModifiers() override;

    bool Sync() override { return true; }
    void Pause(std::chrono::milliseconds time) override;
    std::chrono::steady_clock::time_point Now() const override;

  private:
    bool Send(Keycode code, DWORD flags);

    HKL m_layout = nullptr;
    std::map<Keycode, Symbol> m_bound;
    ModifierMask m_locked = 0;
};

}  // namespace spellwick
