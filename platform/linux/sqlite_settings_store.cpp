#include "platform/linux/sqlite_settings_store.h"

#include <algorithm>
#include <utility>

#include "platform/linux/time_text.h"

namespace spellwick {

namespace {

// Stores up to this size, a few hundred players, are checked completely at the start, which takes
// some milliseconds. In a larger one, damage is noticed when it is read.
constexpr sqlite3_int64 kCheckedBytes = 16LL * 1024 * 1024;

constexpr const char* kCopyMark = ".copy-";
constexpr std::size_t kKeptCopies = 5;

constexpr const char* kCreate =
    "CREATE TABLE IF NOT EXISTS setting(application TEXT, section TEXT, key TEXT, value TEXT, "
    "PRIMARY KEY(application, section, key)) WITHOUT ROWID";
constexpr const char* kRead =
    "SELECT value FROM setting WHERE application = 'Spellwick' AND section = ?1 AND key = ?2";
constexpr const char* kReadSection =
    "SELECT key, value FROM setting WHERE application = 'Spellwick' AND section = ?1";
constexpr const char* kPut =
    "INSERT INTO setting(application, section, key, value) VALUES('Spellwick', ?1, ?2, ?3) "
    "ON CONFLICT(application, section, key) DO UPDATE SET value = excluded.value "
    "WHERE value IS NOT excluded.value";
constexpr const char* kRemove =
    "DELETE FROM setting WHERE application = 'Spellwick' AND section = ?1 AND key = ?2";
constexpr const char* kRemoveSection =
    "DELETE FROM setting WHERE application = 'Spellwick' AND section = ?1";
// One lookup for each section, however many keys it has.
constexpr const char* kNextSection =
    "SELECT section FROM setting WHERE application = 'Spellwick' AND section > ?1 "
    "ORDER BY section LIMIT 1";

// The number in the first row of a query; -1 if it fails, with `code` set.
sqlite3_int64 QueryNumber(sqlite3* database, const char* sql, int& code) {
    const SqliteStatement statement = Prepare(database, sql, code);
    if (code != SQLITE_OK) {
        return -1;
    }
    const int step = sqlite3_step(statement.get());
    if (step != SQLITE_ROW) {
        code = step == SQLITE_DONE ? SQLITE_ERROR : step;
        return -1;
    }
    return sqlite3_column_int64(statement.get(), 0);
}

sqlite3_int64 TableCount(sqlite3* database, int& code) {
    return QueryNumber(database, "SELECT count(*) FROM sqlite_master", code);
}

int CheckWhole(sqlite3* database) {
    int code = SQLITE_OK;
    const SqliteStatement statement = Prepare(database, "PRAGMA quick_check(1)", code);
    if (code != SQLITE_OK) {
        return code;
    }
    StatementUse use(statement);
    const int step = use.Step();
    if (step != SQLITE_ROW) {
        return step == SQLITE_DONE ? SQLITE_OK : step;
    }
    return use.Column(0) == "ok" ? SQLITE_OK : SQLITE_CORRUPT;
}

// The names end with the time, so their order is that of the times.
void RemoveOldCopies(const std::filesystem::path& copies) {
    std::error_code ignored;
    std::vector<std::filesystem::path> found;
    for (const auto& entry : std::filesystem::directory_iterator(copies.parent_path(), ignored)) {
        if (entry.path().filename().string().starts_with(copies.filename().string())) {
            found.push_back(entry.path());
        }
    }
    std::ranges::sort(found, std::greater{});
    for (std::size_t i = kKeptCopies; i < found.size(); ++i) {
        std::filesystem::remove(found[i], ignored);
    }
}

bool IsDamage(int code) {
    switch (PrimaryCode(code)) {
        case SQLITE_CORRUPT:
        case SQLITE_NOTADB:
        case SQLITE_FORMAT:
        case SQLITE_ERROR:  // the table has a different form
            return true;
        default:
            return false;
    }
}

}  // namespace

StoreState SqliteSettingsStore::Connect() {
    m_connection = {};
    m_reason.clear();
    Connection made;
    sqlite3* database = nullptr;
    const char* name = m_file.empty() ? ":memory:" : m_file.c_str();
    int code = sqlite3_open_v2(
        name, &database, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX, nullptr);
    made.database.reset(database);
    if (code == SQLITE_OK) {
        sqlite3_busy_timeout(database, kBusyMilliseconds);
        code = Probe(database);
    }
    const bool fresh = code == SQLITE_OK && TableCount(database, code) == 0;
    if (code == SQLITE_OK && !fresh) {
        // A table of a different form is noticed here, before anything is written.
        code = PrepareAll(made);
    }
    if (code != SQLITE_OK) {
        return Refuse(database, code);
    }
    // Without the write-ahead log the store is just as safe, only slower, so go on if it cannot be
    // enabled (the store is busy or read-only).
    Execute(database, "PRAGMA journal_mode = WAL");
    // A save is on the disk when it is done, since the recovery journal is emptied after it.
    Execute(database, "PRAGMA synchronous = FULL");
    if (fresh) {
        code = Execute(database, kCreate);
        code = code == SQLITE_OK ? PrepareAll(made) : code;
    }
    if (code != SQLITE_OK) {
        return Refuse(database, code);
    }
    m_connection = std::move(made);
    return StoreState::kReady;
}

int SqliteSettingsStore::Probe(sqlite3* database) {
    int code = SQLITE_OK;
    if (TableCount(database, code) <= 0) {
        return code;
    }
    const sqlite3_int64 ours = QueryNumber(
        database, "SELECT count(*) FROM sqlite_master WHERE type = 'table' AND name = 'setting'",
        code);
    if (code == SQLITE_OK && ours == 0) {
        return SQLITE_NOTADB;  // a database, but not ours
    }
    const sqlite3_int64 pages = QueryNumber(database, "PRAGMA page_count", code);
    const sqlite3_int64 pageSize = QueryNumber(database, "PRAGMA page_size", code);
    if (code != SQLITE_OK || pages * pageSize > kCheckedBytes) {
        return code;
    }
    return CheckWhole(database);
}

int SqliteSettingsStore::PrepareAll(Connection& connection) {
    const std::pair<SqliteStatement*, const char*> statements[] = {
        {&connection.begin, "BEGIN IMMEDIATE"},  {&connection.commit, "COMMIT"},
        {&connection.rollback, "ROLLBACK"},      {&connection.read, kRead},
        {&connection.readSection, kReadSection}, {&connection.put, kPut},
        {&connection.remove, kRemove},           {&connection.removeSection, kRemoveSection},
        {&connection.nextSection, kNextSection},
    };
    for (const auto& [statement, sql] : statements) {
        int code = SQLITE_OK;
        *statement = Prepare(connection.database.get(), sql, code);
        if (code != SQLITE_OK) {
            return code;
        }
    }
    return SQLITE_OK;
}

StoreState SqliteSettingsStore::Refuse(sqlite3* database, int code) {
    m_reason = sqlite3_errstr(code);
    if (!IsDamage(code)) {
        return StoreState::kUnavailable;
    }
    if (database != nullptr) {
        // Leave a broken store exactly as it was found, for a person to look at.
        sqlite3_db_config(database, SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
    }
    return StoreState::kDamaged;
}

bool SqliteSettingsStore::IsReadOnly() const {
    return m_connection.database && sqlite3_db_readonly(m_connection.database.get(), "main") == 1;
}

std::optional<std::string> SqliteSettingsStore::Read(std::string_view section,
                                                     std::string_view key) const {
    if (!m_connection.database) {
        return std::nullopt;
    }
    StatementUse use(m_connection.read);
    return use.Bind(section).Bind(key).Step() == SQLITE_ROW ? use.Column(0) : std::nullopt;
}

SectionValues SqliteSettingsStore::ReadSection(std::string_view section) const {
    SectionValues values;
    if (!m_connection.database) {
        return values;
    }
    StatementUse use(m_connection.readSection);
    use.Bind(section);
    int step = use.Step();
    for (; step == SQLITE_ROW; step = use.Step()) {
        auto key = use.Column(0);
        auto value = use.Column(1);
        if (key && value) {
            values.emplace_hint(values.end(), std::move(*key), std::move(*value));
        }
    }
    if (step != SQLITE_DONE) {
        m_unread.emplace(section);
        return {};
    }
    if (const auto known = m_unread.find(section); known != m_unread.end()) {
        m_unread.erase(known);
    }
    return values;
}

StoreResult SqliteSettingsStore::Apply(const std::vector<SettingChange>& changes) {
    for (const SettingChange& change : changes) {
        if (m_unread.contains(change.section)) {
            return {false,
                    "Settings that could not be read are not overwritten, so they were not saved."
                    "\nFile: " +
                        m_file.string()};
        }
    }
    if (changes.empty()) {
        return {};
    }
    int code = Require();
    if (code != SQLITE_OK) {
        return Trouble(code);
    }
    code = ApplyAll(changes);
    if (code == SQLITE_OK) {
        return {};
    }
    if (sqlite3_get_autocommit(m_connection.database.get()) == 0) {
        StatementUse(m_connection.rollback).Step();
    }
    return Trouble(code);
}

int SqliteSettingsStore::ApplyAll(const std::vector<SettingChange>& changes) {
    int step = StatementUse(m_connection.begin).Step();
    for (auto change = changes.begin(); step == SQLITE_DONE && change != changes.end(); ++change) {
        step = ApplyOne(*change);
    }
    if (step == SQLITE_DONE) {
        step = StatementUse(m_connection.commit).Step();
    }
    return step == SQLITE_DONE ? SQLITE_OK : step;
}

int SqliteSettingsStore::ApplyOne(const SettingChange& change) {
    if (change.value) {
        return StatementUse(m_connection.put)
            .Bind(change.section)
            .Bind(change.key)
            .Bind(*change.value)
            .Step();
    }
    return StatementUse(m_connection.remove).Bind(change.section).Bind(change.key).Step();
}

StoreResult SqliteSettingsStore::RemoveSection(std::string_view section) {
    int code = Require();
    if (code == SQLITE_OK) {
        code = StatementUse(m_connection.removeSection).Bind(section).Step();
        code = code == SQLITE_DONE ? SQLITE_OK : code;
    }
    return code == SQLITE_OK ? StoreResult{} : Trouble(code);
}

std::vector<std::string> SqliteSettingsStore::Sections() const {
    std::vector<std::string> names;
    if (!m_connection.database) {
        return names;
    }
    std::string last;
    while (true) {
        StatementUse use(m_connection.nextSection);
        if (use.Bind(last).Step() != SQLITE_ROW) {
            return names;
        }
        last = use.Column(0).value_or("");
        names.push_back(last);
    }
}

StoreResult SqliteSettingsStore::KeepCopy(std::chrono::system_clock::time_point now) {
    if (m_file.empty()) {
        return {};
    }
    int code = Require();
    const std::string copies = m_file.string() + kCopyMark;
    if (code == SQLITE_OK) {
        std::filesystem::path name = copies + TimeText(now);
        std::error_code ignored;
        for (int number = 2; std::filesystem::exists(name, ignored); ++number) {
            name = copies + TimeText(now) + "-" + std::to_string(number);
        }
        const SqliteStatement copy = Prepare(m_connection.database.get(), "VACUUM INTO ?1", code);
        if (code == SQLITE_OK) {
            const std::string target = name.string();
            code = StatementUse(copy).Bind(target).Step();
            code = code == SQLITE_DONE ? SQLITE_OK : code;
            if (code != SQLITE_OK) {
                std::filesystem::remove(name, ignored);
            }
        }
    }
    if (code != SQLITE_OK) {
        return Trouble(code);
    }
    RemoveOldCopies(copies);
    return {};
}

int SqliteSettingsStore::Require() {
    int moved = 0;
    if (m_connection.database) {
        sqlite3_file_control(m_connection.database.get(), "main", SQLITE_FCNTL_HAS_MOVED, &moved);
    }
    if (m_connection.database && moved == 0) {
        return SQLITE_OK;
    }
    switch (Connect()) {
        case StoreState::kReady:
            return SQLITE_OK;
        case StoreState::kDamaged:
            return SQLITE_CORRUPT;
        case StoreState::kUnavailable:
            break;
    }
    return SQLITE_CANTOPEN;
}

StoreResult SqliteSettingsStore::Trouble(int code) const {
    std::string why;
    switch (PrimaryCode(code)) {
        case SQLITE_FULL:
            why = "The disk is full.";
            break;
        case SQLITE_BUSY:
        case SQLITE_LOCKED:
            why = "Another program is using the settings.";
            break;
        case SQLITE_READONLY:
        case SQLITE_PERM:
        case SQLITE_AUTH:
        case SQLITE_CANTOPEN:
            why = "The file of the settings cannot be written.";
            break;
        case SQLITE_CORRUPT:
        case SQLITE_NOTADB:
            why = "The file of the settings is damaged.";
            break;
        default:
            why = std::string("The settings could not be written (") + sqlite3_errstr(code) + ").";
            break;
    }
    return {false, why +
                       " The settings were not saved now; what was saved before is unharmed."
                       "\nFile: " +
                       m_file.string()};
}

}  // namespace spellwick
