// The keyboard of Windows: key input as the hardware would give it, by scan codes.
#pragma once

#include <map>

#include "platform/keyboard.h"
#include "platform/windows/windows_keymap.h"

namespace spellwick {

// A program that runs with higher rights than this one gets none of the keys; the system says
// nothing about it.
class WindowsKeyboard : public Keyboard {
  public:
    // In the layout of the window in front.
    std::optional<Keymap> ReadKeymap() override;

    // A spare code stands for a character that is typed without a key. Other programs see nothing
    // of the binding.
    bool Bind(std::span<const SpareBinding> bindings) override;
    bool Unbind(std::span<const SpareBinding> bindings) override;

    bool Press(Keycode code) override { return Send(code, 0); }
    bool Release(Keycode code) override { return Send(code, KEYEVENTF_KEYUP); }

    // By striking the lock keys, from the state that the last reading found.
    bool SetLocks(ModifierMask affected, ModifierMask locked) override;
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
