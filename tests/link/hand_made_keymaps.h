// Small keymaps for tests, written out key by key.
#pragma once

#include "platform/keymap.h"

namespace spellwick::hand_made {

inline constexpr ModifierMask kShift = 1;
inline constexpr ModifierMask kCaps = 2;
inline constexpr ModifierMask kControl = 4;
inline constexpr ModifierMask kAlt = 8;
inline constexpr ModifierMask kNum = 16;
inline constexpr ModifierMask kLevelThree = 128;

inline constexpr Keycode kShiftKey = 50;
inline constexpr Keycode kControlKey = 37;
inline constexpr Keycode kAltKey = 64;
inline constexpr Keycode kLevelThreeKey = 108;
inline constexpr Keycode kCapsKey = 66;
inline constexpr Keycode kEnterKey = 36;
inline constexpr Keycode kSpaceKey = 65;
inline constexpr Keycode kFirstFunctionKey = 67;  // F1 to F12 are consecutive
inline constexpr Keycode kDigitOneKey = 10;       // 1 to 9 and 0 are consecutive

// The codes of letters by their place on an American keyboard: LetterKey('a').
Keycode LetterKey(char letter);

Keymap Us();
Keymap De();  // with level three: @ on q, euro on e, { on 7
Keymap Fr();  // azerty: digits need Shift, @ is level three of 0
Keymap Ru();  // the second group of us,ru: no Latin letters

}  // namespace spellwick::hand_made
