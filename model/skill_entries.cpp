#include "model/skill_entries.h"

#include <algorithm>

#include "model/chances.h"
#include "text/number_forms.h"

namespace spellwick {

namespace {

constexpr double kMostSkill = 125.0;
constexpr i32 kFirstPaladinGroup = 3;

// The circle that has the number of a line of the tab.
void SetCircle(SpellTables& tables, i32 line, i16 SpellRecord::*cell, i16 value) {
    for (i32 slot = 0; slot < kSlotCount; ++slot) {
        tables.Spells(line * kSlotCount + slot).*cell = value;
    }
}

// The cell of the character's value of a group.
i16 CasterSkills::*SkillCell(i32 group) {
    if (group == 0) {
        return &CasterSkills::Magery;
    }
    return group < kFirstPaladinGroup ? &CasterSkills::Necro : &CasterSkills::Chivalry;
}

}  // namespace

i16 ReadSkillEntry(std::string_view text) {
    // ODDITY(skill-limit): more than 125 counts as 125, of 12345 the first four digits count, and
    // the box of a skill goes on showing what was typed; kept because the limit belongs to the
    // value and the box to the user.
    return ToI16(std::min(RoundHalfEven(FirstFour(text)), kMostSkill));
}

i16 SkillEntryOf(i32 points) {
    constexpr i32 kMostOfFour = 9999;
    constexpr i32 kLeastOfFour = -999;  // the sign is one of the four characters
    while (points > kMostOfFour || points < kLeastOfFour) {
        points /= 10;
    }
    return ToI16(std::min(points, static_cast<i32>(kMostSkill)));
}

i16 SkillOfGroup(const CasterSkills& skills, i32 group) {
    return skills.*SkillCell(group);
}

void SetSkillOfGroup(CasterSkills& skills, i32 group, i16 value) {
    skills.*SkillCell(group) = value;
}

void SetRequiredIntelligence(SpellTables& tables, i32 group, i32 line, i16 value) {
    if (group == 0) {
        SetCircle(tables, line, &SpellRecord::Mana, value);
        return;
    }
    // ODDITY(first-line-intelligence): on a page of Necromancer or Paladin the required
    // intelligence typed into any line goes to the spell of the first line; kept because only that
    // cell of such a page was ever open to the user.
    tables.Spells(SkillTabRow(group, 0)).Mana = value;
}

void SetRequiredSkill(SpellTables& tables, i32 line, i16 value) {
    // ODDITY(circle-skill): on a page of Necromancer or Paladin the required skill typed into a
    // line changes the Magery circle of that number and not the spell beside it; kept because the
    // bands of those spells come from the spell file alone.
    SetCircle(tables, line, &SpellRecord::MinimumSkill, value);
}

void SetSafeSkill(SpellTables& tables, i32 group, i32 line, i16 value) {
    if (group == 0) {
        SetCircle(tables, line, &SpellRecord::MaximumSkill, value);
    }
}

// ODDITY(equal-circles): at each start the whole circle takes the intelligence and skills of its
// first spell; kept because all spells of a circle are equally hard.
void LevelCircles(SpellTables& tables) {
    for (i32 line = 0; line < kSlotCount; ++line) {
        const SpellRecord& first = tables.Spells(SkillTabRow(0, line));
        const i16 intelligence = SkillEntryOf(first.Mana);
        const i16 required = SkillEntryOf(first.MinimumSkill);
        const i16 safe = SkillEntryOf(first.MaximumSkill);
        SetCircle(tables, line, &SpellRecord::Mana, intelligence);
        SetCircle(tables, line, &SpellRecord::MinimumSkill, required);
        SetCircle(tables, line, &SpellRecord::MaximumSkill, safe);
    }
}

}  // namespace spellwick
