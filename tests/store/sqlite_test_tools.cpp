#include "tests/store/sqlite_test_tools.h"

#include <array>
#include <fstream>

#include <sys/wait.h>
#include <unistd.h>

namespace spellwick {

std::unique_ptr<SettingsStore> OpenWell(const std::filesystem::path& folder) {
    OpenedStore opened = OpenSettingsStore(folder, std::chrono::system_clock::now());
    EXPECT_EQ(opened.trouble, "");
    EXPECT_FALSE(opened.keptAside.has_value());
    return std::move(opened.store);
}

RawDatabase::RawDatabase(const std::filesystem::path& file) {
    sqlite3* database = nullptr;
    const int code = sqlite3_open(file.c_str(), &database);
    m_database.reset(database);
    EXPECT_EQ(code, SQLITE_OK);
}

void RawDatabase::Run(const std::string& sql) {
    const int code = Execute(m_database.get(), sql.c_str());
    EXPECT_EQ(code, SQLITE_OK) << sql << ": " << sqlite3_errmsg(m_database.get());
}

Rows RawDatabase::Query(const std::string& sql) {
    int code = SQLITE_OK;
    const SqliteStatement statement = Prepare(m_database.get(), sql.c_str(), code);
    EXPECT_EQ(code, SQLITE_OK) << sql << ": " << sqlite3_errmsg(m_database.get());
    Rows rows;
    StatementUse use(statement);
    while (use.Step() == SQLITE_ROW) {
        std::vector<std::string> row(
            static_cast<std::size_t>(sqlite3_column_count(statement.get())));
        for (std::size_t column = 0; column < row.size(); ++column) {
            row[column] = use.Column(static_cast<int>(column)).value_or("(null)");
        }
        rows.push_back(row);
    }
    return rows;
}

void WriteFile(const std::filesystem::path& file, const std::string& bytes) {
    std::ofstream stream(file, std::ios::binary | std::ios::trunc);
    stream << bytes;
}

std::function<std::string()> StartChild(const std::function<std::string()>& work) {
    std::array<int, 2> ends{};
    if (pipe(ends.data()) != 0) {
        return [] { return std::string("no pipe"); };
    }
    const pid_t child = fork();
    if (child == 0) {
        close(ends[0]);
        const std::string answer = work();
        const bool told = write(ends[1], answer.data(), answer.size()) >= 0;
        _exit(told ? 0 : 1);
    }
    close(ends[1]);
    return [child, end = ends[0]] {
        std::string answer;
        std::array<char, 4096> piece{};
        for (ssize_t got = 0; (got = read(end, piece.data(), piece.size())) > 0;) {
            answer.append(piece.data(), static_cast<std::size_t>(got));
        }
        close(end);
        int status = 0;
        waitpid(child, &status, 0);
        if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) {
            answer += " (ended badly, status " + std::to_string(status) + ")";
        }
        return answer;
    };
}

}  // namespace spellwick
