// The largest piece of memory that the program asked for; linking this replaces operator new.
#pragma once

#include <cstddef>

namespace spellwick {

void ForgetLargestPiece();

// Bytes of the largest piece since it was last forgotten.
std::size_t LargestPiece();

}  // namespace spellwick
