// A private X server with windows that the test makes, and the search that is tested.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "platform/linux/x11_client_windows.h"
#include "tests/support/x_session.h"

namespace spellwick {

inline constexpr const char* kClient = "Ultima Online";

class X11ClientWindowsTest : public testing::Test {
  protected:
    void Open(testing_support::WindowManager manager) {
        if (const std::string missing = testing_support::XSession::WhatIsMissing(manager);
            !missing.empty()) {
            GTEST_SKIP() << missing;
        }
        session = testing_support::XSession::Start(manager);
        ASSERT_TRUE(session);
        std::string error;
        windows = X11ClientWindows::Open(session->Display(), error);
        ASSERT_TRUE(windows) << error;
    }

    void SetProperty(xcb_window_t window, const char* name, xcb_atom_t type,
                     const std::string& bytes) {
        xcb_change_property(session->Connection(), XCB_PROP_MODE_REPLACE, window,
                            session->Atom(name), type, 8, static_cast<std::uint32_t>(bytes.size()),
                            bytes.data());
        session->Sync();
    }

    void SetCells(xcb_window_t window, const char* name, const char* type,
                  const std::vector<std::uint32_t>& cells) {
        xcb_change_property(session->Connection(), XCB_PROP_MODE_REPLACE, window,
                            session->Atom(name), session->Atom(type), 32,
                            static_cast<std::uint32_t>(cells.size()), cells.data());
        session->Sync();
    }

    std::unique_ptr<testing_support::XSession> session;
    std::unique_ptr<X11ClientWindows> windows;
};

}  // namespace spellwick
