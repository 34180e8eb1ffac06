// The windows of other programs on an X server: search, titles, activation.
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include <sys/types.h>

#include "platform/client_windows.h"
#include "platform/linux/x11_connection.h"
#include "platform/linux/x11_window_hints.h"
#include "platform/linux/x11_window_search.h"

namespace spellwick {

class X11ClientWindows : public ClientWindows {
  public:
    // An empty display means the one in the environment. Null on failure; `error` is then a
    // sentence for the user.
    static std::unique_ptr<X11ClientWindows> Open(const std::string& display, std::string& error);

    WindowHandle FindWindowByClass(std::string_view windowClass) override;
    WindowHandle FindWindowOfClasses(std::span<const std::string_view> windowClasses) override;
    std::vector<TopLevelWindow> WindowsOfClasses(const std::vector<std::string>& classes) override {
        return m_search.List(&classes);
    }
    std::vector<TopLevelWindow> AllWindows() override;
    std::vector<std::filesystem::path> ProgramFolders(WindowHandle window) override;
    std::string WindowTitle(WindowHandle window) override;
    std::optional<WindowArea> AreaOf(WindowHandle window) override;
    bool SetForegroundWindow(WindowHandle window) override;
    bool IsForegroundWindow(WindowHandle window) override;
    bool SetFocus(WindowHandle window) override;
    bool HasKeyboard(WindowHandle window) override;
    bool ProgramHasKeyboard(WindowHandle window) override;
    bool FollowsKeyMapLate(WindowHandle window) override {
        return window != 0 && m_search.IsWindowsProgram(window);
    }
    bool WaitUntilRead(WindowHandle window, std::chrono::milliseconds patience) override;

  private:
    static constexpr int kLookAgainMilliseconds = 10;
    static constexpr std::uint32_t kRootEvents = XCB_EVENT_MASK_PROPERTY_CHANGE;

    explicit X11ClientWindows(const std::string& display);

    // The process that a window belongs to; nothing if it does not say, or runs elsewhere.
    std::optional<pid_t> ProcessOf(WindowHandle window);
    bool ManagerActivates() const;
    bool ActivateThroughManager(xcb_window_t window);
    void GoToDesktopOf(xcb_window_t window);
    bool ActivateByHand(xcb_window_t window);
    bool GiveFocus(xcb_window_t window);
    bool IsViewable(xcb_window_t window) const;
    bool Exists(xcb_window_t window) const;
    bool HasFocus(xcb_window_t window) const;
    xcb_window_t Focus() const;
    bool PointerIsInProgram(xcb_window_t base) const;
    std::optional<xcb_window_t> ParentOf(xcb_window_t window) const;
    xcb_timestamp_t ServerTime() const;
    bool WantsInput(xcb_window_t window) const;
    bool Speaks(xcb_window_t window, xcb_atom_t protocol) const;
    void Tell(xcb_window_t window, xcb_atom_t protocol, xcb_timestamp_t time) const;
    void ListenToRoot(std::uint32_t events) const;
    bool Answers(xcb_window_t window, std::chrono::steady_clock::time_point deadline) const;
    bool ArrivesPong(xcb_window_t window, xcb_timestamp_t time,
                     std::chrono::steady_clock::time_point deadline) const;
    void WaitForInput() const;
    // Takes events until one is `wanted`; false if none is before the deadline.
    bool WaitForEvent(std::chrono::steady_clock::time_point deadline,
                      const std::function<bool(const xcb_generic_event_t&)>& wanted) const;
    bool WaitFor(std::chrono::milliseconds patience, const std::function<bool()>& holds) const;

    X11Connection m_connection;
    X11WindowHints m_hints;
    // The search keeps the events of a connection of its own.
    X11Connection m_searchConnection;
    X11WindowHints m_searchHints;
    X11WindowSearch m_search;
    xcb_atom_t m_wmTakeFocus;
    xcb_window_t m_clock = XCB_NONE;  // a window of our own, for reading the server's time
};

}  // namespace spellwick
