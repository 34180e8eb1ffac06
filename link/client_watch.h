// Finds the game client and reads the character out of its title.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "model/shared_state.h"
#include "platform/client_windows.h"

namespace spellwick {

inline constexpr std::string_view kNoClientTitle = "Ultima Online - ? (?)";

struct TitleNames {
    std::string character;
    std::string server;

    bool operator==(const TitleNames&) const = default;
};

// Character and server of a client's title, or nothing when it has no bracket.
// RuntimeFailure (invalid call) when the bracket stands where the character should begin.
std::optional<TitleNames> ParseTitle(std::string_view title);

// Whether a character is logged in there: at the login, and without a client, the server is "?" or
// empty.
bool IsRealServer(std::string_view server);

// Text of the main window's caption.
std::string CaptionText(std::string_view character, std::string_view server);

class ClientWatch {
  public:
    ClientWatch(SharedState& state, ClientWindows& windows) : m_state(state), m_windows(windows) {}

    // Looks for the client by its two classes and keeps its handle; false when there is none.
    bool FindClient();

    // Reads the title of ClientWindow into ClientTitle.
    void ReadClientTitle();

    // Finds the client and reads its title. Without a client the title and both names become those
    // of no client, and the answer is false.
    bool ReadClient();

    // Fills CharacterName and ServerName from ClientTitle; a title without a bracket leaves them.
    // RuntimeFailure as ParseTitle.
    void ParseClientTitle();

  private:
    SharedState& m_state;
    ClientWindows& m_windows;
};

}  // namespace spellwick
