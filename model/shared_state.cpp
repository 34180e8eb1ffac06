#include "model/shared_state.h"

namespace spellwick {

void InitReagentTables(ReagentTables& tables) {
    for (i32 reagent = 1; reagent <= kTithes; ++reagent) {
        tables.ReagentName(reagent) = FactsOfReagent(reagent).name;
        tables.ReagentCode(reagent) = FactsOfReagent(reagent).code;
    }
}

}  // namespace spellwick
