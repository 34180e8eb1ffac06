#include "model/castable_amount.h"

#include "model/cast_rules.h"
#include "model/spell_lookup.h"
#include "text/number_forms.h"

namespace spellwick {

namespace {

constexpr i32 kFirstTithingCircle = 11;
constexpr i32 kMixedCircle = 12;
constexpr i32 kReagentSlot = 7;

constexpr i32 kPlenty = 4;         // counters from here up are green under the mouse
constexpr i32 kPlentyTithes = 30;  // tithing points above this are not marked

}  // namespace

bool CountsInTithes(i32 circle, i32 slot) {
    // ODDITY(reagent-slot): in the last slot of a page, a spell of Paladin page 2 is counted by
    // reagents, in any other slot by tithes; kept because Exorcism has that slot and costs
    // reagents.
    const bool isReagentSpell = circle == kMixedCircle && slot == kReagentSlot;
    return circle >= kFirstTithingCircle && !isReagentSpell;
}

i16 CastableByTithes(const SpellRecord& spell, i32 tithing) {
    const i32 need = spell.Reagents(kTithes);
    // ODDITY(free-spell): a spell that costs nothing shows 0 casts, in red; kept because the figure
    // counts what the stock pays for, and such a row is a gap or a spell that is not filled in yet.
    if (need == 0 || tithing < need) {
        return 0;
    }
    return ToI16(TruncatingDivide(tithing, need));
}

i16 CastableByReagents(const SpellRecord& spell, const CounterTexts& counters) {
    i16 amount = 0;
    for (i32 reagent = 1; reagent <= kReagentCount; ++reagent) {
        const i32 need = spell.Reagents(reagent);
        if (need == 0) {
            continue;
        }
        const double stock = NumericPrefix(counters(reagent));
        if (stock < 1.0) {
            return 0;
        }
        const i16 casts = ToI16(TruncatingDivide(ToI32(stock), need));
        // ODDITY(scarce-reagent): a stock of at least 1 that is too small for one cast is ignored
        // if another reagent follows; kept because only an empty counter is final.
        if (amount == 0 || casts < amount) {
            amount = casts;
        }
    }
    return amount;
}

i16 CastableAmount(const SharedState& state, i32 pressedButton, i32 slot,
                   const CounterTexts& counters) {
    const i32 row = SpellAtSlot(pressedButton, state.UserSpells, slot);
    RequireSpellRow(row);
    const SpellRecord& spell = state.Spells(row);
    return CountsInTithes(CircleAtSlot(pressedButton, row), slot)
               ? CastableByTithes(spell, state.CurrentTithing)
               : CastableByReagents(spell, counters);
}

Colour AmountColour(i16 amount, i16 regYellow, Colour colorWarn) {
    // ODDITY(negative-limit): with a warning limit below 0, an amount of 0 is green; kept because
    // the limit is compared as the user set it.
    if (amount > regYellow) {
        return kGreen;
    }
    return amount >= 1 ? colorWarn : kRed;
}

Colour CounterHighlight(i32 need, std::string_view counter, Colour colorWarn) {
    if (need == 0) {
        return kWindowBackground;
    }
    const i32 stock = ToI32(NumericPrefix(counter));
    // ODDITY(hover-limit): with the mouse over a spell, a counter is green from 4 up, whatever the
    // warning limit and the spell's needs; kept because the colour marks counters to refill, not
    // the casts that are left.
    if (stock >= kPlenty) {
        return kGreen;
    }
    return stock >= 1 ? colorWarn : kRed;
}

Colour TithesHighlight(i32 need, std::string_view tithes, Colour colorWarn) {
    if (need == 0) {
        return kButtonFace;
    }
    const i32 points = ToI32(NumericPrefix(tithes));
    if (points < 1 || need > points) {
        return kRed;
    }
    return points > kPlentyTithes ? kButtonFace : colorWarn;
}

}  // namespace spellwick
