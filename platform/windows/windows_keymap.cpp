#include "platform/windows/windows_keymap.h"

#include <algorithm>
#include <array>

#include "text/utf16.h"

namespace spellwick {

namespace {

struct NamedKey {
    Keycode code;
    Symbol symbol;
    BYTE virtualKey;
};

constexpr Symbol FunctionKey(int number) {
    return static_cast<Symbol>(static_cast<std::uint32_t>(Symbol::kF1) +
                               static_cast<std::uint32_t>(number - 1));
}

constexpr NamedKey kNamedKeys[] = {
    {0x01, Symbol::kEscape, VK_ESCAPE},
    {0x0e, Symbol::kBackspace, VK_BACK},
    {0x0f, Symbol::kTab, VK_TAB},
    {0x1c, Symbol::kEnter, VK_RETURN},
    {kCapsLockCode, Symbol::kCapsLock, VK_CAPITAL},
    {0x3b, FunctionKey(1), VK_F1},
    {0x3c, FunctionKey(2), VK_F2},
    {0x3d, FunctionKey(3), VK_F3},
    {0x3e, FunctionKey(4), VK_F4},
    {0x3f, FunctionKey(5), VK_F5},
    {0x40, FunctionKey(6), VK_F6},
    {0x41, FunctionKey(7), VK_F7},
    {0x42, FunctionKey(8), VK_F8},
    {0x43, FunctionKey(9), VK_F9},
    {0x44, FunctionKey(10), VK_F10},
    {0x46, Symbol::kScrollLock, VK_SCROLL},
    {0x57, FunctionKey(11), VK_F11},
    {0x58, FunctionKey(12), VK_F12},
    {0x64, FunctionKey(13), VK_F13},
    {0x65, FunctionKey(14), VK_F14},
    {0x66, FunctionKey(15), VK_F15},
    {0x67, FunctionKey(16), VK_F16},
    {kPrefixed | 0x37, Symbol::kPrint, VK_SNAPSHOT},
    {kNumLockCode, Symbol::kNumLock, VK_NUMLOCK},
    {kPrefixed | 0x47, Symbol::kHome, VK_HOME},
    {kPrefixed | 0x48, Symbol::kUp, VK_UP},
    {kPrefixed | 0x49, Symbol::kPageUp, VK_PRIOR},
    {kPrefixed | 0x4b, Symbol::kLeft, VK_LEFT},
    {kPrefixed | 0x4d, Symbol::kRight, VK_RIGHT},
    {kPrefixed | 0x4f, Symbol::kEnd, VK_END},
    {kPrefixed | 0x50, Symbol::kDown, VK_DOWN},
    {kPrefixed | 0x51, Symbol::kPageDown, VK_NEXT},
    {kPrefixed | 0x52, Symbol::kInsert, VK_INSERT},
    {kPrefixed | 0x53, Symbol::kDelete, VK_DELETE},
    {kVirtualKey | VK_CLEAR, Symbol::kClear, VK_CLEAR},
    {kVirtualKey | VK_PAUSE, Symbol::kPause, VK_PAUSE},
    {kVirtualKey | VK_HELP, Symbol::kHelp, VK_HELP},
};

// The keys of the main block that can give characters; the last three are on European, Brazilian
// and Japanese keyboards.
constexpr Keycode kFirstCharacterKey = 0x02;
constexpr Keycode kLastCharacterKey = 0x35;
constexpr std::array<Keycode, 4> kMoreCharacterKeys{0x39, 0x56, 0x73, 0x7d};

constexpr ModifierMask kThirdLevelMask = kControlMask | kAltMask;

// The symbol that a key gives with these modifiers in the layout. Dead keys give none.
Symbol CharacterOf(UINT virtualKey, Keycode code, ModifierMask modifiers, HKL layout) {
    // Leaves the keyboard's state of dead keys alone, where the system knows this flag.
    constexpr UINT kLeaveStateAlone = 0x4;
    constexpr BYTE kHeld = 0x80;
    std::array<BYTE, 256> state{};
    if ((modifiers & kShiftMask) != 0) {
        state[VK_SHIFT] = state[VK_LSHIFT] = kHeld;
    }
    if ((modifiers & kControlMask) != 0) {
        state[VK_CONTROL] = state[VK_LCONTROL] = kHeld;
    }
    if ((modifiers & kAltMask) != 0) {
        state[VK_MENU] = state[VK_RMENU] = kHeld;
    }
    if ((modifiers & kCapsLockMask) != 0) {
        state[VK_CAPITAL] = 1;
    }
    std::array<wchar_t, 8> text{};
    const int length = ToUnicodeEx(virtualKey, code, state.data(), text.data(),
                                   static_cast<int>(text.size()), kLeaveStateAlone, layout);
    if (length < 0) {
        std::array<wchar_t, 8> flushed{};
        const std::array<BYTE, 256> nothingHeld{};
        ToUnicodeEx(VK_SPACE, 0x39, nothingHeld.data(), flushed.data(),
                    static_cast<int>(flushed.size()), kLeaveStateAlone, layout);
    }
    const bool isCharacter =
        length == 1 && text[0] >= L' ' && text[0] != 0x7f && !IsSurrogate(text[0]);
    return isCharacter ? CharacterSymbol(text[0]) : Symbol::kNothing;
}

// Virtual keys of digits and letters are these in ASCII, in layouts of other scripts too.
Symbol CapOf(UINT virtualKey) {
    if (virtualKey >= 'A' && virtualKey <= 'Z') {
        return CharacterSymbol(static_cast<char32_t>(virtualKey - 'A' + 'a'));
    }
    return virtualKey >= '0' && virtualKey <= '9'
               ? CharacterSymbol(static_cast<char32_t>(virtualKey))
               : Symbol::kNothing;
}

// Nothing if the key gives no character at all.
Key CharacterKey(Keycode code, HKL layout) {
    Key key;
    key.code = code;
    const UINT virtualKey = VirtualKeyOf(code, layout);
    if (virtualKey == 0) {
        return key;
    }
    key.cap = CapOf(virtualKey);
    std::array<Symbol, 16> symbols{};
    for (unsigned mask = 0; mask < symbols.size(); ++mask) {
        symbols[mask] = CharacterOf(virtualKey, code, static_cast<ModifierMask>(mask), layout);
    }
    const auto differs = [&symbols](unsigned without, unsigned with) {
        return symbols[with] != Symbol::kNothing && symbols[with] != symbols[without];
    };
    const bool third =
        differs(0, kThirdLevelMask) || differs(kShiftMask, kThirdLevelMask | kShiftMask);
    const bool caps = differs(0, kCapsLockMask) || differs(kShiftMask, kCapsLockMask | kShiftMask);
    key.relevant = static_cast<ModifierMask>(kShiftMask | (third ? kThirdLevelMask : 0) |
                                             (caps ? kCapsLockMask : 0));
    bool any = false;
    for (unsigned mask = 0; mask < symbols.size(); ++mask) {
        const unsigned level = mask & kThirdLevelMask;
        const bool whole = level == 0 || level == kThirdLevelMask;
        if (whole && (mask & ~unsigned{key.relevant}) == 0) {
            key.levels.push_back({static_cast<ModifierMask>(mask), symbols[mask]});
            any = any || symbols[mask] != Symbol::kNothing;
        }
    }
    if (!any) {
        key.levels.clear();
    }
    return key;
}

}  // namespace

BYTE VirtualKeyOf(Keycode code, HKL layout) {
    if (code >= kFirstSpare) {
        return 0;
    }
    for (const HoldKey& key : kHoldKeys) {
        if (key.code == code) {
            return key.virtualKey;
        }
    }
    for (const NamedKey& key : kNamedKeys) {
        if (key.code == code) {
            return key.virtualKey;
        }
    }
    return static_cast<BYTE>(MapVirtualKeyExW(code, MAPVK_VSC_TO_VK, layout));
}

Keymap ReadWindowsKeymap(HKL layout) {
    Keymap keymap;
    for (const NamedKey& named : kNamedKeys) {
        keymap.keys.push_back({named.code, 0, {{0, named.symbol}}});
    }
    const auto isTaken = [&keymap](Keycode code) {
        return std::ranges::find(keymap.keys, code, &Key::code) != keymap.keys.end() ||
               std::ranges::find(kHoldKeys, code, &HoldKey::code) != std::end(kHoldKeys);
    };
    const auto add = [&](Keycode code) {
        if (!isTaken(code)) {
            Key key = CharacterKey(code, layout);
            if (!key.levels.empty()) {
                keymap.keys.push_back(std::move(key));
            }
        }
    };
    for (Keycode code = kFirstCharacterKey; code <= kLastCharacterKey; ++code) {
        add(code);
    }
    std::ranges::for_each(kMoreCharacterKeys, add);
    std::ranges::sort(keymap.keys, {}, &Key::code);
    for (const HoldKey& key : kHoldKeys) {
        keymap.modifierKeys.push_back({key.code, key.modifier});
    }
    keymap.shift = kShiftMask;
    keymap.control = kControlMask;
    keymap.alt = kAltMask;
    keymap.capsLock = kCapsLockMask;
    keymap.numLock = kNumLockMask;
    for (Keycode code = kFirstSpare; code <= kLastSpare; ++code) {
        keymap.spares.push_back(code);
    }
    return keymap;
}

}  // namespace spellwick
