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

// A file that claims `count` rows and has `rows`.
inline std::string FileOf(const std::string& count, int rows) {
    std::string text = "Spell table of the season, " + count + "\n";
    for (int row = 0; row < rows; ++row) {
        text += Join(SampleRow(row + 1)) + "\n";
    }
    return text;
}

// A file of 96 rows; the first has another text as one of its values 1 to 32.
inline std::string FileWithValue(int value, const std::string& text) {
    RowValues first = SampleRow(1);
    first[static_cast<std::size_t>(value - 1)] = text;
    std::string file = "Spell table of the season, 96\n" + Join(first) + "\n";
    for (int row = 1; row < 96; ++row) {
        file += Join(SampleRow(row + 1)) + "\n";
    }
    return file;
}

}  // namespace spellwick
