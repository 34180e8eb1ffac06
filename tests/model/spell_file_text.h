// Builds spell data files for the tests of the reader.
#pragma once

#include <string>
#include <vector>

namespace spellwick {

// The 32 values of a row.
using RowValues = std::vector<std::string>;

inline RowValues SampleRow(int number) {
    return {std::to_string(number),
            "Dim Spark",
            "Magery",
            "Eval Int",
            "4",
            "0",
            "20",
            "0",
            "0",
            "1",
            "0",
            "0",
            "0",
            "1",
            "0",
            "0",
            "0",
            "0",
            "0",
            "0",
            "0",
            "0",
            "0",
            "0",
            "none",
            "Vas Lor",
            "1",
            "none",
            "12 seconds",
            "See #Formula07 for the amount",
            "none",
            "0"};
}

inline std::string Join(const RowValues& values, const std::string& mark = ", ") {
    std::string text;
    for (const std::string& value : values) {
        text += (text.empty() ? "" : mark) + value;
    }
    return text;
}

// The lines of sample rows. Joining each row anew takes seconds in a build with sanitizers.
inline std::string SampleLines(int first, int last) {
    const std::string afterNumber = Join(SampleRow(0)).substr(1) + "\n";
    std::string text;
    for (int number = first; number <= last; ++number) {
        text += std::to_string(number);
        text += afterNumber;
    }
    return text;
}

// A file that claims `count` rows and has `rows`.
inline std::string FileOf(const std::string& count, int rows) {
    return "Spell table of the season, " + count + "\n" + SampleLines(1, rows);
}

// A file of 96 rows; the first has another text as one of its values 1 to 32.
inline std::string FileWithValue(int value, const std::string& text) {
    RowValues first = SampleRow(1);
    first[static_cast<std::size_t>(value - 1)] = text;
    return "Spell table of the season, 96\n" + Join(first) + "\n" + SampleLines(2, 96);
}

}  // namespace spellwick
