// What a new player does before the first cast: four steps, their texts and whether each is done.
#pragma once

#include <array>

#include "companion/way.h"
#include "model/shared_state.h"

namespace spellwick {

inline constexpr int kFirstStepCount = 4;

struct FirstStep {
    const char* title;
    const char* sentence;
    const char* button;  // goes to the control that does it
    Way way;
};

inline constexpr std::array<FirstStep, kFirstStepCount> kFirstSteps{{
    {"The game",
     "Start the game and log in with your character. If it is not found, choose its window on the "
     "tab Game.",
     "Choose the game", Way::kGame},
    {"The spellbook",
     "Tick the spells that are in your book, page by page, or press Fill book. The first cast of "
     "any other spell asks.",
     "Tick spells", Way::kSpellbook},
    {"Skills and Intelligence",
     "Enter your Intelligence and your Magery, Necromancy or Chivalry. They decide which spells "
     "may be cast.",
     "Enter skills", Way::kSkill},
    {"The stock",
     "Type how many reagents you carry into the counters, or your tithing points behind the ankh, "
     "then press Enter.",
     "Count", Way::kCounters},
}};

// Whether each step is done: a character is in the game; a spell is in the book; Intelligence and
// one of the three skills are above 0; there are tithing points, or a reagent in the bag in use.
std::array<bool, kFirstStepCount> FirstStepsDone(const SharedState& state);

}  // namespace spellwick
