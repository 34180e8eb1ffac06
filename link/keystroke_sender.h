// The key sender of the real program: parses, plans and types on a keyboard.
#pragma once

#include <chrono>
#include <string_view>
#include <vector>

#include "link/key_sender.h"
#include "link/keystroke_run.h"
#include "platform/keyboard.h"

namespace spellwick {

// How long a borrowed key code keeps its symbol after its last use. A program looks the symbol up
// when it handles the key event; a busy one does so late.
inline constexpr std::chrono::milliseconds kBorrowedFor{2000};

class KeystrokeSender : public KeySender {
  public:
    // The keyboard must outlive the sender.
    explicit KeystrokeSender(Keyboard& keyboard, Pace pace = {},
                             std::chrono::milliseconds borrowedFor = kBorrowedFor)
        : m_keyboard(keyboard), m_pace(pace), m_borrowedFor(borrowedFor) {}
    KeystrokeSender(const KeystrokeSender&) = delete;
    KeystrokeSender& operator=(const KeystrokeSender&) = delete;
    // Gives back all borrowed key codes; waits until that is safe.
    ~KeystrokeSender() override;

    SendResult SendKeys(std::string_view text, bool wait, KeyTarget& target) override;
    void Tick() override;

  private:
    struct Borrowed {
        SpareBinding binding;
        std::chrono::steady_clock::time_point lastUse;
    };
    void NoteBorrowed(const KeyPlan& plan);

    Keyboard& m_keyboard;
    Pace m_pace;
    std::chrono::milliseconds m_borrowedFor;
    std::vector<Borrowed> m_borrowed;
};

}  // namespace spellwick
