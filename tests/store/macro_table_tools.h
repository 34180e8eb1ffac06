// A spell table with made-up names and matching macros, for the tests of the macro file.
#pragma once

#include <ostream>
#include <random>
#include <string>
#include <vector>

#include "store/macro_code.h"
#include "store/macro_file.h"

namespace spellwick {

inline void PrintTo(const Macro& macro, std::ostream* out) {
    *out << MacroCode(macro);
}

// For tests that look at the tables alone.
inline void MergeMacroText(std::string_view text, SharedState& state) {
    MacroLoad load;
    MergeMacroText(text, state, load);
}

inline void MergeMacroFile(const std::filesystem::path& file, SharedState& state) {
    MacroLoad load;
    MergeMacroFile(file, state, load);
}

// 97 rows "Spell 0" to "Spell 96", each with the key "-" and no modifiers.
inline SharedState MacroState() {
    SharedState state;
    state.Spells.GrowTo(kLastRow);
    for (i32 row = 0; row <= kLastRow; ++row) {
        state.Spells(row).Name = "Spell " + std::to_string(row);
    }
    for (i32 number = kMeditationMacro; number <= kLastMacro; ++number) {
        SetMacro(state, number, {.key = "-"});
    }
    return state;
}

inline Macro MacroOfRow(const SharedState& state, i32 row) {
    return MacroOf(state, row + 1);
}

// A random macro that survives a file unchanged: no lower-case letter, no brace.
inline Macro RandomMacro(std::mt19937& random) {
    static const std::vector<std::string> kKeys = [] {
        std::vector<std::string> keys;
        for (int key = 1; key <= 12; ++key) {
            keys.push_back("{F" + std::to_string(key) + "}");
        }
        for (char sign = ' '; sign <= '~'; ++sign) {
            if ((sign < 'a' || sign > 'z') && sign != '{') {
                keys.emplace_back(1, sign);
            }
        }
        for (const char* sign :
             {"\u00c9", "\u00df", "\u00b5", "\u20ac", "\u0178", "\u00f7", "\u0081"}) {
            keys.emplace_back(sign);
        }
        return keys;
    }();
    const auto bits = random();
    return {.alt = (bits & 1U) != 0,
            .ctrl = (bits & 2U) != 0,
            .shift = (bits & 4U) != 0,
            .key = kKeys[(bits >> 3U) % kKeys.size()]};
}

inline void FillAtRandom(SharedState& state, std::mt19937& random) {
    for (i32 number = 1; number <= kLastMacro; ++number) {
        SetMacro(state, number, RandomMacro(random));
    }
}

}  // namespace spellwick
