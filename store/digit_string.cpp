#include "store/digit_string.h"

#include <algorithm>
#include <cstddef>

#include "store/text_forms.h"
#include "text/characters.h"
#include "text/number_forms.h"

namespace spellwick {

namespace {

constexpr std::size_t kSavedPlaces = 15;
constexpr std::size_t kUnsavedPlaces = 16;

constexpr std::size_t PlaceOf(i32 reagent) {
    return static_cast<std::size_t>(reagent - 1);
}

}  // namespace

// ODDITY(one-digit-tithes): a tithing cost of 1 to 9 is read back ten times as large, since its
// single digit is written into the first of the two places; kept because saved strings are read
// this way.
// ODDITY(one-digit-amounts): an amount of 10 or more of a reagent is read back as its first digit,
// since the next amount overwrites the rest; kept because saved strings have one place for each
// reagent.
std::string DigitString(const ReagentAmounts& amounts) {
    std::string text(kSavedPlaces, '0');
    for (i32 reagent = 1; reagent <= kTithes; ++reagent) {
        const std::string digits = PlainText(i32{amounts(reagent)});
        const std::size_t place = PlaceOf(reagent);
        const std::size_t fits = std::min(digits.size(), kSavedPlaces - place);
        text.replace(place, fits, digits, 0, fits);
    }
    return text;
}

// ODDITY(first-start-tithes): until the amounts are saved, a tithing cost of 15 counts as 10 and
// one of 5 as 50; kept because the amounts of every first start were made this way.
std::string UnsavedDigitString(const ReagentAmounts& amounts) {
    std::string text(kUnsavedPlaces, '0');
    for (i32 reagent = 1; reagent <= kTithes; ++reagent) {
        int digit = amounts(reagent);
        while (digit > 9) {
            digit /= 10;
        }
        text[PlaceOf(reagent)] = static_cast<char>('0' + digit);
    }
    return text;
}

void ReadDigitString(std::string_view text, ReagentAmounts& amounts) {
    for (i32 reagent = 1; reagent <= kTithes; ++reagent) {
        const std::size_t places = reagent == kTithes ? 2 : 1;
        if (places == 1 && !text.empty() && IsDigit(text.front())) {
            // As below, and a start reads 1,261 of them.
            amounts(reagent) = static_cast<unsigned char>(text.front() - '0');
            text.remove_prefix(1);
            continue;
        }
        amounts(reagent) = ReadByte(FirstCharacters(text, places));
        text = SkipCharacters(text, 1);
    }
}

}  // namespace spellwick
