#include "link/keystroke_string.h"

#include "link/lower_case.h"

namespace spellwick {

namespace {

constexpr std::string_view kEnter = "{ENTER}";
constexpr i16 kOn = 1;

std::string Marks(const Macro& macro) {
    std::string marks(macro.alt);
    marks.append(macro.ctrl).append(macro.shift);
    return marks;
}

}  // namespace

std::string SpellKeystrokes(const Macro& macro, const SpokenText& spoken) {
    std::string keys = Marks(macro).append(LowerCase(macro.key));
    if (spoken.sendSpellText == kOn) {
        keys.append(spoken.spellText);
    }
    keys.append(kEnter);
    if (spoken.sendSpellSuffix == kOn) {
        keys.append(spoken.suffix).append(kEnter);
    }
    return keys;
}

std::string MeditationKeystrokes(const Macro& macro) {
    return Marks(macro).append(macro.key).append(kEnter);
}

}  // namespace spellwick
