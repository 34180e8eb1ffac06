// The spells of the two smaller schools in the order of their books in the game, which is not that
// of the spell table.
#pragma once

#include <algorithm>
#include <array>
#include <optional>
#include <span>

#include "text/number_types.h"

namespace spellwick {

// Rows of the spell table.
inline constexpr std::array<i32, 17> kNecromancyBook{72, 68, 66, 64, 67, 71, 77, 70, 65,
                                                     73, 74, 75, 79, 78, 76, 69, 95};
inline constexpr std::array<i32, 10> kChivalryBook{80, 81, 83, 86, 85, 87, 88, 89, 82, 84};

// The row at a place from 0; nothing beyond the book.
inline std::optional<i32> RowInBook(std::span<const i32> book, i32 place) {
    const bool inside = place >= 0 && static_cast<std::size_t>(place) < book.size();
    return inside ? std::optional(book[static_cast<std::size_t>(place)]) : std::nullopt;
}

// The place of a row, from 0; nothing if it is in another book.
inline std::optional<i32> PlaceInBook(std::span<const i32> book, i32 row) {
    const auto found = std::ranges::find(book, row);
    return found == book.end() ? std::nullopt
                               : std::optional(static_cast<i32>(found - book.begin()));
}

}  // namespace spellwick
