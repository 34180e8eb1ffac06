// Builds the keystroke strings of a spell and of meditation.
#pragma once

#include <string>
#include <string_view>

#include "text/number_types.h"

namespace spellwick {

// One row of the macro table: the marks "%", "^", "+" or nothing, and the key.
struct Macro {
    std::string_view alt;
    std::string_view ctrl;
    std::string_view shift;
    std::string_view key;
};

// What a spell says besides its key. A text is sent when its switch is exactly 1.
struct SpokenText {
    i16 sendSpellText = 0;
    std::string_view spellText;
    i16 sendSpellSuffix = 0;
    std::string_view suffix;
};

// The key goes out in lower case, so that a letter does not turn into Shift plus letter. The texts
// are not escaped: what is notation in them stays notation.
std::string SpellKeystrokes(const Macro& macro, const SpokenText& spoken);

// The key goes out as it is stored.
std::string MeditationKeystrokes(const Macro& macro);

}  // namespace spellwick
