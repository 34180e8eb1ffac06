#include "companion/way.h"

#include "text/number_forms.h"

namespace spellwick {

namespace {

std::string SkillOfSchool(i32 school) {
    switch (school) {
        case kNecromancer:
            return "Necromancy";
        case kChivalry:
            return "Chivalry";
        default:
            return "Magery";
    }
}

bool TakesNecroReagents(const SpellRecord& spell) {
    for (i32 reagent = kFirstNecroReagent; reagent <= kReagentCount; ++reagent) {
        if (spell.Reagents(reagent) != 0) {
            return true;
        }
    }
    return false;
}

}  // namespace

WayHint SkillHint(const SharedState& state, i32 row) {
    return {"Enter your " + SkillOfSchool(state.Spells(row).School) + " here: Settings, Skills",
            {Way::kSkill, row}};
}

WayHint IntelligenceHint(i32 row) {
    return {"Enter your Intelligence here: Settings, Skills", {Way::kIntelligence, row}};
}

WayHint StockHint(const SharedState& state, i32 row) {
    const SpellRecord& spell = state.Spells(row);
    if (spell.School == kChivalry) {
        return {"Enter your tithing points here: click the ankh, type them, press Enter",
                {Way::kTithingPoints, row}};
    }
    if (!state.ShowNecroRegs && TakesNecroReagents(spell)) {
        return {"Show the counters of the Necromancer reagents first: Settings, Settings",
                {Way::kNecroReagents, row}};
    }
    return {"Type how many reagents you have into the counters, then press Enter",
            {Way::kCounters, row}};
}

WayHint NoGameHint(bool isThere) {
    return {isThere ? "Log in to the game, or choose its window: Settings, Game"
                    : "Start the game, or choose its window: Settings, Game",
            {Way::kGame}};
}

WayHint FirstStartHint() {
    return {"New here? First steps", {Way::kFirstSteps}};
}

i32 CounterToFill(const SpellRecord& spell, const Screen& screen) {
    i32 first = 0;
    for (i32 reagent = 1; reagent <= kReagentCount; ++reagent) {
        const i32 need = spell.Reagents(reagent);
        if (need != 0 && NumericPrefix(screen.counters(reagent).text) < need) {
            return reagent;
        }
        if (need != 0 && first == 0) {
            first = reagent;
        }
    }
    return first == 0 ? 1 : first;
}

}  // namespace spellwick
