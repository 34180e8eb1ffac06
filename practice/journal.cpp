#include "practice/journal.h"

namespace spellwick::practice {
namespace {

void RemoveLastCharacter(std::string& text) {
    while (!text.empty()) {
        const auto last = static_cast<unsigned char>(text.back());
        text.pop_back();
        if ((last & 0xC0U) != 0x80U) {
            return;
        }
    }
}

}  // namespace

std::string WrittenEntry(const JournalEntry& entry) {
    switch (entry.kind) {
        case JournalEntry::Kind::kKey:
            return "key " + entry.text;
        case JournalEntry::Kind::kCast:
            return "cast " + entry.text;
        case JournalEntry::Kind::kSay:
            return "say " + entry.text;
        case JournalEntry::Kind::kTitle:
            return "title " + entry.text;
    }
    return {};
}

std::vector<JournalEntry> SpeechLine::PressEnter() {
    const bool opens = m_rules.emptyEnter == EmptyEnter::kOpensChat;
    if (opens && (m_text.empty() || !m_open)) {
        m_open = !m_open;
        return {{JournalEntry::Kind::kKey, "Enter"}};
    }
    if (m_text.empty() && m_rules.emptyEnter == EmptyEnter::kKey) {
        return {{JournalEntry::Kind::kKey, "Enter"}};
    }
    m_open = false;
    return {{JournalEntry::Kind::kSay, std::exchange(m_text, {})}};
}

std::vector<JournalEntry> SpeechLine::Press(const KeyPress& press) {
    if (press.key.empty()) {
        return {};
    }
    const bool plain = press.modifiers == Modifiers{};
    if (plain && press.key == "Enter") {
        return PressEnter();
    }
    if (plain && press.key == "Backspace" && !m_text.empty()) {
        RemoveLastCharacter(m_text);
        return {};
    }
    const bool opens = m_rules.emptyEnter == EmptyEnter::kOpensChat;
    if (!press.modifiers.ctrl && !press.modifiers.alt && !press.text.empty() &&
        (!opens || m_open)) {
        m_text += press.text;
        return {};
    }
    std::vector<JournalEntry> entries{
        {JournalEntry::Kind::kKey, ChordName(press.modifiers, press.key)}};
    const std::string spell = m_open ? std::string() : m_rules.spellOf(press.modifiers, press.key);
    if (!spell.empty()) {
        entries.push_back({JournalEntry::Kind::kCast, spell});
    }
    return entries;
}

}  // namespace spellwick::practice
