#include "model/macro_keys.h"

#include <algorithm>
#include <array>

#include "model/formula_text.h"
#include "text/characters.h"

namespace spellwick {

namespace {

constexpr i32 kLineWithoutSpell = 8;

constexpr std::array<std::string_view, 12> kFunctionKeys{"{F1}", "{F2}",  "{F3}",  "{F4}",
                                                         "{F5}", "{F6}",  "{F7}",  "{F8}",
                                                         "{F9}", "{F10}", "{F11}", "{F12}"};

bool IsFunctionKey(std::string_view text) {
    return std::ranges::find(kFunctionKeys, text) != kFunctionKeys.end();
}

}  // namespace

i32 MacroOfLine(i32 page, i32 line) {
    if (line == kMeditationLine) {
        return kMeditationMacro;
    }
    return line == kLineWithoutSpell ? 0 : page * kSlotCount + line + 1;
}

std::optional<std::string> MacroKeyOfEntry(std::string_view entry) {
    if (CountCharacters(entry) == 1 || IsFunctionKey(entry)) {
        return std::string(entry);
    }
    if (entry.starts_with('F') || entry.starts_with('f')) {
        std::string key = "{F" + std::string(entry.substr(1)) + "}";
        if (IsFunctionKey(key)) {
            return key;
        }
    }
    return std::nullopt;
}

std::string ShownMacroKey(const MacroTables& macros, i32 macro) {
    std::string key(TrimBlanks(macros.MacroKey(macro)));
    if (key.empty()) {
        return {};
    }
    if (IsFunctionKey(key)) {
        key = key.substr(1, key.size() - 2);
    } else if (key.size() == 1 && key[0] >= 'a' && key[0] <= 'z') {
        key[0] = static_cast<char>(key[0] - 'a' + 'A');
    }
    return std::string(macros.MacroCtrl(macro).empty() ? "" : "Ctrl+") +
           (macros.MacroAlt(macro).empty() ? "" : "Alt+") +
           (macros.MacroShift(macro).empty() ? "" : "Shift+") + key;
}

}  // namespace spellwick
