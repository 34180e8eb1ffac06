#include "tests/support/recording_keyboard.h"

#include <algorithm>
#include <utility>

#include "text/utf8.h"

namespace spellwick {

namespace {

std::string NameOf(Symbol symbol) {
    if (IsCharacter(symbol)) {
        std::string text;
        AppendUtf8(text, static_cast<char32_t>(symbol));
        return text;
    }
    if (symbol >= Symbol::kF1 && symbol <= Symbol::kF16) {
        return "F" + std::to_string(static_cast<unsigned>(symbol) -
                                    static_cast<unsigned>(Symbol::kF1) + 1);
    }
    switch (symbol) {
        case Symbol::kNothing:
            return "Nothing";
        case Symbol::kEnter:
            return "Enter";
        case Symbol::kTab:
            return "Tab";
        case Symbol::kEscape:
            return "Escape";
        default:
            return "Key" + std::to_string(static_cast<unsigned>(symbol) -
                                          static_cast<unsigned>(Symbol::kFirstNamed));
    }
}

}  // namespace

RecordingKeyboard::RecordingKeyboard(Keymap map) : keymap(std::move(map)), group(keymap.group) {
    m_down.insert(keymap.down.begin(), keymap.down.end());
}

std::optional<Keymap> RecordingKeyboard::ReadKeymap() {
    if (!Works()) {
        return std::nullopt;
    }
    Keymap now = keymap;
    now.down.assign(m_down.begin(), m_down.end());
    for (const SpareBinding& binding : bound) {
        std::erase(now.spares, binding.code);
        now.keys.push_back({binding.code, 0, {{0, binding.symbol}}});
    }
    std::ranges::sort(now.keys, {}, &Key::code);
    return now;
}

bool RecordingKeyboard::Bind(std::span<const SpareBinding> bindings) {
    ++bindCalls;
    for (const SpareBinding& binding : bindings) {
        std::erase_if(bound, [&](const SpareBinding& old) { return old.code == binding.code; });
        bound.push_back(binding);
        allBindings.emplace_back(
            std::chrono::duration_cast<std::chrono::milliseconds>(m_now.time_since_epoch()),
            binding);
    }
    return Works();
}

bool RecordingKeyboard::Unbind(std::span<const SpareBinding> bindings) {
    for (const SpareBinding& binding : bindings) {
        std::erase(bound, binding);
    }
    return Works();
}

bool RecordingKeyboard::Press(Keycode code) {
    if (!Record(code, true)) {
        return false;
    }
    m_down.insert(code);
    return true;
}

bool RecordingKeyboard::Release(Keycode code) {
    if (!Record(code, false)) {
        return false;
    }
    if (!stuck.contains(code)) {
        m_down.erase(code);
    }
    return true;
}

bool RecordingKeyboard::SetLocks(ModifierMask affected, ModifierMask locked) {
    if (!Works()) {
        return false;
    }
    keymap.locked = static_cast<ModifierMask>((keymap.locked & ~affected) | (locked & affected));
    keymap.latched = static_cast<ModifierMask>(keymap.latched & ~affected);
    return true;
}

bool RecordingKeyboard::SetGroup(std::uint8_t number) {
    if (!Works()) {
        return false;
    }
    group = number;
    return true;
}

void RecordingKeyboard::Pause(std::chrono::milliseconds time) {
    m_now += time;
    if (inPause) {
        inPause();
    }
}

std::optional<ModifierMask> RecordingKeyboard::HeldModifiers() {
    return Works() ? std::optional(Held()) : std::nullopt;
}

std::string RecordingKeyboard::Typed() const {
    std::string typed;
    for (const Event& event : events) {
        if (!event.down || event.symbol == Symbol::kModifier) {
            continue;
        }
        std::string marks;
        if ((event.held & keymap.control) != 0) {
            marks += "Ctrl+";
        }
        if ((event.held & keymap.alt) != 0) {
            marks += "Alt+";
        }
        const bool plain = marks.empty() && IsCharacter(event.symbol);
        if ((event.held & keymap.shift) != 0) {
            marks += "Shift+";
        }
        typed += plain ? NameOf(event.symbol) : "<" + marks + NameOf(event.symbol) + ">";
    }
    return typed;
}

bool RecordingKeyboard::Works() {
    if (!callsUntilLost) {
        return true;
    }
    if (*callsUntilLost == 0) {
        return false;
    }
    --*callsUntilLost;
    return true;
}

ModifierMask RecordingKeyboard::Held() const {
    unsigned held = 0;
    for (const ModifierKey& key : keymap.modifierKeys) {
        if (m_down.contains(key.code)) {
            held |= key.modifier;
        }
    }
    return static_cast<ModifierMask>(held);
}

Symbol RecordingKeyboard::Gives(Keycode code) const {
    const auto binding = std::ranges::find(bound, code, &SpareBinding::code);
    if (binding != bound.end()) {
        return binding->symbol;
    }
    const auto other = std::ranges::find(keymap.otherGroups, group, &KeyGroup::number);
    const std::vector<Key>& keys =
        group == keymap.group || other == keymap.otherGroups.end() ? keymap.keys : other->keys;
    const auto key = std::ranges::find(keys, code, &Key::code);
    return key == keys.end()
               ? Symbol::kNothing
               : SymbolAt(*key, static_cast<ModifierMask>(Held() | keymap.locked | keymap.latched));
}

bool RecordingKeyboard::Record(Keycode code, bool down) {
    if (!Works()) {
        return false;
    }
    events.push_back(
        {code, down, Held(), keymap.locked, Gives(code),
         std::chrono::duration_cast<std::chrono::milliseconds>(m_now.time_since_epoch())});
    return true;
}

}  // namespace spellwick
