#include "platform/linux/x11_symbols.h"

#include <algorithm>
#include <array>

#include <xkbcommon/xkbcommon-keysyms.h>

namespace spellwick {

namespace {

struct Row {
    xkb_keysym_t keysym;
    Symbol symbol;
};

constexpr std::array kNamedKeys{
    Row{XKB_KEY_Return, Symbol::kEnter},
    Row{XKB_KEY_Tab, Symbol::kTab},
    Row{XKB_KEY_Escape, Symbol::kEscape},
    Row{XKB_KEY_BackSpace, Symbol::kBackspace},
    Row{XKB_KEY_Delete, Symbol::kDelete},
    Row{XKB_KEY_Insert, Symbol::kInsert},
    Row{XKB_KEY_Home, Symbol::kHome},
    Row{XKB_KEY_End, Symbol::kEnd},
    Row{XKB_KEY_Page_Up, Symbol::kPageUp},
    Row{XKB_KEY_Page_Down, Symbol::kPageDown},
    Row{XKB_KEY_Up, Symbol::kUp},
    Row{XKB_KEY_Down, Symbol::kDown},
    Row{XKB_KEY_Left, Symbol::kLeft},
    Row{XKB_KEY_Right, Symbol::kRight},
    Row{XKB_KEY_Clear, Symbol::kClear},
    Row{XKB_KEY_Help, Symbol::kHelp},
    Row{XKB_KEY_Pause, Symbol::kPause},
    Row{XKB_KEY_Print, Symbol::kPrint},
    Row{XKB_KEY_Caps_Lock, Symbol::kCapsLock},
    Row{XKB_KEY_Num_Lock, Symbol::kNumLock},
    Row{XKB_KEY_Scroll_Lock, Symbol::kScrollLock},
    Row{XKB_KEY_Shift_L, Symbol::kModifier},
    Row{XKB_KEY_Shift_R, Symbol::kModifier},
    Row{XKB_KEY_Control_L, Symbol::kModifier},
    Row{XKB_KEY_Control_R, Symbol::kModifier},
    Row{XKB_KEY_Alt_L, Symbol::kModifier},
    Row{XKB_KEY_Alt_R, Symbol::kModifier},
    Row{XKB_KEY_Meta_L, Symbol::kModifier},
    Row{XKB_KEY_Meta_R, Symbol::kModifier},
    Row{XKB_KEY_Super_L, Symbol::kModifier},
    Row{XKB_KEY_Super_R, Symbol::kModifier},
    Row{XKB_KEY_Hyper_L, Symbol::kModifier},
    Row{XKB_KEY_Hyper_R, Symbol::kModifier},
    Row{XKB_KEY_ISO_Level3_Shift, Symbol::kModifier},
    Row{XKB_KEY_ISO_Level5_Shift, Symbol::kModifier},
    Row{XKB_KEY_Mode_switch, Symbol::kModifier},
};

constexpr std::uint32_t kF1 = static_cast<std::uint32_t>(Symbol::kF1);
constexpr std::uint32_t kF16 = static_cast<std::uint32_t>(Symbol::kF16);

constexpr bool IsPrintable(char32_t character) {
    return character >= 0x20 && (character < 0x7f || character >= 0xa0);
}

}  // namespace

Symbol SymbolOfKeysym(xkb_keysym_t keysym) {
    if (keysym == XKB_KEY_NoSymbol) {
        return Symbol::kNothing;
    }
    if (keysym >= XKB_KEY_F1 && keysym <= XKB_KEY_F16) {
        return static_cast<Symbol>(kF1 + (keysym - XKB_KEY_F1));
    }
    const auto* named = std::ranges::find(kNamedKeys, keysym, &Row::keysym);
    if (named != kNamedKeys.end()) {
        return named->symbol;
    }
    if (keysym >= XKB_KEY_KP_Space && keysym <= XKB_KEY_KP_Equal) {
        return Symbol::kOther;
    }
    const char32_t character = xkb_keysym_to_utf32(keysym);
    return IsPrintable(character) ? CharacterSymbol(character) : Symbol::kOther;
}

xkb_keysym_t KeysymOfSymbol(Symbol symbol) {
    if (IsCharacter(symbol)) {
        return xkb_utf32_to_keysym(static_cast<std::uint32_t>(symbol));
    }
    const auto number = static_cast<std::uint32_t>(symbol);
    if (number >= kF1 && number <= kF16) {
        return XKB_KEY_F1 + (number - kF1);
    }
    const auto* named = std::ranges::find(kNamedKeys, symbol, &Row::symbol);
    return named == kNamedKeys.end() || symbol == Symbol::kModifier ? xkb_keysym_t{XKB_KEY_NoSymbol}
                                                                    : named->keysym;
}

}  // namespace spellwick
