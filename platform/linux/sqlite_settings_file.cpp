#include "platform/linux/sqlite_settings_file.h"

#include <system_error>

#include "platform/linux/sqlite_handles.h"

namespace spellwick {

namespace {

namespace fs = std::filesystem;

// Of the file's form. The store itself does not say one.
constexpr int kFormVersion = 1;

std::string Quoted(const fs::path& file) {
    return "\"" + file.string() + "\"";
}

SqliteDatabase Open(const fs::path& file, int flags, int& code) {
    sqlite3* database = nullptr;
    code = sqlite3_open_v2(file.c_str(), &database, flags | SQLITE_OPEN_NOMUTEX, nullptr);
    SqliteDatabase owner(database);
    if (code == SQLITE_OK) {
        sqlite3_busy_timeout(database, kBusyMilliseconds);
    }
    return owner;
}

// The first column of the first row; nothing, with `code` set, if there is none.
std::optional<std::string> QueryText(sqlite3* database, const char* sql, int& code) {
    const SqliteStatement statement = Prepare(database, sql, code);
    if (code != SQLITE_OK) {
        return std::nullopt;
    }
    StatementUse use(statement);
    const int step = use.Step();
    if (step != SQLITE_ROW) {
        code = step;
        return std::nullopt;
    }
    return use.Column(0);
}

int Fill(sqlite3* database, const AllSettings& settings) {
    int code = Execute(database,
                       "PRAGMA user_version = 1; BEGIN; CREATE TABLE setting(application TEXT, "
                       "section TEXT, key TEXT, value TEXT, PRIMARY KEY(application, section, "
                       "key)) WITHOUT ROWID");
    if (code != SQLITE_OK) {
        return code;
    }
    const SqliteStatement put =
        Prepare(database, "INSERT INTO setting VALUES('Spellwick', ?1, ?2, ?3)", code);
    for (const auto& [section, values] : settings) {
        for (const auto& [key, value] : values) {
            if (code == SQLITE_OK) {
                const int step = StatementUse(put).Bind(section).Bind(key).Bind(value).Step();
                code = step == SQLITE_DONE ? SQLITE_OK : step;
            }
        }
    }
    return code == SQLITE_OK ? Execute(database, "COMMIT") : code;
}

std::string WriteTrouble(const fs::path& file, int code) {
    const bool full = PrimaryCode(code) == SQLITE_FULL;
    return "The file " + Quoted(file) +
           (full ? " could not be written: the disk is full." : " cannot be written there.") +
           " Nothing was saved to it.";
}

std::string ReadTrouble(const fs::path& file, int code) {
    const std::string start = "The file " + Quoted(file) + " ";
    const std::string end = " Nothing was changed.";
    switch (PrimaryCode(code)) {
        case SQLITE_NOTADB:
        case SQLITE_ERROR:
            return start + "is not a file of Spellwick's settings." + end;
        case SQLITE_CORRUPT:
        case SQLITE_IOERR:
            return start + "is damaged." + end;
        case SQLITE_BUSY:
        case SQLITE_LOCKED:
            return start + "is in use by another program." + end;
        default:
            return start + "cannot be read." + end;
    }
}

int TakeRows(sqlite3* database, AllSettings& sections) {
    int code = SQLITE_OK;
    const SqliteStatement all = Prepare(
        database, "SELECT section, key, value FROM setting WHERE application = 'Spellwick'", code);
    if (code != SQLITE_OK) {
        return code;
    }
    StatementUse use(all);
    int step = use.Step();
    for (; step == SQLITE_ROW; step = use.Step()) {
        const auto section = use.Column(0);
        const auto key = use.Column(1);
        const auto value = use.Column(2);
        if (section && key && value) {
            sections[*section][*key] = *value;
        }
    }
    return step == SQLITE_DONE ? SQLITE_OK : step;
}

}  // namespace

StoreResult SqliteSettingsFile::Write(const fs::path& file, const AllSettings& settings) const {
    std::error_code ignored;
    if (fs::equivalent(file, m_store, ignored)) {
        return {false, "The file " + Quoted(file) +
                           " holds the settings in use. Choose another name for the copy."};
    }
    if (fs::exists(file, ignored) && !fs::is_regular_file(file, ignored)) {
        return {false, WriteTrouble(file, SQLITE_CANTOPEN)};
    }
    // Made beside it and renamed, so that a file of this name is replaced whole or not at all.
    const fs::path made = file.string() + ".spellwick-new";
    fs::remove(made, ignored);
    int code = SQLITE_OK;
    {
        const SqliteDatabase database =
            Open(made, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, code);
        code = code == SQLITE_OK ? Fill(database.get(), settings) : code;
    }
    if (code == SQLITE_OK) {
        std::error_code trouble;
        fs::rename(made, file, trouble);
        code = trouble ? SQLITE_CANTOPEN : SQLITE_OK;
    }
    if (code != SQLITE_OK) {
        fs::remove(made, ignored);
        fs::remove(made.string() + "-journal", ignored);
        return {false, WriteTrouble(file, code)};
    }
    return {};
}

ReadSettings SqliteSettingsFile::Read(const fs::path& file) const {
    std::error_code ignored;
    const auto refuse = [](std::string why) { return ReadSettings{{}, std::move(why)}; };
    if (!fs::is_regular_file(file, ignored)) {
        return refuse("There is no file " + Quoted(file) + ". Nothing was changed.");
    }
    int code = SQLITE_OK;
    const SqliteDatabase database = Open(file, SQLITE_OPEN_READONLY, code);
    const auto ask = [&](const char* sql) {
        return code == SQLITE_OK ? QueryText(database.get(), sql, code) : std::nullopt;
    };
    const auto tables =
        ask("SELECT count(*) FROM sqlite_master WHERE type = 'table' AND name = 'setting'");
    if (code == SQLITE_OK && tables == "0") {
        code = SQLITE_NOTADB;
    }
    const auto version = ask("PRAGMA user_version");
    if (code == SQLITE_OK && version && std::stoi(*version) > kFormVersion) {
        return refuse("The file " + Quoted(file) +
                      " was made by a newer version of Spellwick. Nothing was changed.");
    }
    const auto sound = ask("PRAGMA quick_check(1)");
    if (code == SQLITE_OK && sound != "ok") {
        code = SQLITE_CORRUPT;
    }
    ReadSettings read;
    code = code == SQLITE_OK ? TakeRows(database.get(), read.sections) : code;
    if (code != SQLITE_OK) {
        return refuse(ReadTrouble(file, code));
    }
    if (read.sections.empty()) {
        return refuse("The file " + Quoted(file) + " holds no settings. Nothing was changed.");
    }
    return read;
}

}  // namespace spellwick
