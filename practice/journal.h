// Turns the keys that reach the practice game into its journal: keys, spells cast, lines spoken.
#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "practice/clients.h"
#include "practice/macro_table.h"

namespace spellwick::practice {

// One key going down, as a game sees it.
struct KeyPress {
    Modifiers modifiers;
    // The name on the key's cap ("1", "Q", ";", "F5", "Enter", "Backspace"); empty for a modifier
    // key alone.
    std::string key;
    // The text that the key types, UTF-8; empty for a key that types none.
    std::string text;
};

struct JournalEntry {
    enum class Kind { kKey, kCast, kSay, kTitle };
    Kind kind;
    std::string text;

    bool operator==(const JournalEntry&) const = default;
};

// One line of the written journal: "key Alt+1", "cast Clumsy", "say Kal Ort Por".
std::string WrittenEntry(const JournalEntry& entry);

// What a client does with its keys.
struct KeyRules {
    // The spell of a chord, empty for none.
    std::function<std::string(Modifiers, const std::string&)> spellOf = [](Modifiers modifiers,
                                                                           const std::string& key) {
        return std::string(SpellOfChord(modifiers, key));
    };
    EmptyEnter emptyEnter = EmptyEnter::kKey;
};

// Collects typed characters into a line that is spoken on Enter. A key with Ctrl or Alt held, or
// one that types nothing, is an entry of its own; a macro key adds the spell that it casts. Where
// Enter opens the line, nothing is typed before, and macro keys cast nothing until it is closed.
class SpeechLine {
  public:
    explicit SpeechLine(KeyRules rules = {}) : m_rules(std::move(rules)) {}

    std::vector<JournalEntry> Press(const KeyPress& press);
    void Clear() {
        m_text.clear();
        m_open = false;
    }
    // What has been typed since the last Enter, UTF-8.
    const std::string& Text() const { return m_text; }

  private:
    std::vector<JournalEntry> PressEnter();

    KeyRules m_rules;
    std::string m_text;
    bool m_open = false;  // where Enter opens the line
};

}  // namespace spellwick::practice
