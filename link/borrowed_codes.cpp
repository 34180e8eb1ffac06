#include "link/borrowed_codes.h"

#include <algorithm>

namespace spellwick {

namespace {

bool Gives(const Keymap& keymap, const SpareBinding& binding) {
    const auto key = std::ranges::find(keymap.keys, binding.code, &Key::code);
    return key != keymap.keys.end() && SymbolAt(*key, 0) == binding.symbol;
}

}  // namespace

std::vector<SpareBinding> BorrowedCodes::Lent(const Keymap& keymap) {
    std::erase_if(m_codes, [&](const Code& code) { return !Gives(keymap, code.binding); });
    std::ranges::stable_sort(m_codes, {}, &Code::lastUse);
    std::vector<SpareBinding> lent;
    lent.reserve(m_codes.size());
    for (const Code& code : m_codes) {
        lent.push_back(code.binding);
    }
    return lent;
}

bool BorrowedCodes::Bind(std::span<const SpareBinding> bindings) {
    for (const SpareBinding& binding : bindings) {
        std::erase_if(m_codes, [&](const Code& code) { return code.binding.code == binding.code; });
        m_codes.push_back({.binding = binding, .lastUse = m_keyboard.Now()});
    }
    return m_keyboard.Bind(bindings);
}

void BorrowedCodes::NoteUse(Keycode code) {
    for (Code& borrowed : m_codes) {
        if (borrowed.binding.code == code) {
            borrowed.lastUse = m_keyboard.Now();
            borrowed.isRead = false;
        }
    }
}

void BorrowedCodes::NoteAllRead() {
    for (Code& code : m_codes) {
        code.isRead = true;
    }
}

std::chrono::milliseconds BorrowedCodes::Rest(Keycode code) const {
    const auto found =
        std::ranges::find(m_codes, code, [](const Code& each) { return each.binding.code; });
    return found == m_codes.end() ? std::chrono::milliseconds(0) : Rest(*found);
}

std::chrono::milliseconds BorrowedCodes::LongestRest() const {
    std::chrono::milliseconds longest(0);
    for (const Code& code : m_codes) {
        longest = std::max(longest, Rest(code));
    }
    return longest;
}

std::chrono::milliseconds BorrowedCodes::Rest(const Code& code) const {
    const auto rest =
        std::chrono::ceil<std::chrono::milliseconds>(code.lastUse + m_grace - m_keyboard.Now());
    return code.isRead ? std::chrono::milliseconds(0) : std::max(rest, {});
}

// Those that are unused since then.
void BorrowedCodes::GiveBack(std::chrono::steady_clock::time_point lastUse) {
    const auto isDue = [lastUse](const Code& code) { return code.lastUse <= lastUse; };
    std::vector<SpareBinding> giveBack;
    for (const Code& code : m_codes) {
        if (isDue(code)) {
            giveBack.push_back(code.binding);
        }
    }
    if (giveBack.empty()) {
        return;
    }
    // Fails only with the connection; the next send reports that.
    static_cast<void>(m_keyboard.Unbind(giveBack));
    std::erase_if(m_codes, isDue);
}

}  // namespace spellwick
