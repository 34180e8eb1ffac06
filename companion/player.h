// The character: found by the watch on the client's title, loaded and saved.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "companion/display.h"
#include "companion/page.h"
#include "companion/purse.h"
#include "companion/services.h"
#include "companion/tithes.h"
#include "link/client_watch.h"
#include "store/settings_io.h"

namespace spellwick {

class Player {
  public:
    // What a load shows; all outlive it.
    struct Parts {
        Display& display;
        Page& page;
        Purse& purse;
        Tithes& tithes;
    };

    Player(const CompanionServices& services, const Parts& parts);

    // The work of each second: finds the client, reads its title, switches the character.
    void Tick();

    bool FindClient() { return m_watch.FindClient(); }
    // Character and server from ClientTitle, with the caption.
    void ParseClientTitle();
    void ShowCaption();
    // The message box for an act that needs the client.
    void ShowClientNotFound();

    // Saves and loads CurrentPlayerName.
    void Save();
    void Load();
    // Saves the global keys and the character; a message box says so when it fails.
    void SaveAll(const WindowPlaces& places);
    // Writes one option at once; a message box says so when it fails.
    void SaveOption(std::string_view key, const std::string& value);
    // Says in a message box that a save failed; once for one trouble.
    void ReportSave(const StoreResult& result);

    SettingsIo& Io() { return m_io; }

  private:
    void ShowPart(PlayerPart part);
    void FollowTitle();

    const CompanionServices& m_services;
    SharedState& m_state;
    Parts m_parts;
    SettingsIo m_io;
    ClientWatch m_watch;
    bool m_saveTroubleShown = false;
};

}  // namespace spellwick
