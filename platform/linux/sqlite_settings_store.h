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

// How a connection to a store came about.
enum class StoreState {
    kReady,
    kDamaged,      // no database, not ours, or broken: the data in it cannot be had
    kUnavailable,  // locked, forbidden, no space: the data may well be sound
};

class SqliteSettingsStore final : public SettingsStore {
  public:
    // A store in the file, which need not exist, or in memory for an empty path. Nothing is opened
    // yet.
    explicit SqliteSettingsStore(std::filesystem::path file) : m_file(std::move(file)) {}

    // Opens the file, makes the table where there is none, and reads so much that a broken store
    // shows itself. Without it, or after it failed, reads find nothing and each write tries again.
    StoreState Connect();

    // Why the last Connect failed, in words of SQLite.
    const std::string& Reason() const { return m_reason; }

    // Whether the store that was opened can be read and not written.
    bool IsReadOnly() const;

    std::optional<std::string> Read(std::string_view section, std::string_view key) const override;
    SectionValues ReadSection(std::string_view section) const override;
    StoreResult Apply(const std::vector<SettingChange>& changes) override;
    StoreResult RemoveSection(std::string_view section) override;
    std::vector<std::string> Sections() const override;

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
    // A connection to write through: opened anew when there is none, or when the file was taken
    // away. SQLITE_OK or an error.
    int Require();
    StoreResult Trouble(int code) const;

    std::filesystem::path m_file;
    std::string m_reason;
    Connection m_connection;
    // Sections whose data could not be read. They are not written either: what the program holds
    // for them are defaults, and those must not take the place of the user's data.
    mutable std::set<std::string, std::less<>> m_unread;
};

}  // namespace spellwick
