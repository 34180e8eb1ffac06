// Stands in front of the real windows and makes other clients look like the classic one: the search
// for its classes finds the windows of known clients too, and their titles come in the one form
// "Ultima Online - NAME (SHARD)".
#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "link/game_clients.h"
#include "platform/client_windows.h"

namespace spellwick {

class TranslatedWindows : public ClientWindows {
  public:
    using Clock = std::function<std::chrono::steady_clock::time_point()>;

    // `windows` outlives it.
    TranslatedWindows(ClientWindows& windows, std::vector<GameClient> clients,
                      Clock clock = &std::chrono::steady_clock::now);

    // Takes other rows, from the next search on.
    void SetClients(std::vector<GameClient> clients);

    // The row of the window that the last search found. Null for the classic client, and when no
    // client was found. Valid until SetClients.
    const GameClient* Current() const;

    [[nodiscard]] WindowHandle FindWindowByClass(std::string_view windowClass) override {
        return m_windows.FindWindowByClass(windowClass);
    }

    // The classic client is asked for first, and its windows are left as they are. If there is
    // none, one of the known clients' windows: the one that was in front last, else the topmost.
    [[nodiscard]] WindowHandle FindWindowOfClasses(
        std::span<const std::string_view> windowClasses) override;

    // The title of a known client's window in the common form; "Ultima Online - ? (?)" while no
    // character is logged in.
    std::string WindowTitle(WindowHandle window) override;

    // The title as the window itself has it.
    std::string RealTitle(WindowHandle window) { return m_windows.WindowTitle(window); }

    [[nodiscard]] bool SetForegroundWindow(WindowHandle window) override {
        return m_windows.SetForegroundWindow(window);
    }
    [[nodiscard]] bool IsForegroundWindow(WindowHandle window) override {
        return m_windows.IsForegroundWindow(window);
    }
    [[nodiscard]] bool SetFocus(WindowHandle window) override { return m_windows.SetFocus(window); }
    [[nodiscard]] bool HasKeyboard(WindowHandle window) override {
        return m_windows.HasKeyboard(window);
    }
    [[nodiscard]] bool ProgramHasKeyboard(WindowHandle window) override {
        return m_windows.ProgramHasKeyboard(window);
    }
    [[nodiscard]] bool WaitUntilRead(WindowHandle window,
                                     std::chrono::milliseconds patience) override {
        return m_windows.WaitUntilRead(window, patience);
    }
    [[nodiscard]] bool FollowsKeyMapLate(WindowHandle window) override {
        return m_windows.FollowsKeyMapLate(window);
    }
    [[nodiscard]] std::optional<WindowArea> AreaOf(WindowHandle window) override {
        return m_windows.AreaOf(window);
    }
    [[nodiscard]] WindowClassKind ClassKind() const override { return m_windows.ClassKind(); }
    [[nodiscard]] std::vector<TopLevelWindow> WindowsOfClasses(
        const std::vector<std::string>& classes) override {
        return m_windows.WindowsOfClasses(classes);
    }
    [[nodiscard]] std::vector<TopLevelWindow> AllWindows() override {
        return m_windows.AllWindows();
    }
    [[nodiscard]] std::vector<std::filesystem::path> ProgramFolders(WindowHandle window) override {
        return m_windows.ProgramFolders(window);
    }

    const std::vector<GameClient>& Clients() const { return m_clients; }

  private:
    // A known client's window, as a search has found it.
    struct Found {
        TopLevelWindow window;
        KnownTitle known;
    };

    // The shard of a character as the client's folders have it; looked up when the window or the
    // name has changed, and not yet again within a second.
    struct LookedUp {
        WindowHandle window = 0;
        std::string name;
        std::optional<std::string> shard;
        std::chrono::steady_clock::time_point when{};
    };

    bool LookUpShard(WindowHandle window, const std::string& name);
    void Keep(const TopLevelWindow& window, const GameClient* client);
    std::vector<Found> KnownWindows();
    const Found& Choose(const std::vector<Found>& found);

    ClientWindows& m_windows;
    std::vector<GameClient> m_clients;
    std::vector<std::string> m_classes;  // of all clients
    TopLevelWindow m_found;              // the client's window, its handle 0 without one
    const GameClient* m_current = nullptr;
    Clock m_clock;
    LookedUp m_lookedUp;
    WindowHandle m_inFront = 0;  // of the known clients' windows, the one in front last
};

}  // namespace spellwick
