// What a cast, an undo and a credit ask and change, one step each: the casting pipeline asks them
// in its order and shows what they answer.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "model/spell_record.h"
#include "text/number_types.h"

namespace spellwick {

// Row of a spell that may be debited or credited, 0 to 96; RuntimeFailure (subscript) outside, also
// where the spell table has spare rows.
void RequireSpellRow(i32 row);

// Refusal for want of skill: the message, or nothing for rows at which the cast ends silently.
std::optional<std::string_view> SkillRefusal(i32 row);

inline constexpr std::string_view kIntelligenceWarning =
    "Not enough Intelligence to use this spell.";
inline constexpr std::string_view kManaWarning = "Not enough Mana to use this spell.";
inline constexpr std::string_view kBookQuestion =
    "That Spell is not in your SpellBook. Do you want it added to your spellbook so you can use "
    "it now ?";

// Refusal for want of stock, by the school of the spell.
std::string_view StockRefusal(i32 school);

// The counter's text after a debit; nothing when the spell does not need the reagent or the counter
// stands at 0 or below.
std::optional<std::string> DebitCounter(i32 need, std::string_view counter);

// The counter's text after a credit or an undo.
std::string CreditCounter(i32 amount, std::string_view counter);

// Stock that a counter's text stands for; RuntimeFailure (overflow) above an i16.
i16 StockOfCounter(std::string_view counter);

}  // namespace spellwick
