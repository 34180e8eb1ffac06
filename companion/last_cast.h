// The last press on a spell, and what its cast typed and took.
#pragma once

#include <string>

#include "model/fixed_table.h"
#include "model/reagents.h"
#include "text/number_types.h"

namespace spellwick {

struct LastCast {
    i16 LastMouseButton = 0;  // 1 left, 2 right, 4 middle
    i16 LastMouseShift = 0;   // 1 Shift, 2 Ctrl, 4 Alt
    std::string SendString;
    std::string BareString;  // the same without spoken texts, for a keyboard that lacks letters
    FixedTable<i16, 1, kTithes> UndoAmounts;  // of the last debit, for Undo
};

}  // namespace spellwick
