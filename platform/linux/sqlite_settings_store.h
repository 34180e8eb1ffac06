// The settings store in a SQLite file that several processes may use at the same time.
#pragma once

#include <filesystem>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "platform/linux/sqlite_handles.h"
#include "platform/settings_store.h"

namespace spellwick {

// The state of a store.
enum class StoreState {
    kReady,
    kDamaged,      // not a database, not ours, or broken: its data cannot be read
    kUnavailable,  // locked, forbidden, no space: its data may be intact
};

class SqliteSettingsStore final : public SettingsStore {
  public:
    // A store in the file, which need not exist, or in memory for an empty path. Does not open it
    // yet.
    explicit SqliteSettingsStore(std::filesystem::path file) : m_file(std::move(file)) {}

    // Opens the file, makes the table if there is none, and reads enough to notice a broken store.
    // Before it, or after it has failed, reads find nothing and each write tries again.
    StoreState Connect();

    // Why the last Connect failed, in SQLite's words.
    const std::string& Reason() const { return m_reason; }

    // Whether the open store can be read but not written.
    bool IsReadOnly() const;

    std::optional<std::string> Read(std::string_view section, std::string_view key) const override;
    SectionValues ReadSection(std::string_view section) const override;
    StoreResult Apply(const std::vector<SettingChange>& changes) override;
    StoreResult RemoveSection(std::string_view section) override;
    std::vector<std::string> Sections() const override;
    // settings.db.copy-20011231-235959; nothing for a store in memory.
    StoreResult KeepCopy(std::chrono::system_clock::time_point now) override;

  private:
    struct Connection {
        SqliteDatabase database;
        SqliteStatement begin;
        SqliteStatement commit;
        SqliteStatement rollback;
        SqliteStatement read;
        SqliteStatement readSection;
        SqliteStatement put;
        SqliteStatement remove;
        SqliteStatement removeSection;
        SqliteStatement nextSection;
    };

    // Each gives SQLITE_OK or the error at which it stopped.
    static int Probe(sqlite3* database);
    static int PrepareAll(Connection& connection);
    int ApplyOne(const SettingChange& change);
    int ApplyAll(const std::vector<SettingChange>& changes);

    StoreState Refuse(sqlite3* database, int code);
    // Makes sure that there is a connection to write through: reopens it if there is none or if the
    // file was removed. SQLITE_OK or an error.
    int Require();
    StoreResult Trouble(int code) const;

    std::filesystem::path m_file;
    std::string m_reason;
    Connection m_connection;
    // Sections that could not be read. They are not written either: the program has only defaults
    // for them, and those must not replace the user's data.
    mutable std::set<std::string, std::less<>> m_unread;
};

}  // namespace spellwick
