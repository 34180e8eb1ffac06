#include "model/purse_entries.h"

#include <algorithm>

#include "text/characters.h"
#include "text/number_forms.h"

namespace spellwick {

namespace {

constexpr std::size_t kTithesBoxLength = 9;
constexpr std::size_t kTithesSignedLength = 7;
constexpr char32_t kBackspace = 8;
constexpr double kMostTithes = 10000.0;

}  // namespace

CounterEntry CommitCounterEntry(std::string_view text, i16 stock) {
    // ODDITY(four-characters-added): after a sign only four characters count, so +12345 adds 1234;
    // kept because number edits take four digits everywhere.
    if (text.starts_with('+')) {
        return {ToI16(stock + FirstFour(text.substr(1))), true, false};
    }
    if (text.starts_with('-')) {
        const double taken = FirstFour(text.substr(1));
        if (taken > stock) {
            return {stock, true, true};
        }
        return {ToI16(stock - taken), true, false};
    }
    // ODDITY(four-digits-stored): of a longer entry four digits are stored, but the edit still
    // shows all; kept because only the stored value is limited.
    return {ToI16(FirstFour(PlainText(NumericPrefix(text)))), false, false};
}

i32 CommitTithesEntry(std::string_view text, i32 tithing) {
    // ODDITY(last-nine): of a longer entry the last nine characters count, so a sign before them is
    // lost; kept because the edit shows no more than nine.
    const std::string_view entry = LastCharacters(text, kTithesBoxLength);
    double points = 0.0;
    if (entry.starts_with('+') || entry.starts_with('-')) {
        const double change = NumericPrefix(FirstCharacters(entry.substr(1), kTithesSignedLength));
        points = entry.starts_with('+') ? tithing + change : tithing - change;
    } else {
        points = NumericPrefix(entry);
    }
    // ODDITY(tithes-cut-down): taking too much leaves 0 and adding too much leaves 10000, both
    // without the message that a counter would show; kept because users empty or fill the tithes
    // with one large number.
    return ToI32(std::clamp(points, 0.0, kMostTithes));
}

bool CounterTakes(char32_t character) {
    return character == kBackspace || (character >= U'0' && character <= U'9') ||
           character == U'+' || character == U'-';
}

}  // namespace spellwick
