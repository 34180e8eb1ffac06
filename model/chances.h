// Chances of success from skill bands, intelligence and mana.
#pragma once

#include "model/colours.h"
#include "model/shared_state.h"

namespace spellwick {

// Chance in percent, 0 to 99: 0 up to `minimum`, 99 above `maximum`, a straight line between.
// RuntimeFailure (overflow) when a difference exceeds an i16.
i16 BaseChance(i16 skill, i16 minimum, i16 maximum);

// Fills Chance and SkillChance of rows 0 to 95; row 96 is left alone.
void CalculateChances(SharedState& state);

// Ground of a chance on the page: it shows whether the spell may be cast in town.
Colour ChanceGround(const SpellRecord& spell);

// The row shown in line 0 to 7 of the skills tab. Group 0 is Magery, with a line for each circle;
// groups 1 to 4 are the pages of Necromancer and Paladin.
i32 SkillTabRow(i32 group, i32 line);

// Grounds of the four edits in one line of the skills tab.
struct SkillTabGrounds {
    Colour minimumInt = kWindowBackground;
    Colour minimumSkill = kWindowBackground;
    Colour maximumSkill = kWindowBackground;
    Colour chance = kWindowBackground;

    bool operator==(const SkillTabGrounds&) const = default;
};

// Red marks what prevents the spell, yellow that it can still fail.
SkillTabGrounds GroundsOfSkillLine(const SpellRecord& spell, i16 intelligence, i16 skill,
                                   i16 skillChance);

}  // namespace spellwick
