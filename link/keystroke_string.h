// Builds the keystroke strings of a spell and of meditation.
#pragma once

#include <string>
#include <string_view>

#include "text/number_types.h"

namespace spellwick {

// One row of the macro table as it is typed: the marks "%", "^", "+" or nothing, and the key.
struct MacroStrokes {
    std::string_view alt;
    std::string_view ctrl;
    std::string_view shift;
    std::string_view key;
};

// The texts sent with a spell's key. A text is sent if its switch is exactly 1.
struct SpokenText {
    i16 sendSpellText = 0;
    std::string_view spellText;
    i16 sendSpellSuffix = 0;
    std::string_view suffix;
};

// What Enter does in the client.
struct EnterRules {
    bool behindKey = true;   // false: a macro key that no text follows is sent without Enter
    bool opensChat = false;  // with the above false: Enter opens the line before each text
};

// The key is sent in lower case, so that a letter does not become Shift plus letter. The texts are
// not escaped: notation in them remains notation.
std::string SpellKeystrokes(const MacroStrokes& macro, const SpokenText& spoken,
                            const EnterRules& enter = {});

// The key is sent as it is stored.
std::string MeditationKeystrokes(const MacroStrokes& macro, const EnterRules& enter = {});

}  // namespace spellwick
