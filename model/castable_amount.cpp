#include "model/castable_amount.h"

#include "model/number_forms.h"

namespace spellwick {

namespace {

constexpr i32 kFirstTithingCircle = 11;
constexpr i32 kMixedCircle = 12;
constexpr i32 kReagentSlot = 7;

constexpr i32 kPlenty = 4;         // counters from here on are green under the mouse
constexpr i32 kPlentyTithes = 30;  // tithing points above this are not marked

}  // namespace

bool CountsInTithes(i32 circle, i32 slot) {
    // ODDITY(reagent-slot): in the last slot of a page a spell of Paladin page 2 counts by
    // reagents, in any other slot by tithes; kept because Exorcism stands there and costs reagents.
    const bool isReagentSpell = circle == kMixedCircle && slot == kReagentSlot;
    return circle >= kFirstTithingCircle && !isReagentSpell;
}

i16 CastableByTithes(const SpellRecord& spell, i32 tithing) {
    const i32 need = spell.Reagents(kTithes);
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
        // ODDITY(scarce-reagent): a stock of at least 1 that is too small for one cast is passed
        // over when another reagent follows; kept because only an empty counter is final.
        if (amount == 0 || casts < amount) {
            amount = casts;
        }
    }
    return amount;
}

Colour AmountColour(i16 amount, i16 regYellow, Colour colorWarn) {
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
