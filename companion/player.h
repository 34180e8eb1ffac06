// The character: found by the watch on the client's title, loaded and saved.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "companion/display.h"
#include "companion/page.h"
#include "companion/purse.h"
#include "companion/services.h"
#include "companion/tithes.h"
#include "link/client_watch.h"
#include "store/journalled_store.h"
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

    // Runs before another character is loaded, while the counters are still the old one's.
    void SetBeforeSwitch(std::function<void()> run) { m_beforeSwitch = std::move(run); }

    // The work of each second: finds the client, reads its title, switches the character.
    void Tick();

    bool FindClient() { return m_watch.FindClient(); }
    // Character and server from ClientTitle, with the caption.
    void ParseClientTitle();
    void ShowCaption();
    // The message box for an act that needs the client.
    void ShowClientNotFound();

    // Saves and loads CurrentPlayerName. RuntimeFailure when a saved value cannot be read; the
    // character is then not saved either, since memory holds only a part of it.
    void Save();
    void Load();
    // Loads everything anew after the store has changed. Without a character in the store memory
    // then holds a new one without a name.
    void Reload();
    // The load of everything at the start. A value that cannot be read ends it there, and what was
    // not read keeps the values of a new character; a copy of the store is then made before the
    // first write. What a run before could not save is taken in and saved.
    void LoadAtStart();
    // What the start has to tell the user, once.
    std::vector<std::string> TakeStartHints() { return std::exchange(m_startHints, {}); }

    // Saves the global keys and the character; a message box says so when it fails.
    void SaveAll(const WindowPlaces& places);
    // Writes one option at once; a message box says so when it fails.
    void SaveOption(std::string_view key, const std::string& value);
    // Says in a message box that a save failed; once for one trouble. The box offers `again`, if
    // there is one.
    void ReportSave(StoreResult result, const std::function<StoreResult()>& again = {});

    // Notes in the recovery journal what has changed since the last time.
    void NoteChanges();
    // The same, and waits until it is on the disk.
    void KeepChanges();

    // The store with what it could not save.
    JournalledStore& Store() { return m_store; }

    SettingsIo& Io() { return m_io; }

  private:
    void ShowPart(PlayerPart part);
    void FollowTitle();
    void BeginNotes();
    void LogGame();

    const CompanionServices& m_services;
    SharedState& m_state;
    Parts m_parts;
    Journal m_journal;
    JournalledStore m_store;
    SettingsIo m_io;
    ClientWatch m_watch;
    std::function<void()> m_beforeSwitch = [] {};
    bool m_saveTroubleShown = false;
    WindowHandle m_loggedWindow = 0;
    std::string m_loggedTitle;
    std::vector<std::string> m_startHints;
};

}  // namespace spellwick
