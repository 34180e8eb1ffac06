#include "link/keystroke_names.h"

#include <array>

#include "link/keystroke_parse.h"
#include "text/utf8.h"

namespace spellwick {

namespace {

struct SymbolName {
    Symbol symbol;
    const char* name;
};

constexpr std::array kNames{
    SymbolName{Symbol::kEnter, "Enter"},
    SymbolName{Symbol::kTab, "Tab"},
    SymbolName{Symbol::kEscape, "Escape"},
    SymbolName{Symbol::kBackspace, "Backspace"},
    SymbolName{Symbol::kDelete, "Delete"},
    SymbolName{Symbol::kInsert, "Insert"},
    SymbolName{Symbol::kHome, "Home"},
    SymbolName{Symbol::kEnd, "End"},
    SymbolName{Symbol::kPageUp, "Page Up"},
    SymbolName{Symbol::kPageDown, "Page Down"},
    SymbolName{Symbol::kUp, "Up"},
    SymbolName{Symbol::kDown, "Down"},
    SymbolName{Symbol::kLeft, "Left"},
    SymbolName{Symbol::kRight, "Right"},
    SymbolName{Symbol::kClear, "Clear"},
    SymbolName{Symbol::kHelp, "Help"},
    SymbolName{Symbol::kPause, "Pause"},
    SymbolName{Symbol::kPrint, "Print"},
    SymbolName{Symbol::kCapsLock, "Caps Lock"},
    SymbolName{Symbol::kNumLock, "Num Lock"},
    SymbolName{Symbol::kScrollLock, "Scroll Lock"},
    SymbolName{CharacterSymbol(U' '), "Space"},
};

std::string NameOf(Symbol symbol) {
    for (const SymbolName& row : kNames) {
        if (row.symbol == symbol) {
            return row.name;
        }
    }
    if (symbol >= Symbol::kF1 && symbol <= Symbol::kF16) {
        return "F" + std::to_string(static_cast<int>(symbol) - static_cast<int>(Symbol::kF1) + 1);
    }
    if (!IsCharacter(symbol)) {
        return "an unknown key";
    }
    std::string name;
    AppendUtf8(name, static_cast<char32_t>(symbol));
    return name;
}

}  // namespace

std::string KeystrokeNames(std::string_view keystrokes) {
    std::string names;
    for (const Keystroke& stroke : ParseKeystrokes(keystrokes)) {
        names += names.empty() ? "" : ", ";
        names += stroke.marks.control ? "Ctrl+" : "";
        names += stroke.marks.alt ? "Alt+" : "";
        names += stroke.marks.shift ? "Shift+" : "";
        names += NameOf(stroke.symbol);
    }
    return names;
}

}  // namespace spellwick
