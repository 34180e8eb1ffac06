// Moves of reagents between two bags shown side by side, and the totals of all bags.
#pragma once

#include <string_view>

#include "model/shared_state.h"

namespace spellwick {

inline constexpr std::string_view kSelectTwoBags =
    "Please select two different containers before transferring reagents";
inline constexpr std::string_view kNotThatManyToMove =
    "You do not have that amount of reagents to move";

// Bags as the two lists show them: 0 to 9, or -1 for none.
struct BagPair {
    i32 left = 0;
    i32 right = 0;
};

enum class BagSide { kLeft, kRight };

// Whether nothing can be moved because a side has no bag.
bool LacksTwoBags(const BagPair& bags);

// Moves one reagent to a side; false when the other side has none. RuntimeFailure (subscript)
// without a bag, (overflow) when the cell is full.
bool MoveOne(StockTable& stock, i32 reagent, const BagPair& bags, BagSide to);

struct TransferEntry {
    bool moves = false;    // there was a sign: refresh both edits from the cells
    bool refused = false;  // more was to be moved than there is
};

// An entry in the edit of one side. "+n" fetches n from the other side and "-n" gives n to it;
// anything else sets the cell to the number in its first four characters. RuntimeFailure as above.
TransferEntry CommitTransfer(StockTable& stock, i32 reagent, const BagPair& bags, BagSide side,
                             std::string_view text);

// Stores the number that the arrows have written into an edit.
i16 CountOfBox(std::string_view text);

// Sum over all bags; RuntimeFailure (overflow) if it exceeds an i16.
i16 TotalOfReagent(const StockTable& stock, i32 reagent);

}  // namespace spellwick
