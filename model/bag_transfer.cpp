#include "model/bag_transfer.h"

#include "text/number_forms.h"

namespace spellwick {

bool LacksTwoBags(const BagPair& bags) {
    return bags.left == bags.right || bags.left < 0 || bags.right < 0;
}

bool MoveOne(StockTable& stock, i32 reagent, const BagPair& bags, BagSide to) {
    const bool toLeft = to == BagSide::kLeft;
    i16& source = stock(reagent, toLeft ? bags.right : bags.left);
    if (source < 1) {
        return false;
    }
    source = ToI16(i32{source} - 1);
    i16& destination = stock(reagent, toLeft ? bags.left : bags.right);
    destination = ToI16(i32{destination} + 1);
    return true;
}

TransferEntry CommitTransfer(StockTable& stock, i32 reagent, const BagPair& bags, BagSide side,
                             std::string_view text) {
    const bool isLeft = side == BagSide::kLeft;
    const bool fetches = text.starts_with('+');
    if (!fetches && !text.starts_with('-')) {
        // ODDITY(bag-four-digits): of a longer count four digits are stored, but the edit still
        // shows all; kept because only the stored value is limited.
        stock(reagent, isLeft ? bags.left : bags.right) = ToI16(FirstFour(text));
        return {};
    }
    i16& left = stock(reagent, bags.left);
    i16& right = stock(reagent, bags.right);
    // ODDITY(backward-move): +-5 moves five the other way, and the paying bag can go below zero;
    // kept because the sign only names the side that pays, and the amount may be any number.
    const double amount = RoundHalfEven(NumericPrefix(text.substr(1)));
    const bool leftPays = isLeft != fetches;
    if (amount > (leftPays ? left : right)) {
        return {.moves = true, .refused = true};
    }
    // ODDITY(same-bag-move): with the same bag on both sides +5 is accepted and changes nothing;
    // kept because the bag gets back what it gives.
    left = ToI16(leftPays ? left - amount : left + amount);
    right = ToI16(leftPays ? right + amount : right - amount);
    return {.moves = true, .refused = false};
}

i16 CountOfBox(std::string_view text) {
    return ToI16(NumericPrefix(text));
}

i16 TotalOfReagent(const StockTable& stock, i32 reagent) {
    // ODDITY(stock-total): more than 32767 of one reagent in all bags together ends the program
    // when the settings are opened, with all data saved; kept because the total has 16 bits like
    // the counts in it, and nobody carries that many.
    i16 total = 0;
    for (i32 bag = 0; bag < kBagCount; ++bag) {
        total = ToI16(i32{total} + stock(reagent, bag));
    }
    return total;
}

}  // namespace spellwick
