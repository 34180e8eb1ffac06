// Converts between keysyms, the X server's names of symbols, and ours.
#pragma once

#include <xkbcommon/xkbcommon.h>

#include "platform/keymap.h"

namespace spellwick {

// Keypad symbols, dead keys and others that no keystroke string can name give kOther.
Symbol SymbolOfKeysym(xkb_keysym_t keysym);

// XKB_KEY_NoSymbol if there is no keysym.
xkb_keysym_t KeysymOfSymbol(Symbol symbol);

}  // namespace spellwick
