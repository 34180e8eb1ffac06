#include "link/assist_tools.h"

#include <algorithm>
#include <sstream>
#include <utility>

namespace spellwick {

namespace {

enum Column : std::size_t { kName, kTitle, kCasts, kCounts, kReportsCasts, kReportsStock, kStats };

// A value that means nothing, with its place.
struct BadValue {
    std::size_t column = 0;
    std::string what;
};

template <typename Value, std::size_t Size>
Value OneOf(const TableRow& row, Column column,
            const std::array<std::pair<std::string_view, Value>, Size>& words) {
    const auto* const found =
        std::ranges::find(words, row[column], &std::pair<std::string_view, Value>::first);
    if (found != words.end()) {
        return found->second;
    }
    std::string what = "\"" + row[column] + "\" is none of";
    for (const auto& word : words) {
        what += (&word == words.data() ? " \"" : ", \"") + std::string(word.first) + "\"";
    }
    throw BadValue{column + 1, what};
}

constexpr std::array<std::pair<std::string_view, bool>, 2> kYesNo{{{"yes", true}, {"no", false}}};
constexpr std::array<std::pair<std::string_view, bool>, 2> kWithinCircle{
    {{"absolute", false}, {"within circle", true}}};
constexpr std::array<std::pair<std::string_view, StatsWords>, 3> kStatsWords{{
    {"intelligence mana", StatsWords::kIntelligenceAndMana},
    {"most-mana mana", StatsWords::kManaAlone},
    {"none", StatsWords::kNone},
}};

std::vector<TitlePattern> ReadTitles(const TableRow& row) {
    std::vector<TitlePattern> titles;
    for (const std::string& text : Alternatives(row[kTitle])) {
        TitlePattern::Result read = TitlePattern::Read(text);
        if (!read.pattern) {
            throw BadValue{kTitle + 1, read.fault};
        }
        if (read.pattern->FixedText() == 0) {
            throw BadValue{kTitle + 1, "any title would have this form"};
        }
        titles.push_back(*std::move(read.pattern));
    }
    if (titles.empty()) {
        throw BadValue{kTitle + 1, "there is no title"};
    }
    return titles;
}

AssistToolRow ReadTool(const TableRow& row) {
    if (row[kName].empty()) {
        throw BadValue{kName + 1, "there is no name"};
    }
    return {.tool = {.name = row[kName],
                     .castsWithinCircle = OneOf(row, kCasts, kWithinCircle),
                     .countsOnRequest = OneOf(row, kCounts, kYesNo),
                     .reportsCasts = OneOf(row, kReportsCasts, kYesNo),
                     .reportsStock = OneOf(row, kReportsStock, kYesNo),
                     .stats = OneOf(row, kStats, kStatsWords)},
            .titles = ReadTitles(row)};
}

}  // namespace

AssistTools ReadAssistTools(std::istream& input) {
    RowTable table = ReadRowTable(input, kAssistToolColumns.size());
    AssistTools tools{.rows = {}, .fault = std::move(table.fault)};
    for (std::size_t row = 0; row < table.rows.size(); ++row) {
        try {
            tools.rows.push_back(ReadTool(table.rows[row]));
        } catch (const BadValue& bad) {
            return {.rows = {}, .fault = TableFault{row + 1, bad.column, bad.what}};
        }
    }
    return tools;
}

LoadedAssistTools LoadAssistTools(const std::optional<std::filesystem::path>& folder) {
    const auto read = [](const std::string& text) {
        std::istringstream input(text);
        return ReadAssistTools(input);
    };
    std::error_code ignored;
    if (!folder || !std::filesystem::exists(*folder / kAssistToolsFile, ignored)) {
        return {.rows = read(std::string(DeliveredAssistTools())).rows, .fault = {}};
    }
    try {
        AssistTools own = read(ReadTableFile(*folder / kAssistToolsFile));
        if (own.fault) {
            return {.rows = {},
                    .fault = FaultText(kAssistToolsFile, *own.fault, kAssistToolColumns)};
        }
        return {.rows = std::move(own.rows), .fault = {}};
    } catch (const RuntimeFailure& failure) {
        return {.rows = {}, .fault = std::string(kAssistToolsFile) + ": " + failure.what() + "."};
    }
}

const AssistToolRow* FindAssistTool(const std::vector<AssistToolRow>& rows,
                                    std::string_view title) {
    const auto found = std::ranges::find_if(rows, [&](const AssistToolRow& row) {
        return std::ranges::any_of(
            row.titles, [&](const TitlePattern& form) { return form.Match(title).has_value(); });
    });
    return found == rows.end() ? nullptr : &*found;
}

}  // namespace spellwick
