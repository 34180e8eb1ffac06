// Somebody else's window (xev), and what it says has been typed into it.
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
    std::string name;  // of the keysym
};

class KeyWitness {
  public:
    // Programs that must be installed, for the sentence of GTEST_SKIP; empty if all are.
    static std::string WhatIsMissing();

    // Starts the program, with this title, and waits for its window, which then gets this class
    // unless it is empty. Null if no window comes.
    static std::unique_ptr<KeyWitness> Start(const XSession& session, const std::string& title,
                                             const std::string& windowClass = "");

    xcb_window_t Window() const { return m_window; }
    std::vector<WitnessedKey> Keys() const;
    // What was pressed, modifiers apart: a character that is pressed with nothing but Shift or
    // AltGr as itself, all else like "<Ctrl+Alt+Shift+F1>"; Caps Lock shows as "<Lock+...>".
    std::string Typed() const;
    // Waits until Typed() is this and all is released, and returns what it is then.
    std::string WaitForTyped(const std::string& expected) const;
    // Empty, or which key was released that was not the last one pressed, or not released.
    std::string Unmirrored() const;
    void ForgetKeys() { m_forgotten += Keys().size(); }
    void Close() { m_program.reset(); }
    ChildProcess& Program() { return *m_program; }

  private:
    std::unique_ptr<ChildProcess> m_program;
    xcb_window_t m_window = 0;
    std::size_t m_forgotten = 0;
};

}  // namespace spellwick::testing_support
