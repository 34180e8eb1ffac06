#include "model/shared_state.h"

namespace spellwick {

const char* const kVersion = SPELLWICK_VERSION;

}  // namespace spellwick
