#include "link/keystroke_string.h"

#include "text/lower_case.h"

namespace spellwick {

namespace {

constexpr std::string_view kEnter = "{ENTER}";
constexpr i16 kOn = 1;

std::string MarksOf(const MacroStrokes& macro) {
    std::string marks(macro.alt);
    marks.append(macro.ctrl).append(macro.shift);
    return marks;
}

// A line of speech, for which the client's line of text may have to be opened.
void Speak(std::string& keys, std::string_view text, const EnterRules& enter) {
    if (!enter.behindKey && enter.opensChat) {
        keys.append(kEnter);
    }
    keys.append(text).append(kEnter);
}

}  // namespace

std::string SpellKeystrokes(const MacroStrokes& macro, const SpokenText& spoken,
                            const EnterRules& enter) {
    // ODDITY(marks-without-key): a spell without a key sends its marks straight before Enter, so
    // that Alt, Ctrl and Shift act on Enter; kept because the string is the same for every key.
    std::string keys = MarksOf(macro).append(LowerCase(macro.key));
    // ODDITY(notation-in-texts): a "+", "^", "%" or a key name in braces within a spoken text acts
    // as in a macro; kept because users build longer macros that way.
    if (spoken.sendSpellText == kOn && !spoken.spellText.empty()) {
        Speak(keys, spoken.spellText, enter);
    } else if (enter.behindKey) {
        keys.append(kEnter);
    }
    if (spoken.sendSpellSuffix == kOn && (enter.behindKey || !spoken.suffix.empty())) {
        Speak(keys, spoken.suffix, enter);
    }
    return keys;
}

std::string MeditationKeystrokes(const MacroStrokes& macro, const EnterRules& enter) {
    // ODDITY(meditation-capital): a capital letter as the Meditation key is typed with Shift, one
    // as a spell's key is not; kept because the Meditation key goes out as it was entered.
    std::string keys = MarksOf(macro).append(macro.key);
    if (enter.behindKey) {
        keys.append(kEnter);
    }
    return keys;
}

}  // namespace spellwick
