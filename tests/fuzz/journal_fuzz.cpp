// The recovery journal: any bytes give whole entries, each of which is written as the bytes it was
// read from; what the load of a player would not take never gets to the store.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "store/journal.h"
#include "store/journal_lines.h"
#include "store/journalled_store.h"
#include "store/player_values.h"
#include "store/section_name.h"
#include "tests/support/memory_journal_file.h"
#include "tests/support/memory_settings_store.h"
#include "tests/support/set_clock.h"

namespace {

using namespace spellwick;

void Require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) {
        return 0;
    }
    const std::string input(data + 1, data + size);
    std::string written(kJournalHead);
    if (data[0] % 2 == 0) {
        // As a file: the entries are the file's own lines up to the first fault.
        for (const JournalEntry& entry : ReadJournal(input)) {
            written += JournalLine(entry);
        }
        Require(written == kJournalHead || input.starts_with(written));
        written = input;
    } else {
        // As texts, which are cut out of the input and come back.
        JournalEntry entry{.time = data[0], .section = {}, .key = {}, .value = {}};
        std::string* const fields[] = {&entry.section, &entry.key, &entry.value};
        std::size_t field = 0;
        for (const char byte : input) {
            if (byte == '|' && field < 2) {
                ++field;
            } else {
                *fields[field] += byte;
            }
        }
        written += JournalLine(entry);
        const auto entries = ReadJournal(written);
        Require(entries.size() == 1 && entries.front() == entry);
    }
    MemoryJournalFile file;
    file.content = written;
    const SetClock clock;
    Journal journal(&file, clock);
    MemorySettingsStore store;
    JournalledStore saving(store, journal, clock);
    const auto found = saving.Recover();
    Require(saving.SaveDue().ok);
    for (const auto& batch : store.Batches()) {
        for (const SettingChange& change : batch) {
            Require(change.section != kGlobalSection && !change.section.empty());
            Require(IsPlayerValue(change.key, change.value.value_or("")));
        }
    }
    Require(found.empty() == store.Batches().empty());
    Require(found.empty() || file.content.empty());
    return 0;
}
