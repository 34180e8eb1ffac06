// A table with explicit subscript bounds; a subscript outside them is a RuntimeFailure.
#pragma once

#include <array>
#include <cstddef>

#include "text/number_types.h"
#include "text/runtime_failure.h"

namespace spellwick {

template <typename Cell, i32 First, i32 Last>
class FixedTable {
  public:
    static constexpr i32 kFirst = First;
    static constexpr i32 kLast = Last;

    Cell& operator()(i32 index) { return m_cells[Place(index)]; }
    const Cell& operator()(i32 index) const { return m_cells[Place(index)]; }

    void Fill(const Cell& value) { m_cells.fill(value); }

    bool operator==(const FixedTable&) const = default;

  private:
    static std::size_t Place(i32 index) {
        if (index < First || index > Last) {
            throw RuntimeFailure(FailureKind::kSubscript,
                                 "The subscript " + std::to_string(index) + " lies outside " +
                                     std::to_string(First) + " to " + std::to_string(Last) + ".");
        }
        return static_cast<std::size_t>(index - First);
    }

    std::array<Cell, static_cast<std::size_t>(Last - First + 1)> m_cells{};
};

}  // namespace spellwick
