#include "tests/support/key_witness.h"

#include <array>
#include <regex>

#include "text/utf8.h"

namespace spellwick::testing_support {

namespace {

constexpr unsigned kShift = 1;
constexpr unsigned kLock = 2;
constexpr unsigned kControl = 4;
constexpr unsigned kAlt = 8;

bool IsModifier(unsigned long keysym) {
    return (keysym >= 0xffe1 && keysym <= 0xffee) || keysym == 0xfe03 || keysym == 0xfe11;
}

// The character of a keysym that is Latin 1, in the Unicode range, or the euro sign; else none.
std::string CharacterOf(unsigned long keysym) {
    std::string text;
    if ((keysym >= 0x20 && keysym < 0x7f) || (keysym >= 0xa0 && keysym < 0x100) ||
        keysym == 0x20ac) {
        AppendUtf8(text, static_cast<char32_t>(keysym));
    } else if (keysym > 0x1000100 && keysym <= 0x110ffff) {
        AppendUtf8(text, static_cast<char32_t>(keysym - 0x1000000));
    }
    return text;
}

// One event as xev prints it.
const std::regex& Event() {
    static const std::regex kEvent(
        R"(Key(Press|Release) event[^\n]*\n[^\n]*\n\s*state 0x([0-9a-f]+), keycode (\d+) )"
        R"(\(keysym 0x([0-9a-f]+), ([^)]*)\), same_screen)");
    return kEvent;
}

}  // namespace

std::string KeyWitness::WhatIsMissing() {
    std::string missing = XSession::WhatIsMissing();
    if (!HasProgram("xev")) {
        missing += (missing.empty() ? "not installed: " : ", ") + std::string("xev");
    }
    return missing;
}

std::unique_ptr<KeyWitness> KeyWitness::Start(const XSession& session, const std::string& title,
                                              const std::string& windowClass) {
    std::unique_ptr<KeyWitness> witness(new KeyWitness);
    witness->m_program = session.Spawn({"xev", "-name", title, "-event", "keyboard"});
    if (!witness->m_program) {
        return nullptr;
    }
    witness->m_window = session.WaitForWindow(title);
    if (witness->m_window == 0) {
        return nullptr;
    }
    if (!windowClass.empty()) {
        session.SetWindowClass(witness->m_window, "xev", windowClass);
    }
    return witness;
}

std::vector<WitnessedKey> KeyWitness::Keys() const {
    std::vector<WitnessedKey> keys;
    const std::string output = Output();
    for (std::sregex_iterator event(output.begin(), output.end(), Event()), end; event != end;
         ++event) {
        keys.push_back({(*event)[1] == "Press",
                        static_cast<unsigned>(std::stoul((*event)[2], nullptr, 16)),
                        static_cast<unsigned>(std::stoul((*event)[3])),
                        std::stoul((*event)[4], nullptr, 16), (*event)[5]});
    }
    return keys;
}

void KeyWitness::ForgetKeys() {
    const std::string output = Output();
    std::size_t read = 0;
    for (std::sregex_iterator event(output.begin(), output.end(), Event()), end; event != end;
         ++event) {
        read = static_cast<std::size_t>(event->position() + event->length());
    }
    m_forgotten += read;
}

std::string KeyWitness::Output() const {
    return m_program ? m_program->Output().substr(m_forgotten) : std::string();
}

std::string KeyWitness::Typed() const {
    std::string typed;
    for (const WitnessedKey& key : Keys()) {
        if (!key.down || IsModifier(key.keysym)) {
            continue;
        }
        std::string marks;
        for (const auto& [bit, name] :
             {std::pair(kLock, "Lock+"), std::pair(kControl, "Ctrl+"), std::pair(kAlt, "Alt+")}) {
            marks += (key.state & bit) != 0 ? name : "";
        }
        const std::string character = CharacterOf(key.keysym);
        const std::string what = character.empty() ? key.name : character;
        if (marks.empty() && !character.empty()) {
            typed += character;
        } else {
            marks += (key.state & kShift) != 0 ? "Shift+" : "";
            typed.append("<").append(marks).append(what).append(">");
        }
    }
    return typed;
}

std::string KeyWitness::WaitForTyped(const std::string& expected) const {
    WaitUntil([&] { return Typed() == expected && Unmirrored().empty(); }, std::chrono::seconds(3));
    return Typed();
}

std::string KeyWitness::Unmirrored() const {
    std::vector<unsigned> down;
    for (const WitnessedKey& key : Keys()) {
        if (key.down) {
            down.push_back(key.keycode);
        } else if (down.empty() || down.back() != key.keycode) {
            return "released out of turn: " + key.name;
        } else {
            down.pop_back();
        }
    }
    return down.empty() ? std::string() : "still down: code " + std::to_string(down.back());
}

}  // namespace spellwick::testing_support
