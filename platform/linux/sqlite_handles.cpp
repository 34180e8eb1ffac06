#include "platform/linux/sqlite_handles.h"

namespace spellwick {

int Execute(sqlite3* database, const char* sql) {
    return sqlite3_exec(database, sql, nullptr, nullptr, nullptr);
}

SqliteStatement Prepare(sqlite3* database, const char* sql, int& code) {
    sqlite3_stmt* statement = nullptr;
    code = sqlite3_prepare_v3(database, sql, -1, SQLITE_PREPARE_PERSISTENT, &statement, nullptr);
    return SqliteStatement(statement);
}

StatementUse::~StatementUse() {
    sqlite3_reset(m_statement);
    sqlite3_clear_bindings(m_statement);
}

StatementUse& StatementUse::Bind(std::string_view text) {
    // An empty view may have a null address, which would bind NULL.
    const char* address = text.empty() ? "" : text.data();
    const int code = sqlite3_bind_text64(m_statement, ++m_bound, address, text.size(),
                                         SQLITE_STATIC, SQLITE_UTF8);
    if (code != SQLITE_OK) {
        m_trouble = code;
    }
    return *this;
}

int StatementUse::Step() {
    return m_trouble == SQLITE_OK ? sqlite3_step(m_statement) : m_trouble;
}

std::optional<std::string> StatementUse::Column(int index) const {
    const unsigned char* text = sqlite3_column_text(m_statement, index);
    if (text == nullptr) {
        return std::nullopt;
    }
    const auto size = static_cast<std::size_t>(sqlite3_column_bytes(m_statement, index));
    return std::string(reinterpret_cast<const char*>(text), size);
}

}  // namespace spellwick
