// The clients of the game that the practice game can play: how their windows look, and what they do
// with Enter.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "practice/roster.h"

namespace spellwick::practice {

enum class Client { kClassic, kOrion, kCrossUo, kClassicUo, kTazUo };

// "classic", "orion", "crossuo", "classicuo", "tazuo"; nothing for any other name.
std::optional<Client> ClientOfName(std::string_view name);

// The class of its window on Linux, both halves.
std::string_view WindowClassOf(Client client);

// The class of its window on Windows.
std::string_view WindowsClassOf(Client client);

std::string LoginTitleOf(Client client);

// Hit points, which TazUO writes into its title.
std::string TitleOf(Client client, const Character& character, int hits);

// Whether its title has numbers that change.
bool ShowsStatistics(Client client);

// Whether its macro keys stand in a file macros.xml.
bool HasMacroFile(Client client);

// What Enter does while no line of text is begun.
enum class EmptyEnter {
    kKey,        // nothing: it is a key like another
    kSaysEmpty,  // says an empty line
    kOpensChat   // opens the line of text, without which nothing can be typed
};

// `opensChat` is the player's option, which the others do not have.
EmptyEnter EmptyEnterOf(Client client, bool opensChat);

}  // namespace spellwick::practice
