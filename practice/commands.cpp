#include "practice/commands.h"

#include "practice/roster.h"

namespace spellwick::practice {

std::optional<GameCommand> ParseCommand(std::string_view line) {
    using Kind = GameCommand::Kind;
    const std::size_t blank = line.find(' ');
    const std::string_view word = line.substr(0, blank);
    const std::string_view rest =
        blank == std::string_view::npos ? std::string_view() : line.substr(blank + 1);
    if (word == "title") {
        return GameCommand{.kind = Kind::kTitle, .title = std::string(rest)};
    }
    if (word == "login") {
        const int number = rest.size() == 1 ? rest.front() - '0' : 0;
        if (number < 1 || number > static_cast<int>(kRoster.size())) {
            return std::nullopt;
        }
        return GameCommand{.kind = Kind::kLogin, .character = number};
    }
    if (line == "logout") {
        return GameCommand{.kind = Kind::kLogout};
    }
    if (line == "raise") {
        return GameCommand{.kind = Kind::kRaise};
    }
    if (line == "quit") {
        return GameCommand{.kind = Kind::kQuit};
    }
    return std::nullopt;
}

}  // namespace spellwick::practice
