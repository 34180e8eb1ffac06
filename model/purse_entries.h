// What an entry typed into a counter or into the edit of the tithing points means.
#pragma once

#include <string>
#include <string_view>

#include "text/number_types.h"

namespace spellwick {

inline constexpr std::string_view kNotThatManyReagents = "You do not have that amount of reagents";

struct CounterEntry {
    i16 stock = 0;          // what the cell holds afterwards
    bool rewrites = false;  // the edit takes the cell's number
    bool refused = false;   // more was to be taken than there is
};

// An entry of a counter whose cell holds `stock`: "+n" adds, "-n" takes, anything else sets the
// first four digits. RuntimeFailure (overflow) if a sum exceeds an i16.
CounterEntry CommitCounterEntry(std::string_view text, i16 stock);

// Tithing points after an entry: "+n" adds, "-n" takes at most all, anything else sets; 0 to 10000.
i32 CommitTithesEntry(std::string_view text, i32 tithing);

// Whether a counter accepts a typed character: digits, signs and backspace (8).
bool CounterTakes(char32_t character);

}  // namespace spellwick
