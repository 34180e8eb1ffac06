#include "model/spell_lookup.h"

#include "text/number_forms.h"

namespace spellwick {

i32 CircleOf(i32 row) {
    return row / kSlotCount + 1;
}

i32 CurrentCircle(i32 pressedButton) {
    const bool isCircle = pressedButton >= kFirstCircleButton && pressedButton < kPageButtonCount;
    return isCircle ? pressedButton - kFirstCircleButton + 1 : 0;
}

i32 SpellAtSlot(i32 pressedButton, const FixedTable<i16, 0, 16>& userSpells, i32 slot) {
    if (pressedButton == kUserPage1) {
        return userSpells(slot);
    }
    if (pressedButton == kUserPage2) {
        return userSpells(slot + kSlotCount);
    }
    return (CurrentCircle(pressedButton) - 1) * kSlotCount + slot;
}

i32 CircleAtSlot(i32 pressedButton, i32 row) {
    const bool isUserPage = pressedButton == kUserPage1 || pressedButton == kUserPage2;
    return isUserPage ? CircleOf(row) : CurrentCircle(pressedButton);
}

i16 GetSkill(const SharedState& state, i32 row) {
    switch (state.Spells(row).School) {
        case kNecromancer:
            return state.Necro;
        case kChivalry:
            return state.Chivalry;
        default:
            return state.Magery;
    }
}

void RecalculateCosts(SharedState& state) {
    state.RegPrice(kTithes) = 1;
    for (i32 row = 0; row <= kLastRow; ++row) {
        SpellRecord& spell = state.Spells(row);
        i16 cost = 0;
        for (i32 reagent = 1; reagent <= kTithes; ++reagent) {
            const i16 part = ToI16(spell.Reagents(reagent) * i32{state.RegPrice(reagent)});
            cost = ToI16(i32{cost} + part);
        }
        spell.Cost = cost;
    }
}

}  // namespace spellwick
