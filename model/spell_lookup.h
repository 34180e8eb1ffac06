// Lookups between page buttons, slots, rows, circles and skills.
#pragma once

#include "model/shared_state.h"

namespace spellwick {

// Page buttons: 0 and 1 are the user pages, 2 to 13 are circles 1 to 12.
inline constexpr i32 kPageButtonCount = 14;
inline constexpr i32 kUserPage1 = 0;
inline constexpr i32 kUserPage2 = 1;
inline constexpr i32 kFirstCircleButton = 2;
inline constexpr i32 kNecromancerButton = 10;
inline constexpr i32 kPaladinButton = 12;

// Circle of a row: row\8 + 1.
i32 CircleOf(i32 row);

// Circle 1 to 12 of a pressed button 2 to 13, 0 for any other.
i32 CurrentCircle(i32 pressedButton);

// The row shown in a slot (0 to 7) of the pressed page; RuntimeFailure (subscript) for a slot that
// a user page does not have.
i32 SpellAtSlot(i32 pressedButton, const FixedTable<i16, 0, 16>& userSpells, i32 slot);

// The circle that the slot belongs to: the row's on a user page, else the page itself.
i32 CircleAtSlot(i32 pressedButton, i32 row);

// The caster's skill for a row; Magery for a row without a school.
i16 GetSkill(const SharedState& state, i32 row);

// Fills Cost of rows 0 to 96 from the reagents and their prices; gold.
// RuntimeFailure (overflow) when a sum or product exceeds an i16.
void RecalculateCosts(SharedState& state);

}  // namespace spellwick
