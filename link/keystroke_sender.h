// The key sender of the real program: parses, plans and types on a keyboard.
#pragma once

#include <chrono>
#include <functional>
#include <string_view>
#include <utility>

#include "link/borrowed_codes.h"
#include "link/key_sender.h"
#include "link/keystroke_run.h"
#include "platform/keyboard.h"

namespace spellwick {

// How long a borrowed key code keeps its symbol after its last use.
inline constexpr std::chrono::milliseconds kBorrowedFor{2000};

class KeystrokeSender : public KeySender {
  public:
    // The keyboard must outlive the sender.
    explicit KeystrokeSender(Keyboard& keyboard, Pace pace = {},
                             std::chrono::milliseconds borrowedFor = kBorrowedFor)
        : KeystrokeSender(
              keyboard, [pace] { return pace; }, borrowedFor) {}
    // Asks for the pace before each text.
    KeystrokeSender(Keyboard& keyboard, std::function<Pace()> pace,
                    std::chrono::milliseconds borrowedFor = kBorrowedFor)
        : m_keyboard(keyboard), m_pace(std::move(pace)), m_borrowed(keyboard, borrowedFor) {}
    KeystrokeSender(const KeystrokeSender&) = delete;
    KeystrokeSender& operator=(const KeystrokeSender&) = delete;
    // Gives back all borrowed key codes; waits until that is safe.
    ~KeystrokeSender() override;

    SendResult SendKeys(std::string_view text, bool wait, KeyTarget& target) override;
    void Tick() override { m_borrowed.GiveBackTheUnused(); }

  private:
    Keyboard& m_keyboard;
    std::function<Pace()> m_pace;
    BorrowedCodes m_borrowed;
};

}  // namespace spellwick
