// The commands that the practice game takes on its standard input, one per line.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace spellwick::practice {

struct GameCommand {
    enum class Kind { kLogin, kLogout, kTitle, kRaise, kQuit };
    Kind kind;
    // For kLogin: 1 to the number of characters.
    int character = 0;
    // For kTitle: the whole title, which may be empty.
    std::string title = {};

    bool operator==(const GameCommand&) const = default;
};

// `login N`, `logout`, `title TEXT`, `raise`, `quit`; nothing for any other line.
std::optional<GameCommand> ParseCommand(std::string_view line);

}  // namespace spellwick::practice
