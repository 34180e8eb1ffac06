#include "model/formula_text.h"

#include <algorithm>

#include "text/characters.h"
#include "text/number_forms.h"

namespace spellwick {

namespace {

constexpr std::string_view kMarker = "#Formula";

// Length of the part of a marker at the end of `done` if `ahead` begins with the rest of it, else
// 0: an empty figure can join the two sides into a marker.
std::size_t JoinedMarker(std::string_view done, std::string_view ahead) {
    for (std::size_t length = std::min(kMarker.size() - 1, done.size()); length > 0; --length) {
        if (done.ends_with(kMarker.substr(0, length)) &&
            ahead.starts_with(kMarker.substr(length))) {
            return length;
        }
    }
    return 0;
}

}  // namespace

std::string_view TrimBlanks(std::string_view text) {
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

std::string ExpandFormulas(std::string_view text, const FormulaTexts& figures) {
    std::string done;
    std::string_view ahead = text;
    bool expanded = false;
    for (;;) {
        const std::size_t joined = JoinedMarker(done, ahead);
        if (joined > 0) {
            done.erase(done.size() - joined);
            ahead.remove_prefix(kMarker.size() - joined);
        } else {
            const std::size_t next = ahead.find(kMarker);
            done.append(ahead.substr(0, next));
            if (next == std::string_view::npos) {
                break;
            }
            ahead.remove_prefix(next + kMarker.size());
        }
        // ODDITY(marker-swallows): a blank right after a marker's two digits is lost; kept because
        // the marker takes one more character, whatever it is, and the spell texts rely on it.
        const i32 number = ToI32(NumericPrefix(FirstCharacters(ahead, 2)));
        done.append(TrimBlanks(figures(number)));
        ahead = SkipCharacters(ahead, 3);
        expanded = true;
    }
    return expanded ? std::string(TrimBlanks(done)) : done;
}

}  // namespace spellwick
