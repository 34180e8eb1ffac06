// The table of game clients: how their windows are told from others, and how their titles read.
#pragma once

#include <array>
#include <istream>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "link/player_table.h"
#include "link/title_pattern.h"
#include "platform/client_windows.h"

namespace spellwick {

// The table beside the program, and the player's own in the settings' folder.
inline constexpr const char* kGameClientsFile = "GameClients.txt";

inline constexpr std::array<std::string_view, 7> kGameClientColumns{
    "name",  "X11 class", "Windows class", "title in the game", "title at the login",
    "shard", "Enter"};

struct GameClient {
    std::string name;                         // for the player
    std::vector<std::string> x11Classes;      // WM_CLASS, instance or class
    std::vector<std::string> windowsClasses;  // of window classes, and of Wine's
    std::vector<TitlePattern> inGame;         // all with a name
    std::vector<TitlePattern> atLogin;
    std::string shard;              // where neither title nor folder has one; not empty
    bool enterBehindMacro = false;  // whether Enter follows a macro key that has no text
};

using GameClients = Table<GameClient>;

GameClients ReadGameClients(std::istream& input);

// The table as it is delivered; it is part of the program, and has no fault.
std::string_view DeliveredGameClients();

// The player's own table in this folder, else the delivered one.
LoadedTable<GameClient> LoadGameClients(
    const std::optional<std::filesystem::path>& folder = std::nullopt);

// What a title says of a client.
struct KnownTitle {
    const GameClient* client = nullptr;
    bool inGame = false;
    std::string name;   // empty at the login
    std::string shard;  // empty where the title has none
};

// The client that a window belongs to: class and title must both fit. Forms with more fixed text
// are tried first, equal ones in the table's order. Points into `clients`.
std::optional<KnownTitle> FindGameClient(const std::vector<GameClient>& clients,
                                         const TopLevelWindow& window, WindowClassKind kind);

// Whether the client has windows of this window's class.
bool HasClass(const GameClient& client, const TopLevelWindow& window, WindowClassKind kind);

// The classes of all clients, each once.
std::vector<std::string> ClassesOf(const std::vector<GameClient>& clients, WindowClassKind kind);

// The one form of title that the rest of the program reads.
std::string CommonTitle(std::string_view name, std::string_view shard);

}  // namespace spellwick
