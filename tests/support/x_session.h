// A private desktop for one test: its own X server, window manager, folders and processes.
#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <xcb/xcb.h>

#include "tests/support/child_process.h"

namespace spellwick::testing_support {

enum class WindowManager { kNone, kOpenbox, kMetacity };

// What must be the same before and after a test that types.
struct KeyboardState {
    std::array<std::uint8_t, 32> keysDown{};
    std::uint8_t lockedModifiers = 0;
    std::uint8_t latchedModifiers = 0;
    std::uint8_t lockedGroup = 0;
    std::string keymap;  // the server's whole map as text

    bool operator==(const KeyboardState&) const = default;
};

class XSession {
  public:
    // The sentence for GTEST_SKIP if a program that this needs is not installed, else empty.
    static std::string WhatIsMissing(WindowManager manager = WindowManager::kOpenbox);

    // Returns when the server answers and the window manager is ready. Null if that fails although
    // the programs are installed; the test should then fail.
    static std::unique_ptr<XSession> Start(WindowManager manager = WindowManager::kOpenbox);

    XSession(const XSession&) = delete;
    XSession& operator=(const XSession&) = delete;
    ~XSession();

    // Like ":5".
    const std::string& Display() const { return m_display; }
    // DISPLAY, HOME and the XDG folders, all inside Folder().
    const Environment& Variables() const { return m_environment; }
    const std::filesystem::path& Folder() const { return m_folder; }
    std::filesystem::path DataHome() const { return m_folder / "data"; }
    std::filesystem::path RuntimeDir() const { return m_folder / "runtime"; }
    // The tests' own connection to the server.
    xcb_connection_t* Connection() const { return m_connection; }
    xcb_window_t Root() const { return m_root; }

    std::unique_ptr<ChildProcess> Spawn(const std::vector<std::string>& command) const;
    RunResult Run(const std::vector<std::string>& command) const;
    // Kills the server, as at the end of a user's session.
    void KillServer();
    // Kills the window manager, which leaves its properties on the root window.
    void KillWindowManager();

    // For example SetLayout("us,ru") or SetLayout("de", "nodeadkeys"). False if it fails.
    bool SetLayout(const std::string& layout, const std::string& variant = "",
                   const std::string& option = "") const;
    // Locks a layout group, 0 to 3, and the given modifiers (bits as in a key event).
    void LockGroup(std::uint8_t group) const;
    void LockModifiers(std::uint8_t modifiers) const;
    // Presses or releases a key, as the user would.
    void FakeKey(std::uint8_t keycode, bool down) const;
    // The key that has this keysym at its first level; 0 if none.
    std::uint8_t KeycodeOf(std::uint32_t keysym) const;
    KeyboardState Keyboard() const;

    xcb_atom_t Atom(const std::string& name) const;
    // Waits until the window manager has put the window there. Desktops count from 0.
    bool PutOnDesktop(xcb_window_t window, std::uint32_t desktop) const;
    // The desktop that is shown.
    std::uint32_t CurrentDesktop() const;
    // The windows that the window manager manages, oldest first.
    std::vector<xcb_window_t> ClientList() const;
    xcb_window_t ActiveWindow() const;
    xcb_window_t FocusedWindow() const;
    std::string WindowName(xcb_window_t window) const;
    void SetWindowName(xcb_window_t window, const std::string& title) const;
    void SetWindowClass(xcb_window_t window, const std::string& instance,
                        const std::string& windowClass) const;
    // Waits for a mapped top-level window with this title; 0 if none appears.
    xcb_window_t WaitForWindow(const std::string& title) const;
    // Maps a window of the test itself; the WM_CLASS is instance and class.
    xcb_window_t MakeWindow(const std::string& instance, const std::string& windowClass,
                            const std::string& title) const;
    void DestroyWindow(xcb_window_t window) const;
    void Sync() const;
    // Returns when the window manager has handled everything sent before, for example a button
    // press that it holds back until it has activated the window. True if it has, or if none is
    // running.
    bool SyncWindowManager() const;

  private:
    XSession() = default;
    bool StartServer();
    bool Connect();
    bool StartManager(WindowManager manager);
    void MakeFolders();
    bool IsManaged(xcb_window_t window) const;
    xcb_window_t ShowWindow(const std::string& instance, const std::string& windowClass,
                            const std::string& title) const;
    std::vector<std::uint32_t> LongProperty(xcb_window_t window, const std::string& name) const;

    std::filesystem::path m_folder;
    Environment m_environment;
    std::unique_ptr<ChildProcess> m_server;
    std::unique_ptr<ChildProcess> m_windowManager;
    std::string m_display;
    xcb_connection_t* m_connection = nullptr;
    xcb_window_t m_root = 0;
};

// Polls until `holds` is true or the time has passed; returns whether it holds.
bool WaitUntil(const std::function<bool()>& holds,
               std::chrono::milliseconds patience = std::chrono::seconds(10));

}  // namespace spellwick::testing_support
