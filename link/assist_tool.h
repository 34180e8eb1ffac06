// What is known of one kind of assist tool.
#pragma once

#include <string>

namespace spellwick {

// What the two words of a tool's report of Intelligence and mana are.
enum class StatsWords {
    kIntelligenceAndMana,
    kManaAlone,  // the first word is the largest mana
    kNone,       // neither is believed
};

struct AssistTool {
    std::string name;
    bool castsWithinCircle = false;  // a cast is reported by its place in its circle or book
    bool countsOnRequest = true;
    bool reportsCasts = true;
    bool reportsStock = true;  // at each change, so that a cast is told twice
    StatsWords stats = StatsWords::kIntelligenceAndMana;
    // Its reports of casts count from the first search on. Otherwise the click pays until a report
    // of a cast or of stock has come.
    bool isTrustedAtOnce = false;
};

}  // namespace spellwick
