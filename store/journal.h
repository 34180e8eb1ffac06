// The recovery journal: what a player changed and no save has taken yet, in memory and in a file
// that outlives a kill. The store itself is written only when the program says so.
#pragma once

#include <chrono>
#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <string_view>

#include "platform/clock.h"
#include "platform/journal_file.h"
#include "platform/settings_store.h"
#include "store/setting_changes.h"

namespace spellwick {

class Journal {
  public:
    // `file` may be null: then what is not saved lives in memory alone. Both outlive the journal.
    Journal(JournalFile* file, const Clock& clock) : m_file(file), m_clock(clock) {}

    // What an earlier run left of one character.
    struct Found {
        std::string section;
        i32 count = 0;          // values that differ from the store's
        std::int64_t time = 0;  // of the last of them, in seconds since 1970
    };

    // Takes in what an earlier run left in the file, as unsaved. Values that no load would take are
    // passed over, as is all behind a fault.
    std::vector<Found> Recover(const SettingsStore& store);

    // Lays what is unsaved over the values of a section that the store gave.
    void Overlay(std::string_view section, SectionValues& values) const;

    // The data of the player in memory, just loaded: what is noted next is compared with it.
    void Begin(SettingChanges player) { m_noted = std::move(player); }
    // Nothing in memory is to be noted, until the next Begin.
    void Pause() { m_noted.clear(); }

    // Notes what has changed since the last time, in memory and in the file. Nothing for a player
    // whose load did not begin here. To be called about twice a second.
    void Note(SettingChanges player);

    // Everything that no save has taken yet.
    SettingChanges Unsaved() const;

    // A save has taken all of these sections, and the player as given, which may be none. The file
    // is empty when nothing is unsaved any more.
    void Saved(const std::set<std::string, std::less<>>& sections, const SettingChanges& player);

    // Waits until the file is on the disk, if it has changed.
    void Sync();

  private:
    struct Value {
        std::string text;
        std::int64_t time = 0;
    };

    bool IsNoted(const SettingChanges& player) const;
    void Write(std::string_view lines);
    void WriteAnew();
    void Settle(bool written);
    std::string WholeFile() const;

    JournalFile* m_file;
    const Clock& m_clock;
    std::map<std::string, std::map<std::string, Value, std::less<>>, std::less<>> m_unsaved;
    SettingChanges m_noted;
    std::size_t m_bytes = 0;      // in the file
    std::size_t m_rewriteAt = 0;  // so many bytes, at least
    bool m_inDoubt = false;       // the file may not hold what it should, and is to be written anew
    bool m_troubleSaid = false;   // in the log, once for one trouble
    int m_notesSinceSync = 0;
    bool m_unsynced = false;
};

}  // namespace spellwick
