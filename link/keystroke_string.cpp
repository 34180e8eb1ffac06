#include "link/keystroke_string.h"

#include "text/lower_case.h"

namespace spellwick {

namespace {

constexpr std::string_view kEnter = "{ENTER}";
constexpr i16 kOn = 1;

std::string Marks(const MacroStrokes& macro) {
    std::string marks(macro.alt);
    marks.append(macro.ctrl).append(macro.shift);
    return marks;
}

}  // namespace

std::string SpellKeystrokes(const MacroStrokes& macro, const SpokenText& spoken) {
    // ODDITY(marks-without-key): a spell without a key sends its marks straight before Enter, so
    // that Alt, Ctrl and Shift act on Enter; kept because the string is the same for every key.
    std::string keys = Marks(macro).append(LowerCase(macro.key));
    // ODDITY(notation-in-texts): a "+", "^", "%" or a key name in braces within a spoken text acts
    // as in a macro; kept because users build longer macros that way.
    if (spoken.sendSpellText == kOn) {
        keys.append(spoken.spellText);
    }
    keys.append(kEnter);
    if (spoken.sendSpellSuffix == kOn) {
        keys.append(spoken.suffix).append(kEnter);
    }
    return keys;
}

std::string MeditationKeystrokes(const MacroStrokes& macro) {
    // ODDITY(meditation-capital): a capital letter as the Meditation key is typed with Shift, one
    // as a spell's key is not; kept because the Meditation key goes out as it was entered.
    return Marks(macro).append(macro.key).append(kEnter);
}

}  // namespace spellwick
