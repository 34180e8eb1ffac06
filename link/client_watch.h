// Finds the game client, reads the character out of its title and switches the player when the
// title changes.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "model/shared_state.h"
#include "platform/client_windows.h"

namespace spellwick {

inline constexpr std::string_view kNoClientTitle = "Ultima Online - ? (?)";

// What the watch calls in the rest of the program.
class ClientWatchHost {
  public:
    virtual ~ClientWatchHost() = default;

    virtual void ShowCaption() = 0;
    virtual void SavePlayer() = 0;  // under CurrentPlayerName
    virtual void LoadPlayer() = 0;  // of CurrentPlayerName
    virtual void UpdatePage() = 0;
    virtual void FindAssist() = 0;
};

struct TitleNames {
    std::string character;
    std::string server;

    bool operator==(const TitleNames&) const = default;
};

// Character and server of a client's title, or nothing when it has no bracket.
// RuntimeFailure (invalid call) when the bracket stands where the character should begin.
std::optional<TitleNames> ParseTitle(std::string_view title);

// Text of the main window's caption.
std::string CaptionText(std::string_view character, std::string_view server);

class ClientWatch {
  public:
    ClientWatch(SharedState& state, ClientWindows& windows, ClientWatchHost& host)
        : m_state(state), m_windows(windows), m_host(host) {}

    // Looks for the client by its two classes and keeps its handle; false when there is none.
    bool FindClient();

    // Reads the title of ClientWindow into ClientTitle.
    void ReadClientTitle();

    // Fills CharacterName and ServerName from ClientTitle and shows the caption.
    void ParseClientTitle();

    // The work of each second.
    void Tick();

  private:
    void FollowTitle();

    SharedState& m_state;
    ClientWindows& m_windows;
    ClientWatchHost& m_host;
};

}  // namespace spellwick
