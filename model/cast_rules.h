// The rules of a cast, an undo and a credit, one step each; casting calls them in order and shows
// their results.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "model/spell_record.h"
#include "text/number_types.h"

namespace spellwick {

// Checks that a spell's row can be debited or credited: RuntimeFailure (subscript) outside 0 to 96,
// even where the spell table has spare rows.
void RequireSpellRow(i32 row);

// The message that refuses a cast for lack of skill; nothing for rows that are refused silently.
std::optional<std::string_view> SkillRefusal(i32 row);

inline constexpr std::string_view kIntelligenceWarning =
    "Not enough Intelligence to use this spell.";
inline constexpr std::string_view kManaWarning = "Not enough Mana to use this spell.";
inline constexpr std::string_view kBookQuestion =
    "That Spell is not in your SpellBook. Do you want it added to your spellbook so you can use "
    "it now ?";

inline constexpr std::string_view kNotInFrontHint = "Not cast: the game did not come to the front";
inline constexpr std::string_view kUnfinishedHint = "Line not finished: the game lost the front";

// The message that refuses a cast for lack of stock, by the school of the spell.
std::string_view StockRefusal(i32 school);

// The counter's text after a debit; nothing if the spell does not need the reagent or the counter
// is at 0 or below.
std::optional<std::string> DebitCounter(i32 need, std::string_view counter);

// The counter's text after a credit or an undo.
std::string CreditCounter(i32 amount, std::string_view counter);

// The stock that a counter's text stands for; RuntimeFailure (overflow) if it exceeds an i16.
i16 StockOfCounter(std::string_view counter);

}  // namespace spellwick
