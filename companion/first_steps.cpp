#include "companion/first_steps.h"

#include "link/client_watch.h"

namespace spellwick {

namespace {

bool HasSpell(const SpellTables& tables) {
    for (i32 row = 0; row <= kLastRow && row <= tables.Spells.Last(); ++row) {
        if (tables.Spells(row).School != kNoSchool && tables.Spellbook(row) == 0) {
            return true;
        }
    }
    return false;
}

bool HasStock(const PurseContents& purse) {
    if (purse.CurrentTithing > 0) {
        return true;
    }
    const i16 bag = purse.CurrentReagentBag;
    if (bag < 0 || bag >= kBagCount) {
        return false;
    }
    for (i32 reagent = 1; reagent <= kReagentCount; ++reagent) {
        if (purse.ReagentStock(reagent, bag) > 0) {
            return true;
        }
    }
    return false;
}

}  // namespace

std::array<bool, kFirstStepCount> FirstStepsDone(const SharedState& state) {
    const bool hasSkill = state.Magery > 0 || state.Necro > 0 || state.Chivalry > 0;
    return {state.ClientWindow != 0 && IsRealServer(state.ServerName), HasSpell(state),
            hasSkill && state.Intelligence > 0, HasStock(state)};
}

}  // namespace spellwick
