// Entries of the skills tab: how a box is read, and which cells of the spell table and of the
// character it fills. Groups are 0 Magery, 1 and 2 Necromancer, 3 and 4 Paladin; lines are 0 to 7.
#pragma once

#include <string_view>

#include "model/shared_state.h"

namespace spellwick {

inline constexpr i32 kSkillGroups = 5;

// The number in the first four characters, at most 125; there is no lower limit. RuntimeFailure
// (overflow) below -32768.
i16 ReadSkillEntry(std::string_view text);

// The same for a number.
i16 SkillEntryOf(i32 points);

// The character's value of a group.
i16 SkillOfGroup(const CasterSkills& skills, i32 group);
void SetSkillOfGroup(CasterSkills& skills, i32 group, i16 value);

// What an entry in a line of the tab changes.
void SetRequiredIntelligence(SpellTables& tables, i32 group, i32 line, i16 value);
void SetRequiredSkill(SpellTables& tables, i32 line, i16 value);
void SetSafeSkill(SpellTables& tables, i32 group, i32 line, i16 value);

// Enters into each circle of Magery what its first spell has: Mana, MinimumSkill and MaximumSkill.
void LevelCircles(SpellTables& tables);

}  // namespace spellwick
