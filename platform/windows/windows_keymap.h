// The keyboard of Windows as a value: its codes, its named keys, and what they give in a layout.
#pragma once

#include <windows.h>

#include "platform/keymap.h"

namespace spellwick {

// A code is a scan code, marked if keyboards send it with a prefix; or a virtual key, for keys that
// share a scan code; or a spare.
inline constexpr Keycode kPrefixed = 0x100;
inline constexpr Keycode kVirtualKey = 0x200;
inline constexpr Keycode kFirstSpare = 0x400;
inline constexpr Keycode kLastSpare = 0x4ff;

inline constexpr ModifierMask kShiftMask = 0x01;
inline constexpr ModifierMask kCapsLockMask = 0x02;
inline constexpr ModifierMask kControlMask = 0x04;
inline constexpr ModifierMask kAltMask = 0x08;
inline constexpr ModifierMask kNumLockMask = 0x10;
inline constexpr ModifierMask kSystemMask = 0x40;  // the Windows keys

inline constexpr Keycode kCapsLockCode = 0x3a;
inline constexpr Keycode kNumLockCode = 0x45;

// A modifier key and its virtual key.
struct HoldKey {
    Keycode code = 0;
    ModifierMask modifier = 0;
    BYTE virtualKey = 0;
};

// The left ones come first: layouts use the right Alt for other things.
inline constexpr HoldKey kHoldKeys[] = {
    {0x2a, kShiftMask, VK_LSHIFT},
    {0x1d, kControlMask, VK_LCONTROL},
    {0x38, kAltMask, VK_LMENU},
    {0x36, kShiftMask, VK_RSHIFT},
    {kPrefixed | 0x1d, kControlMask, VK_RCONTROL},
    {kPrefixed | 0x38, kAltMask, VK_RMENU},
    {kPrefixed | 0x5b, kSystemMask, VK_LWIN},
    {kPrefixed | 0x5c, kSystemMask, VK_RWIN},
};

// What the keys give in a layout, and the spares; the current state is left empty.
Keymap ReadWindowsKeymap(HKL layout);

// The key's virtual key in a layout; 0 for a spare.
BYTE VirtualKeyOf(Keycode code, HKL layout);

}  // namespace spellwick
