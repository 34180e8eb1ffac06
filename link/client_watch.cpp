#include "link/client_watch.h"

#include <array>

#include "text/characters.h"

namespace spellwick {

namespace {

constexpr std::array<std::string_view, 2> kClientClasses{"Ultima Online",
                                                         "Ultima Online Third Dawn"};
constexpr std::size_t kTitlePrefixLength = 16;  // characters of "Ultima Online - "

}  // namespace

std::optional<TitleNames> ParseTitle(std::string_view title) {
    // ODDITY(title-prefix-unread): any window of the client's class is taken for the client,
    // whatever its title begins with; kept because the class tells the client, and titles vary.
    const std::string_view names = SkipCharacters(title, kTitlePrefixLength);
    const std::size_t open = names.find('(');
    if (open == std::string_view::npos) {
        return std::nullopt;
    }
    const std::size_t before = CountCharacters(names.substr(0, open));
    if (before == 0) {
        throw RuntimeFailure(FailureKind::kInvalidCall,
                             "The client's title has a bracket in place of a character.");
    }
    const std::string_view server = names.substr(open + 1);
    return TitleNames{std::string(FirstCharacters(names, before - 1)),
                      std::string(server.substr(0, server.find(')')))};
}

bool IsRealServer(std::string_view server) {
    return !server.empty() && server != "?";
}

std::string CaptionText(std::string_view character, std::string_view server) {
    return std::string(kApplicationName) + " " + kVersion +
           "   Character: " + std::string(character) + "   Server: " + std::string(server);
}

bool ClientWatch::FindClient() {
    m_state.ClientWindow = m_windows.FindWindowOfClasses(kClientClasses);
    return m_state.ClientWindow != 0;
}

void ClientWatch::ReadClientTitle() {
    m_state.ClientTitle = m_windows.WindowTitle(m_state.ClientWindow);
}

void ClientWatch::ParseClientTitle() {
    if (const std::optional<TitleNames> names = ParseTitle(m_state.ClientTitle)) {
        m_state.CharacterName = names->character;
        m_state.ServerName = names->server;
    }
}

bool ClientWatch::ReadClient() {
    bool found = FindClient();
    if (found) {
        ReadClientTitle();
    }
    // A client that closes while its title is read leaves an empty one. That must not pass for a
    // new character, or the old one's data would have no name to be saved under.
    if (found && m_state.ClientTitle.empty()) {
        found = FindClient();
        ReadClientTitle();
    }
    if (!found) {
        m_state.ClientTitle = kNoClientTitle;
        m_state.CharacterName = "?";
        m_state.ServerName = "?";
    }
    return found;
}

}  // namespace spellwick
