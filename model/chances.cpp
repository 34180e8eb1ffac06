#include "model/chances.h"

#include "model/spell_lookup.h"
#include "text/number_forms.h"

namespace spellwick {

namespace {

// No chance is shown higher than this.
constexpr i16 kTopChance = 99;

constexpr i32 kFirstNecromancerRow = 64;

}  // namespace

i16 BaseChance(i16 skill, i16 minimum, i16 maximum) {
    if (skill <= minimum) {
        return 0;
    }
    if (skill > maximum) {
        return kTopChance;
    }
    const i16 band = ToI16(i32{maximum} - minimum);
    const i16 reached = ToI16(i32{skill} - minimum);
    return ToI16(double{kTopChance} / band * reached);
}

void CalculateChances(SharedState& state) {
    for (i32 row = 0; row <= kLastPagedRow; ++row) {
        const SpellRecord& spell = state.Spells(row);
        i16 chance = BaseChance(GetSkill(state, row), spell.MinimumSkill, spell.MaximumSkill);
        if (state.Intelligence < spell.Mana) {
            chance = 0;
        }
        state.SkillChance(row) = chance;
        if (state.AssistLinked && state.CurrentMana < spell.Mana) {
            chance = 0;
        }
        state.Chance(row) = chance;
    }
}

Colour ChanceGround(const SpellRecord& spell) {
    return spell.InTown == 1 ? kAllowedInTown : kNotInTown;
}

i32 SkillTabRow(i32 group, i32 line) {
    return group == 0 ? line * kSlotCount : (group - 1) * kSlotCount + kFirstNecromancerRow + line;
}

SkillTabGrounds GroundsOfSkillLine(const SpellRecord& spell, i16 intelligence, i16 skill,
                                   i16 skillChance) {
    return {intelligence >= spell.Mana ? kWindowBackground : kRed,
            skill >= spell.MinimumSkill ? kWindowBackground : kRed,
            skill >= spell.MaximumSkill ? kWindowBackground : kYellow,
            skillChance != 0 ? kWindowBackground : kRed};
}

}  // namespace spellwick
