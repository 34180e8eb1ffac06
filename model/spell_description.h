// What the spell info window shows about a spell.
#pragma once

#include <string>

#include "model/shared_state.h"

namespace spellwick {

struct SpellDescription {
    std::string name;
    std::string words;
    std::string cost;      // gold and mana
    std::string reagents;  // names without amounts, or the tithes alone
    std::string damage;
    std::string duration;
    std::string resisting;
    std::string extraInfo;
};

// Whether the character lacks what a spell needs.
struct SpellShortage {
    bool intelligence = false;
    bool skill = false;
};

// RuntimeFailure: subscript for a row outside the table or a marker with a bad number, overflow for
// a figure that does not fit.
SpellDescription DescribeSpell(const SharedState& state, i32 row);
SpellShortage ShortageFor(const SharedState& state, i32 row);

// A value typed into an edit of the info window: 100 at most, no lower limit.
// RuntimeFailure (overflow) for a number that does not fit into 16 bits.
i16 EnteredValue(std::string_view text);

}  // namespace spellwick
