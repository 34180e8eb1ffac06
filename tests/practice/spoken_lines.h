// What the practice game writes down of keys pressed.
#pragma once

#include <string>
#include <vector>

#include "practice/journal.h"

namespace spellwick::practice {

inline std::vector<std::string> Written(SpeechLine& line, const std::vector<KeyPress>& presses) {
    std::vector<std::string> lines;
    for (const KeyPress& press : presses) {
        for (const JournalEntry& entry : line.Press(press)) {
            lines.push_back(WrittenEntry(entry));
        }
    }
    return lines;
}

}  // namespace spellwick::practice
