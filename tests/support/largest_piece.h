// The largest piece of memory that the program has allocated; linking this replaces operator new.
#pragma once

#include <cstddef>

namespace spellwick {

void ForgetLargestPiece();

// The size in bytes of the largest piece since the last reset.
std::size_t LargestPiece();

}  // namespace spellwick
