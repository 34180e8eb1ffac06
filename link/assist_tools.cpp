#include "link/assist_tools.h"

#include <algorithm>
#include <utility>

namespace spellwick {

namespace {

enum Column : std::size_t { kName, kTitle, kCasts, kCounts, kReportsCasts, kReportsStock, kStats };

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
    throw ValueFault{column, what};
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
            throw ValueFault{kTitle, read.fault};
        }
        if (read.pattern->FixedText() == 0) {
            throw ValueFault{kTitle, "any title would have this form"};
        }
        titles.push_back(*std::move(read.pattern));
    }
    if (titles.empty()) {
        throw ValueFault{kTitle, "there is no title"};
    }
    return titles;
}

AssistToolRow ReadTool(const TableRow& row) {
    if (row[kName].empty()) {
        throw ValueFault{kName, "there is no name"};
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
    return ReadTable<AssistToolRow>(input, kAssistToolColumns.size(), ReadTool);
}

LoadedTable<AssistToolRow> LoadAssistTools(const std::optional<std::filesystem::path>& folder) {
    return LoadTable(folder, {kAssistToolsFile, kAssistToolColumns, DeliveredAssistTools()},
                     &ReadAssistTools);
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
