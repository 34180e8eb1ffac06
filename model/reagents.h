// The fixed list of the thirteen reagents and the tithing points, numbered 1 to 14 in one order
// everywhere.
#pragma once

#include <string_view>

#include "text/number_types.h"

namespace spellwick {

inline constexpr i32 kReagentCount = 13;      // reagents proper, numbers 1 to 13
inline constexpr i32 kTithes = 14;            // the number of the tithing points
inline constexpr i32 kBagCount = 10;          // bags 0 to 9
inline constexpr i32 kFirstNecroReagent = 9;  // 9 to 13 belong to the Necromancer

struct ReagentFacts {
    std::string_view name;       // shown
    std::string_view code;       // shown and exported
    std::string_view stockCode;  // first part of a stock key; none for the tithes
    std::string_view priceKey;   // none for the tithes
    i16 defaultPrice;            // gold
};

// Facts of reagent 1 to 14; RuntimeFailure (subscript) for any other number.
const ReagentFacts& FactsOfReagent(i32 reagent);

// The default name of bag 0 to 9.
std::string_view DefaultBagName(i32 bag);

}  // namespace spellwick
