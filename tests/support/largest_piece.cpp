#include "tests/support/largest_piece.h"

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <new>

namespace {

std::atomic<std::size_t> largestPiece = 0;

}  // namespace

void* operator new(std::size_t size) {
    largestPiece = std::max(largestPiece.load(), size);
    if (void* piece = std::malloc(std::max<std::size_t>(size, 1))) {
        return piece;
    }
    throw std::bad_alloc();
}

void operator delete(void* piece) noexcept {
    std::free(piece);
}

void operator delete(void* piece, std::size_t) noexcept {
    std::free(piece);
}

namespace spellwick {

void ForgetLargestPiece() {
    largestPiece = 0;
}

std::size_t LargestPiece() {
    return largestPiece;
}

}  // namespace spellwick
