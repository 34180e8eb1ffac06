#include "model/cast_rules.h"

#include "text/number_forms.h"

namespace spellwick {

void RequireSpellRow(i32 row) {
    if (row < 0 || row > kLastRow) {
        throw RuntimeFailure(FailureKind::kSubscript,
                             "There is no spell row " + std::to_string(row) + ".");
    }
}

std::optional<std::string_view> SkillRefusal(i32 row) {
    // ODDITY(skill-message-rows): the messages are shifted by one row, so row 0 is refused without
    // a message and the first Necromancer and Paladin rows name the school before; kept because the
    // refusal itself is right and users know these texts.
    if (row >= 1 && row <= 64) {
        return "Not enough Magery skill to cast this spell.";
    }
    if (row >= 65 && row <= 80) {
        return "Not enough Necromancy skill to cast this spell.";
    }
    if (row >= 81 && row <= 90) {
        return "Not enough Chivalry skill to use this ability.";
    }
    return std::nullopt;
}

std::string_view StockRefusal(i32 school) {
    return school == kChivalry ? "Not enough tithing points to use that ability"
                               : "Not enough reagents to cast that spell";
}

std::optional<std::string> DebitCounter(i32 need, std::string_view counter) {
    const double stock = NumericPrefix(counter);
    if (need == 0 || stock <= 0.0) {
        return std::nullopt;
    }
    // ODDITY(debit-below-zero): a counter above 0 pays the whole cost and can go below 0; kept
    // because the negative number shows how far the count was off.
    return PlainText(stock - need);
}

std::string CreditCounter(i32 amount, std::string_view counter) {
    return PlainText(NumericPrefix(counter) + amount);
}

i16 StockOfCounter(std::string_view counter) {
    return ToI16(NumericPrefix(counter));
}

}  // namespace spellwick
