#include "model/shared_state.h"

namespace spellwick {

void InitReagentTables(SharedState& state) {
    for (i32 reagent = 1; reagent <= kTithes; ++reagent) {
        state.ReagentName(reagent) = FactsOfReagent(reagent).name;
        state.ReagentCode(reagent) = FactsOfReagent(reagent).code;
    }
}

}  // namespace spellwick
