#include "model/spell_description.h"

#include "model/formula_text.h"
#include "model/spell_lookup.h"
#include "text/number_forms.h"

namespace spellwick {

namespace {

std::string ReagentList(const SharedState& state, const SpellRecord& spell) {
    // ODDITY(info-tithes-only): for a spell with tithes and reagents, the info window names only
    // the tithes; kept because such a spell is an ability and is paid for with tithes.
    if (const i32 tithes = spell.Reagents(kTithes); tithes > 0) {
        return PlainText(tithes) + " " + state.ReagentName(kTithes);
    }
    std::string list;
    for (i32 reagent = 1; reagent <= kReagentCount; ++reagent) {
        if (spell.Reagents(reagent) > 0) {
            list += (list.empty() ? "" : ", ") + state.ReagentName(reagent);
        }
    }
    return list;
}

}  // namespace

SpellDescription DescribeSpell(const SharedState& state, i32 row) {
    const SpellRecord& spell = state.Spells(row);
    const FormulaTexts figures = BuildFormulaTexts(CasterOf(state), CircleOf(row));
    const auto expanded = [&figures](const std::string& text) {
        return std::string(TrimBlanks(ExpandFormulas(text, figures)));
    };
    return {.name = spell.Name,
            .words = spell.Words,
            .cost = PlainText(i32{spell.Cost}) + " gold / " + PlainText(i32{spell.Mana}) + " mana",
            .reagents = ReagentList(state, spell),
            .damage = expanded(spell.DamageText),
            .duration = expanded(spell.DurationText),
            .resisting = expanded(spell.ExtraText2),
            .extraInfo = expanded(spell.ExtraText1)};
}

SpellShortage ShortageFor(const SharedState& state, i32 row) {
    const SpellRecord& spell = state.Spells(row);
    return {.intelligence = state.Intelligence < spell.Mana,
            .skill = GetSkill(state, row) < spell.MinimumSkill};
}

i16 EnteredValue(std::string_view text) {
    constexpr i16 kHighest = 100;
    const double value = NumericPrefix(text);
    // ODDITY(info-no-lower-limit): a negative value is accepted, and one below -32768 ends the run;
    // kept because only the upper limit matters, and a value has 16 bits.
    return value >= kHighest ? kHighest : ToI16(value);
}

}  // namespace spellwick
