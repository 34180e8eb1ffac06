#include "platform/windows/windows_keyboard.h"

#include <algorithm>
#include <thread>
#include <vector>

#include <timeapi.h>

#include "platform/windows/wide_text.h"
#include "text/utf8.h"

namespace spellwick {

namespace {

bool IsHeld(BYTE virtualKey) {
    return virtualKey != 0 && GetAsyncKeyState(virtualKey) < 0;
}

bool IsLocked(BYTE virtualKey) {
    return (static_cast<unsigned>(GetKeyState(virtualKey)) & 1U) != 0;
}

HKL LayoutInFront() {
    HWND front = GetForegroundWindow();
    return GetKeyboardLayout(front != nullptr ? GetWindowThreadProcessId(front, nullptr) : 0);
}

INPUT KeyInput(WORD virtualKey, WORD scan, DWORD flags) {
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = virtualKey;
    input.ki.wScan = scan;
    input.ki.dwFlags = flags;
    return input;
}

}  // namespace

std::optional<Keymap> WindowsKeyboard::ReadKeymap() {
    m_layout = LayoutInFront();
    Keymap keymap = ReadWindowsKeymap(m_layout);
    m_locked = static_cast<ModifierMask>((IsLocked(VK_CAPITAL) ? kCapsLockMask : 0) |
                                         (IsLocked(VK_NUMLOCK) ? kNumLockMask : 0));
    keymap.locked = m_locked;
    for (const HoldKey& key : kHoldKeys) {
        if (IsHeld(key.virtualKey)) {
            keymap.down.push_back(key.code);
        }
    }
    for (const Key& key : keymap.keys) {
        if (IsHeld(VirtualKeyOf(key.code, m_layout))) {
            keymap.down.push_back(key.code);
        }
    }
    return keymap;
}

bool WindowsKeyboard::Bind(std::span<const SpareBinding> bindings) {
    for (const SpareBinding& binding : bindings) {
        m_bound[binding.code] = binding.symbol;
    }
    return true;
}

bool WindowsKeyboard::Unbind(std::span<const SpareBinding> bindings) {
    for (const SpareBinding& binding : bindings) {
        const auto bound = m_bound.find(binding.code);
        if (bound != m_bound.end() && bound->second == binding.symbol) {
            m_bound.erase(bound);
        }
    }
    return true;
}

bool WindowsKeyboard::Send(Keycode code, DWORD flags) {
    std::vector<INPUT> inputs;
    if (code >= kFirstSpare) {
        const auto bound = m_bound.find(code);
        if (bound == m_bound.end()) {
            return true;
        }
        std::string character;
        AppendUtf8(character, static_cast<char32_t>(bound->second));
        for (const wchar_t unit : WideFromUtf8(character)) {
            inputs.push_back(KeyInput(0, unit, flags | KEYEVENTF_UNICODE));
        }
    } else {
        // Windows derives the virtual key from the scan code; Wine needs it.
        const DWORD byScan = (code & kVirtualKey) == 0 ? KEYEVENTF_SCANCODE : 0;
        const DWORD prefixed = (code & kPrefixed) != 0 ? KEYEVENTF_EXTENDEDKEY : 0;
        inputs.push_back(KeyInput(VirtualKeyOf(code, m_layout), byScan != 0 ? code & 0xff : 0,
                                  flags | byScan | prefixed));
    }
    const auto count = static_cast<UINT>(inputs.size());
    return SendInput(count, inputs.data(), sizeof(INPUT)) == count;
}

bool WindowsKeyboard::SetLocks(ModifierMask affected, ModifierMask locked) {
    const auto change = static_cast<ModifierMask>((m_locked ^ locked) & affected);
    bool sent = true;
    for (const auto& [mask, code] :
         {std::pair(kCapsLockMask, kCapsLockCode), std::pair(kNumLockMask, kNumLockCode)}) {
        if ((change & mask) != 0) {
            const bool pressed = Press(code);
            sent = Release(code) && pressed && sent;
            m_locked ^= mask;
        }
    }
    return sent;
}

std::optional<ModifierMask> WindowsKeyboard::HeldModifiers() {
    unsigned held = 0;
    for (const HoldKey& key : kHoldKeys) {
        if (IsHeld(key.virtualKey)) {
            held |= key.modifier;
        }
    }
    return static_cast<ModifierMask>(held);
}

void WindowsKeyboard::Pause(std::chrono::milliseconds time) {
    // Without this the shortest pause is a tick of 16 ms, which makes a text four times as long.
    constexpr UINT kTick = 1;
    timeBeginPeriod(kTick);
    std::this_thread::sleep_for(time);
    timeEndPeriod(kTick);
}

std::chrono::steady_clock::time_point WindowsKeyboard::Now() const {
    return std::chrono::steady_clock::now();
}

}  // namespace spellwick
