// Tables of texts that a player can edit, in the form of the spell data file: a text that is
// dropped, the count of rows, then the rows, value by value.
#pragma once

#include <cstddef>
#include <filesystem>
#include <istream>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "text/runtime_failure.h"

namespace spellwick {

// What is wrong with a table, and where.
struct TableFault {
    std::size_t row = 0;     // from 1; 0 is the line before the rows
    std::size_t column = 0;  // from 1
    std::string what;        // a part of a sentence

    bool operator==(const TableFault&) const = default;
};

using TableRow = std::vector<std::string>;

struct RowTable {
    std::vector<TableRow> rows;  // each with a value for every column; none after a fault
    std::optional<TableFault> fault;
};

// Reads a whole table with so many columns. At most 1000 rows, and 2000 bytes a value.
RowTable ReadRowTable(std::istream& input, std::size_t columns);

// The whole text of a table's file; RuntimeFailure (file) if it cannot be read or is larger than a
// megabyte.
std::string ReadTableFile(const std::filesystem::path& path);

// The table with one more row before all others, everything else as it stands. The text must be a
// table that can be read.
std::string WithFirstRow(std::string_view table, const TableRow& row);

// For a player: `GameClients.txt, row 3, column 4 ("title in the game"): a brace has no partner.`
std::string FaultText(std::string_view file, const TableFault& fault,
                      std::span<const std::string_view> columns);

// The parts of a value that are divided by "|", without blanks around them; none is empty.
std::vector<std::string> Alternatives(std::string_view value);

}  // namespace spellwick
