// Any bytes as a spell data file: the reader must answer yes or no, and the table must not have
// more rows than the bytes allow.
#include <cstdlib>
#include <sstream>
#include <string>

#include "model/spell_data.h"

using spellwick::LastRowFor;
using spellwick::LoadSpellData;
using spellwick::SharedState;

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    constexpr spellwick::i32 kValuesOfARow = 32;
    std::istringstream input(std::string(data, data + size));
    SharedState state;
    const bool loaded = LoadSpellData(state, input);
    if (loaded && (state.SpellCount < 88 || state.Spells.Last() != LastRowFor(state.SpellCount))) {
        std::abort();
    }
    const auto rows = static_cast<std::size_t>(state.Spells.Last()) + 1;
    if (rows > size / kValuesOfARow + 17) {
        std::abort();
    }
    return 0;
}
