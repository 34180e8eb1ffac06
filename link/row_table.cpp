#include "link/row_table.h"

#include <algorithm>
#include <fstream>
#include <sstream>

#include "model/spell_data.h"
#include "text/ascii_case.h"
#include "text/utf8.h"

namespace spellwick {

namespace {

constexpr i32 kMostRows = 1000;
constexpr std::size_t kLongestValue = 2000;
constexpr std::uintmax_t kLargestFile = std::uintmax_t{1024} * 1024;
constexpr std::string_view kBlanks = " \t\r\n";

// Carries the place to whoever catches it.
struct FaultAt {
    TableFault fault;
};

template <typename Work>
auto At(std::size_t row, std::size_t column, const Work& work) {
    try {
        return work();
    } catch (const RuntimeFailure& failure) {
        // The reader's own sentences, as part of a longer one.
        std::string what = failure.what();
        while (what.ends_with('.')) {
            what.pop_back();
        }
        if (!what.empty()) {
            what[0] = LowerAscii(what[0]);
        }
        throw FaultAt{{row, column, what}};
    }
}

std::string ReadValue(SpellDataReader& reader, std::size_t row, std::size_t column) {
    return At(row, column, [&] {
        std::string value = reader.ReadText();
        if (value.size() > kLongestValue) {
            throw RuntimeFailure(FailureKind::kFile, "The value is too long.");
        }
        return value;
    });
}

i32 ReadCount(SpellDataReader& reader) {
    return At(0, 2, [&] {
        const i32 count = reader.ReadI32();
        if (count < 0 || count > kMostRows) {
            throw RuntimeFailure(FailureKind::kFile, "No table has this count of rows.");
        }
        return count;
    });
}

// Blank lines may follow the last row, and nothing else.
void ReadEnd(SpellDataReader& reader, std::size_t row) {
    std::string value;
    do {
        // Every start reads these tables: the first exception of a run is dear.
        if (reader.AtEnd()) {
            return;
        }
        try {
            value = reader.ReadText();
        } catch (const RuntimeFailure&) {
            return;
        }
    } while (value.empty());
    throw FaultAt{{row, 1, "there are more rows than the first line says"}};
}

// Just behind the value that begins at `at`, and the comma or line end that ends it.
std::size_t BehindValue(std::string_view table, std::size_t at) {
    at = std::min(table.find_first_not_of(" \t", at), table.size());
    if (at < table.size() && table[at] == '"') {
        at = std::min(table.find('"', at + 1), table.size());
    }
    at = std::min(table.find_first_of(",\r\n", at), table.size());
    const bool windowsEnd = table.substr(at).starts_with("\r\n");
    return std::min(at + (windowsEnd ? 2 : 1), table.size());
}

std::string RowText(const TableRow& row) {
    std::string text;
    for (const std::string& value : row) {
        text += text.empty() ? "" : ", ";
        std::string kept;
        for (const char c : value) {
            // A value cannot hold its own quotes.
            kept.push_back(c == '"' ? '\'' : c);
        }
        text += '"' + kept + '"';
    }
    return text;
}

}  // namespace

RowTable ReadRowTable(std::istream& input, std::size_t columns) {
    RowTable table;
    try {
        SpellDataReader reader(input);
        ReadValue(reader, 0, 1);
        const auto count = static_cast<std::size_t>(ReadCount(reader));
        for (std::size_t row = 1; row <= count; ++row) {
            TableRow values;
            for (std::size_t column = 1; column <= columns; ++column) {
                values.push_back(ReadValue(reader, row, column));
            }
            table.rows.push_back(std::move(values));
        }
        ReadEnd(reader, count + 1);
    } catch (const FaultAt& found) {
        return {{}, found.fault};
    }
    return table;
}

std::string ReadTableFile(const std::filesystem::path& path) {
    std::error_code trouble;
    // A pipe or a device would hold the start up.
    const bool regular = std::filesystem::is_regular_file(path, trouble);
    const std::uintmax_t bytes = regular ? std::filesystem::file_size(path, trouble) : 0;
    if (!regular || trouble || bytes > kLargestFile) {
        throw RuntimeFailure(FailureKind::kFile, "it is no file of a table's size");
    }
    std::ifstream file(path, std::ios::binary);
    std::string text(bytes, '\0');
    file.read(text.data(), static_cast<std::streamsize>(bytes));
    if (!file) {
        throw RuntimeFailure(FailureKind::kFile, "it cannot be read");
    }
    return text;
}

std::string WithFirstRow(std::string_view table, const TableRow& row) {
    const std::size_t mark = table.starts_with(kByteOrderMark) ? kByteOrderMark.size() : 0;
    const std::size_t header = BehindValue(table, mark);
    const std::size_t rows = BehindValue(table, header);
    std::istringstream input{std::string(table.substr(0, rows))};
    SpellDataReader reader(input);
    reader.ReadText();
    const i32 count = reader.ReadI32();
    std::string_view rest = table.substr(rows);
    rest.remove_suffix(rest.size() - (rest.find_last_not_of(kBlanks) + 1));
    std::string text(table.substr(0, header));
    text += " " + std::to_string(count + 1) + "\n" + RowText(row) + "\n";
    text += rest;
    return rest.empty() ? text : text + "\n";
}

std::string FaultText(std::string_view file, const TableFault& fault,
                      std::span<const std::string_view> columns) {
    std::string text(file);
    text += fault.row == 0 ? ", first line" : ", row " + std::to_string(fault.row);
    if (fault.column != 0) {
        text += ", column " + std::to_string(fault.column);
        if (fault.row != 0 && fault.column <= columns.size()) {
            text += " (\"" + std::string(columns[fault.column - 1]) + "\")";
        }
    }
    return text + ": " + fault.what + ".";
}

std::vector<std::string> Alternatives(std::string_view value) {
    std::vector<std::string> parts;
    while (!value.empty()) {
        const std::size_t bar = std::min(value.find('|'), value.size());
        std::string_view part = value.substr(0, bar);
        value.remove_prefix(std::min(bar + 1, value.size()));
        part.remove_prefix(std::min(part.find_first_not_of(kBlanks), part.size()));
        part.remove_suffix(part.size() - (part.find_last_not_of(kBlanks) + 1));
        if (!part.empty()) {
            parts.emplace_back(part);
        }
    }
    return parts;
}

}  // namespace spellwick
