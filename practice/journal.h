// Turns the keys that reach the practice game into its journal: keys, spells cast, lines spoken.
#pragma once

#include <string>
#include <vector>

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

// Collects typed characters into a line that is spoken on Enter. A key with Ctrl or Alt held, or
// one that types nothing, is an entry of its own; a macro key adds the spell that it casts.
class SpeechLine {
  public:
    std::vector<JournalEntry> Press(const KeyPress& press);
    void Clear() { m_text.clear(); }
    // What has been typed since the last Enter, UTF-8.
    const std::string& Text() const { return m_text; }

  private:
    std::string m_text;
};

}  // namespace spellwick::practice
