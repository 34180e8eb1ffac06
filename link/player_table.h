// A table that is delivered with the program, and that a player may replace by one of the same name
// in the settings' folder.
#pragma once

#include <sstream>

#include "link/row_table.h"

namespace spellwick {

// What is wrong with a value. A row's reader throws it.
struct ValueFault {
    std::size_t column;  // from 0
    std::string what;    // a part of a sentence
};

template <typename Row>
struct Table {
    std::vector<Row> rows;  // none after a fault
    std::optional<TableFault> fault;
};

// `readRow` makes a Row of a TableRow with a value for every column.
template <typename Row, typename ReadRow>
Table<Row> ReadTable(std::istream& input, std::size_t columns, const ReadRow& readRow) {
    RowTable texts = ReadRowTable(input, columns);
    Table<Row> table{.rows = {}, .fault = std::move(texts.fault)};
    for (std::size_t row = 0; row < texts.rows.size(); ++row) {
        try {
            table.rows.push_back(readRow(texts.rows[row]));
        } catch (const ValueFault& found) {
            return {.rows = {}, .fault = TableFault{row + 1, found.column + 1, found.what}};
        }
    }
    return table;
}

struct PlayerTable {
    std::string_view file;
    std::span<const std::string_view> columns;
    std::string_view delivered;  // without a fault
};

template <typename Row>
struct LoadedTable {
    std::vector<Row> rows;  // none where the player's own table has a fault
    std::string fault;      // as a sentence; empty without one
};

// Whether a player's own file stands there, whatever it holds.
inline bool IsThere(const std::filesystem::path& file) {
    std::error_code ignored;
    return std::filesystem::exists(file, ignored);
}

// The player's own table in this folder if there is one, else the delivered one. `read` makes a
// Table<Row> of a stream.
template <typename Row>
LoadedTable<Row> LoadTable(const std::optional<std::filesystem::path>& folder,
                           const PlayerTable& kind, Table<Row> (*read)(std::istream&)) {
    const auto ofText = [&](std::string text) {
        std::istringstream input(std::move(text));
        return read(input);
    };
    if (!folder || !IsThere(*folder / kind.file)) {
        return {.rows = ofText(std::string(kind.delivered)).rows, .fault = {}};
    }
    try {
        Table<Row> own = ofText(ReadTableFile(*folder / kind.file));
        return {.rows = std::move(own.rows),
                .fault = own.fault ? FaultText(kind.file, *own.fault, kind.columns) : ""};
    } catch (const RuntimeFailure& failure) {
        return {.rows = {}, .fault = std::string(kind.file) + ": " + failure.what() + "."};
    }
}

}  // namespace spellwick
