// Ways out of a refusal: a hint that names the control which mends it, and where a click on the
// hint leads.
#pragma once

#include <string>

#include "companion/screen.h"
#include "model/shared_state.h"

namespace spellwick {

enum class Way {
    kNone,
    kFirstSteps,
    kGame,           // tab Game: which window the game is
    kSkill,          // tab Skills: the skill of a spell's school
    kIntelligence,   // tab Skills
    kSpellbook,      // tab Spells & Reagents: which spells are in the book
    kNecroReagents,  // tab Settings: whether the main window has counters for them
    kCounters,       // of the main window
    kTithingPoints,  // of the main window
};

// Where a hint leads. The spell decides which skill, which page or which counter it is.
struct Target {
    Way way = Way::kNone;
    i32 row = 0;  // of the spell table, 0 to 96

    bool operator==(const Target&) const = default;
};

struct WayHint {
    std::string text;
    Target target;

    bool operator==(const WayHint&) const = default;
};

// What mends a refusal for lack of skill, of intelligence, of stock; row 0 to 96.
WayHint SkillHint(const SharedState& state, i32 row);
WayHint IntelligenceHint(i32 row);
WayHint StockHint(const SharedState& state, i32 row);
// What mends it that no character is in the game; `isThere` is whether there is a window.
WayHint NoGameHint(bool isThere);
// For the first start of all.
WayHint FirstStartHint();

// The counter, 1 to 13, to fill before a spell can be cast: the first that shows less than a cast
// takes, else the first that it takes from, else 1.
i32 CounterToFill(const SpellRecord& spell, const Screen& screen);

}  // namespace spellwick
