// The real keyboard of a private X server, and another program's window that reports what arrived.
#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "link/keystroke_sender.h"
#include "platform/linux/x11_client_windows.h"
#include "platform/linux/x11_keyboard.h"
#include "tests/support/any_target.h"
#include "tests/support/key_witness.h"

namespace spellwick {

inline constexpr const char* kWitnessTitle = "Ultima Online - Mira Talon (Atlantic)";
inline constexpr std::uint32_t kControlL = 0xffe3;
inline constexpr Pace kQuickPace{std::chrono::milliseconds(8), std::chrono::milliseconds(8)};

class X11Typing : public testing::Test {
  protected:
    void SetUp() override {
        if (const std::string missing = testing_support::KeyWitness::WhatIsMissing();
            !missing.empty()) {
            GTEST_SKIP() << missing;
        }
        session = testing_support::XSession::Start(testing_support::WindowManager::kOpenbox);
        ASSERT_TRUE(session);
        witness = testing_support::KeyWitness::Start(*session, kWitnessTitle, "Ultima Online");
        ASSERT_TRUE(witness);
        std::string error;
        windows = X11ClientWindows::Open(session->Display(), error);
        ASSERT_TRUE(windows) << error;
        ASSERT_EQ(windows->FindWindowByClass("Ultima Online"), witness->Window());
        ASSERT_EQ(windows->WindowTitle(witness->Window()), kWitnessTitle);
        ASSERT_TRUE(windows->SetForegroundWindow(witness->Window()));
        keyboard = X11Keyboard::Open(session->Display(), error);
        ASSERT_TRUE(keyboard) << error;
    }

    // Types in the layout; expects the witness to see this, and the keyboard to be as before.
    void ExpectTyped(const std::string& text, const std::string& expected, Pace pace = kQuickPace) {
        SCOPED_TRACE("text " + text);
        const testing_support::KeyboardState before = session->Keyboard();
        witness->ForgetKeys();
        {
            KeystrokeSender sender(*keyboard, pace, std::chrono::milliseconds(300));
            const SendResult result = sender.SendKeys(text, true, anywhere);
            EXPECT_TRUE(result.Ok()) << result.error;
            EXPECT_EQ(witness->WaitForTyped(expected), expected);
            EXPECT_EQ(witness->Unmirrored(), "");
        }
        ExpectAsBefore(before);
    }

    void ExpectAsBefore(const testing_support::KeyboardState& before) {
        const testing_support::KeyboardState after = session->Keyboard();
        EXPECT_EQ(after.keysDown, before.keysDown);
        EXPECT_EQ(after.lockedModifiers, before.lockedModifiers);
        EXPECT_EQ(after.latchedModifiers, before.latchedModifiers);
        EXPECT_EQ(after.lockedGroup, before.lockedGroup);
        EXPECT_EQ(after.keymap, before.keymap);
    }

    std::unique_ptr<testing_support::XSession> session;
    std::unique_ptr<testing_support::KeyWitness> witness;
    std::unique_ptr<X11ClientWindows> windows;
    std::unique_ptr<X11Keyboard> keyboard;
};

}  // namespace spellwick
