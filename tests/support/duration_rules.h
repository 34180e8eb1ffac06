// Rules by which a spell's duration is computed.
#pragma once

#include "text/number_types.h"

namespace spellwick {

inline constexpr i16 kMagery120 = 1;  // a spell that lasts

}  // namespace spellwick
