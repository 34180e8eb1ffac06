#include "practice/clients.h"

#include <algorithm>
#include <array>

namespace spellwick::practice {
namespace {

struct ClientRow {
    Client client;
    std::string_view name;
    std::string_view windowClass;
    std::string_view windowsClass;
    std::string_view loginTitle;
};

constexpr std::array<ClientRow, 5> kClients{{
    {Client::kClassic, "classic", kWindowClass, kWindowClass, kLoginTitle},
    {Client::kOrion, "orion", "orionuo.exe", "Orion UO Client", kLoginTitle},
    {Client::kCrossUo, "crossuo", "crossuo", "SDL_app", "Ultima Online v1.0.0"},
    {Client::kClassicUo, "classicuo", "ClassicUO", "SDL_app", "ClassicUO - 1.0.0"},
    {Client::kTazUo, "tazuo", "ClassicUO", "SDL_app", "[TazUO 4.0.0]"},
}};

const ClientRow& RowOf(Client client) {
    return *std::ranges::find(kClients, client, &ClientRow::client);
}

}  // namespace

std::optional<Client> ClientOfName(std::string_view name) {
    const auto* row = std::ranges::find(kClients, name, &ClientRow::name);
    return row == kClients.end() ? std::nullopt : std::optional(row->client);
}

std::string_view WindowClassOf(Client client) {
    return RowOf(client).windowClass;
}

std::string_view WindowsClassOf(Client client) {
    return RowOf(client).windowsClass;
}

std::string LoginTitleOf(Client client) {
    return std::string(RowOf(client).loginTitle);
}

std::string TitleOf(Client client, const Character& character, int hits) {
    const std::string name(character.name);
    if (client == Client::kClassicUo) {
        return name + " - " + LoginTitleOf(client);
    }
    if (client == Client::kTazUo) {
        return name + " - HP " + std::to_string(hits) + "/100, MP 42/50, SP 95/100 - " +
               LoginTitleOf(client);
    }
    return TitleOf(character);
}

bool ShowsStatistics(Client client) {
    return client == Client::kTazUo;
}

bool HasMacroFile(Client client) {
    return client == Client::kClassicUo || client == Client::kTazUo;
}

EmptyEnter EmptyEnterOf(Client client, bool opensChat) {
    if (!HasMacroFile(client)) {
        return EmptyEnter::kKey;
    }
    return opensChat ? EmptyEnter::kOpensChat : EmptyEnter::kSaysEmpty;
}

}  // namespace spellwick::practice
