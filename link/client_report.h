// What a player is told of the clients: why none is found, and the row for a window that is to be
// one.
#pragma once

#include <string>
#include <vector>

#include "link/game_clients.h"

namespace spellwick {

// A sentence that says how near the desktop's windows come to a known client.
std::string NothingFoundText(const std::vector<GameClient>& clients,
                             const std::vector<TopLevelWindow>& windows, WindowClassKind kind);

// Whether this is the one window that a Wine desktop shows of all programs in it.
bool IsWineDesktop(const TopLevelWindow& window);

// A row for a window that is the game: its class, and a form made of its title. Made to be edited.
TableRow ProposeRow(const std::vector<GameClient>& clients, const TopLevelWindow& window,
                    WindowClassKind kind);

}  // namespace spellwick
