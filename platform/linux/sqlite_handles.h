// Owners of SQLite connections and statements, and helpers for using them.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include <sqlite3.h>

namespace spellwick {

struct CloseDatabase {
    void operator()(sqlite3* database) const { sqlite3_close_v2(database); }
};
struct FinalizeStatement {
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};
using SqliteDatabase = std::unique_ptr<sqlite3, CloseDatabase>;
using SqliteStatement = std::unique_ptr<sqlite3_stmt, FinalizeStatement>;

// How long a statement waits for another program that has the file. An end by a signal saves twice,
// and must be over within five seconds.
inline constexpr int kBusyMilliseconds = 1500;

// A result code without its extension: SQLITE_OK, SQLITE_BUSY, ...
constexpr int PrimaryCode(int code) {
    return code & 0xFF;
}

// Runs SQL without results; returns the result code.
int Execute(sqlite3* database, const char* sql);

// Compiles a statement that is used many times; none, with `code` set, if that fails.
SqliteStatement Prepare(sqlite3* database, const char* sql, int& code);

// One use of a statement: its parameters are bound in order, and it is reset at the end of the
// scope. The texts must outlive it.
class StatementUse {
  public:
    explicit StatementUse(const SqliteStatement& statement) : m_statement(statement.get()) {}
    ~StatementUse();
    StatementUse(const StatementUse&) = delete;
    StatementUse& operator=(const StatementUse&) = delete;
    StatementUse(StatementUse&&) = delete;
    StatementUse& operator=(StatementUse&&) = delete;

    StatementUse& Bind(std::string_view text);

    // SQLITE_ROW, SQLITE_DONE, or an error.
    int Step();

    // A column of the current row, byte for byte; nothing for NULL.
    std::optional<std::string> Column(int index) const;

  private:
    sqlite3_stmt* m_statement;
    int m_bound = 0;
    int m_trouble = SQLITE_OK;
};

}  // namespace spellwick
