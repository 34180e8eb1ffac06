// Another program's window (xev), and its report of what has been typed into it.
#pragma once

#include <chrono>
#include <memory>
#include <string>
#include <vector>

#include "tests/support/x_session.h"

namespace spellwick::testing_support {

// One key event as the witness printed it.
struct WitnessedKey {
    bool down = false;
    unsigned state = 0;  // modifiers held before the event, bits as in the X protocol
    unsigned keycode = 0;
    unsigned long keysym = 0;
    std::string name;  // the keysym's
};

class KeyWitness {
  public:
    // The missing programs, as a sentence for GTEST_SKIP; empty if all are installed.
    static std::string WhatIsMissing();

    // Starts the program with this title, waits for its window, and gives it this class unless that
    // is empty. Null if no window appears.
    static std::unique_ptr<KeyWitness> Start(const XSession& session, const std::string& title,
                                             const std::string& windowClass = "");

    xcb_window_t Window() const { return m_window; }
    std::vector<WitnessedKey> Keys() const;
    // What was pressed: a character with no modifier but Shift or AltGr as itself, everything else
    // like
    // "<Ctrl+Alt+Shift+F1>"; Caps Lock shows as "<Lock+...>".
    std::string Typed() const;
    // Waits until Typed() is this and all keys are released; returns Typed().
    std::string WaitForTyped(const std::string& expected) const;
    // Empty, or the key that was released out of order or not at all.
    std::string Unmirrored() const;
    void ForgetKeys();
    void Close() { m_program.reset(); }
    ChildProcess& Program() { return *m_program; }

  private:
    // What it has printed and we have not forgotten.
    std::string Output() const;

    std::unique_ptr<ChildProcess> m_program;
    xcb_window_t m_window = 0;
    std::size_t m_forgotten = 0;  // characters of its output
};

}  // namespace spellwick::testing_support
