#include "companion/game_choice.h"

#include <algorithm>
#include <sstream>

#include "companion/own_table.h"
#include "link/client_report.h"
#include "link/client_watch.h"

namespace spellwick {

namespace fs = std::filesystem;

namespace {

GameClients ReadText(std::string_view text) {
    std::istringstream input{std::string(text)};
    return ReadGameClients(input);
}

}  // namespace

std::optional<fs::path> GameChoice::OwnTable() const {
    return m_place.folder ? std::optional(*m_place.folder / kGameClientsFile) : std::nullopt;
}

std::string GameChoice::LoadTable() {
    LoadedTable<GameClient> table = LoadGameClients(m_place.folder);
    m_windows.SetClients(std::move(table.rows));
    m_fault = std::move(table.fault);
    return m_fault;
}

std::string GameChoice::FoundText() {
    if (m_state.ClientWindow == 0) {
        if (!m_fault.empty()) {
            return "No game is found. " + m_fault;
        }
        return "No game is found. " +
               NothingFoundText(m_windows.Clients(), m_windows.AllWindows(), m_windows.ClassKind());
    }
    const GameClient* client = m_windows.Current();
    std::string text = client == nullptr ? "Classic client" : client->name;
    text += "\nTitle: " + m_windows.RealTitle(m_state.ClientWindow);
    const std::optional<TitleNames> names = ParseTitle(m_state.ClientTitle);
    if (!names || !IsRealServer(names->server)) {
        return text + "\nNobody is logged in.";
    }
    return text + "\nCharacter: " + names->character + "   Shard: " + names->server;
}

std::string GameChoice::NoticeText() {
    const std::vector<TopLevelWindow> windows = m_windows.AllWindows();
    std::string text;
    if (const auto desktop = std::ranges::find_if(windows, &IsWineDesktop);
        desktop != windows.end()) {
        text = "\"" + desktop->title +
               "\" is a desktop of Wine's own: of all programs in it only this one window can be "
               "seen, without the game's title. Choose it below to make a row for it.";
    }
    if (m_place.wayland && m_state.ClientWindow == 0) {
        text += text.empty() ? "" : "\n";
        text +=
            "This is a Wayland session, and no X11 window of the game is there. The game may run "
            "as a native Wayland window, which Spellwick cannot see: start it with "
            "SDL_VIDEO_DRIVER=x11 in its environment.";
    }
    return text;
}

std::vector<TopLevelWindow> GameChoice::Windows() {
    std::vector<TopLevelWindow> windows = m_windows.AllWindows();
    std::erase_if(windows, [&](const TopLevelWindow& window) {
        return window.handle == m_state.MainWindowHandle || window.title.empty();
    });
    return windows;
}

TableRow GameChoice::Propose(const TopLevelWindow& window) const {
    return ProposeRow(m_windows.Clients(), window, m_windows.ClassKind());
}

std::string GameChoice::MakeOwnTable() {
    return spellwick::MakeOwnTable(OwnTable(), DeliveredGameClients());
}

std::string GameChoice::AddRow(const TableRow& row) {
    if (std::string trouble = MakeOwnTable(); !trouble.empty()) {
        return trouble;
    }
    const fs::path own = *OwnTable();
    std::string table;
    try {
        table = ReadTableFile(own);
    } catch (const RuntimeFailure& failure) {
        return std::string(kGameClientsFile) + ": " + failure.what() + ".";
    }
    if (const GameClients read = ReadText(table); read.fault) {
        return FaultText(kGameClientsFile, *read.fault, kGameClientColumns);
    }
    const std::string text = WithFirstRow(table, row);
    // The row is the first, so its fault is found first.
    if (const GameClients read = ReadText(text); read.fault) {
        return FaultText(kGameClientsFile, *read.fault, kGameClientColumns);
    }
    if (!ReplaceFile(own, text)) {
        return NotWritten(own);
    }
    return LoadTable();
}

}  // namespace spellwick
