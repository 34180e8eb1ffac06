// The groups of spells that the skills tab shows.
#pragma once

#include <array>

#include "model/colours.h"
#include "model/skill_entries.h"
#include "model/spell_record.h"

namespace spellwick {

struct SkillGroup {
    const char* caption;
    const char* title;
    Colour colour;
};

// ODDITY(paladin-caption): the third of the five buttons says "Paladin Skills" and opens the second
// page of Necromancer spells; kept because players know the buttons by their places and pictures.
inline constexpr std::array<SkillGroup, kSkillGroups> kSkillGroupFacts{{
    {"Magery Skills", "Magery", 0x0000C0},
    {"Necromancy Skills", "Necromancy", 0x008000},
    {"Paladin Skills", "Necromancy", 0x008000},
    {"Paladin Skills", "Chivalry", 0xFF0000},
    {"Paladin Skills", "Chivalry", 0xFF0000},
}};

// The first group of a school.
constexpr int GroupOfSchool(i32 school) {
    if (school == kNecromancer) {
        return 1;
    }
    return school == kChivalry ? 3 : 0;
}

inline constexpr std::array<const char*, kSlotCount> kCircleTitles{
    "First Circle", "Second Circle", "Third Circle",   "Fourth Circle",
    "Fifth Circle", "Sixth Circle",  "Seventh Circle", "Eighth Circle"};

}  // namespace spellwick
