// The lines of the recovery journal: one for each setting that was changed and not saved, each with
// a sum over it, below a first line that names form and version.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace spellwick {

struct JournalEntry {
    std::int64_t time = 0;  // seconds since 1970
    std::string section;
    std::string key;
    std::string value;

    bool operator==(const JournalEntry&) const = default;
};

// The first line, with its line feed.
inline constexpr std::string_view kJournalHead = "spellwick journal 1\n";

// One line with its line feed, whatever the texts hold.
std::string JournalLine(const JournalEntry& entry);

// The entries up to the end, or up to the first line that is cut short, garbled or of another form.
// None from a file with another first line.
std::vector<JournalEntry> ReadJournal(std::string_view bytes);

}  // namespace spellwick
