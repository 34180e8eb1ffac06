// How far a conversion of older data has come, for the load of a player meanwhile.
#pragma once

#include "text/number_types.h"

namespace spellwick {

struct ConversionProgress {
    bool Converting = false;
    bool ConvertToAllSlots = false;
    i16 ConvertPlayer = 0;
};

}  // namespace spellwick
