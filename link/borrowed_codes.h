// The key codes that are bound to symbols for a while, and when each may change its symbol again.
#pragma once

#include <chrono>
#include <span>
#include <vector>

#include "platform/keyboard.h"

namespace spellwick {

// A program looks a key's symbol up when it handles the event; a busy one does so late. So a code
// keeps its symbol for a grace period after its last use, or until the program has read the key.
class BorrowedCodes {
  public:
    // The keyboard must outlive the codes.
    BorrowedCodes(Keyboard& keyboard, std::chrono::milliseconds grace)
        : m_keyboard(keyboard), m_grace(grace) {}

    // The codes that are still bound as we have bound them, the one unused longest first. Forgets
    // the others: another program has changed the map.
    std::vector<SpareBinding> Lent(const Keymap& keymap);

    // False if the connection is lost.
    [[nodiscard]] bool Bind(std::span<const SpareBinding> bindings);

    // A key with this code has just been struck; without effect if the code is not borrowed.
    void NoteUse(Keycode code);
    // All that was struck is read.
    void NoteAllRead();

    // How long the code must keep its symbol; 0 if it need not.
    std::chrono::milliseconds Rest(Keycode code) const;
    std::chrono::milliseconds LongestRest() const;

    // Gives back the codes whose grace period is over.
    void GiveBackTheUnused() { GiveBack(m_keyboard.Now() - m_grace); }
    void GiveBackAll() { GiveBack(m_keyboard.Now()); }

  private:
    struct Code {
        SpareBinding binding;
        std::chrono::steady_clock::time_point lastUse;
        bool isRead = true;  // all its uses
    };

    std::chrono::milliseconds Rest(const Code& code) const;
    void GiveBack(std::chrono::steady_clock::time_point lastUse);

    Keyboard& m_keyboard;
    std::chrono::milliseconds m_grace;
    std::vector<Code> m_codes;
};

}  // namespace spellwick
