#include "store/journal.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "store/journal_lines.h"
#include "store/player_values.h"
#include "store/section_name.h"
#include "text/log.h"

namespace spellwick {

namespace {

// At two notes a second, at most four seconds.
constexpr int kNotesUntilSync = 8;

// The file of an evening stays far below this; a text of a million characters that is being typed
// does not.
constexpr std::size_t kRewriteBytes = std::size_t{1024} * 1024;

std::int64_t SecondsOf(const Clock& clock) {
    return std::chrono::system_clock::to_time_t(clock.Now());
}

}  // namespace

std::vector<Journal::Found> Journal::Recover(const SettingsStore& store) {
    std::vector<Found> found;
    if (m_file == nullptr) {
        return found;
    }
    const std::string bytes = m_file->Read();
    m_bytes = bytes.size();
    // What is behind a fault would hide what is appended to it.
    m_inDoubt = !bytes.empty();
    for (JournalEntry& entry : ReadJournal(bytes)) {
        if (entry.section != kGlobalSection && !entry.section.empty() &&
            IsPlayerValue(entry.key, entry.value)) {
            m_unsaved[entry.section][entry.key] = {std::move(entry.value), entry.time};
        }
    }
    for (auto& [section, values] : m_unsaved) {
        const SectionValues saved = store.ReadSection(section);
        std::erase_if(values, [&saved](const auto& value) {
            const auto known = saved.find(value.first);
            return known != saved.end() && known->second == value.second.text;
        });
        if (!values.empty()) {
            const auto last = std::ranges::max_element(
                values, {}, [](const auto& value) { return value.second.time; });
            found.push_back({section, static_cast<i32>(values.size()), last->second.time});
        }
    }
    std::erase_if(m_unsaved, [](const auto& section) { return section.second.empty(); });
    return found;
}

void Journal::Overlay(std::string_view section, SectionValues& values) const {
    const auto unsaved = m_unsaved.find(section);
    if (unsaved == m_unsaved.end()) {
        return;
    }
    for (const auto& [key, value] : unsaved->second) {
        values[key] = value.text;
    }
}

// Whether the list is of the player that is noted. It has the same keys in the same order each
// time.
bool Journal::IsNoted(const SettingChanges& player) const {
    return !player.empty() && player.size() == m_noted.size() &&
           player.front().section == m_noted.front().section;
}

void Journal::Note(SettingChanges player) {
    std::string lines;
    if (IsNoted(player)) {
        for (std::size_t i = 0; i < player.size(); ++i) {
            if (player[i].value == m_noted[i].value) {
                continue;
            }
            const JournalEntry entry{SecondsOf(m_clock), player[i].section, player[i].key,
                                     player[i].value.value_or("")};
            lines += JournalLine(entry);
            m_unsaved[entry.section][entry.key] = {entry.value, entry.time};
        }
        m_noted = std::move(player);
    }
    if (m_file == nullptr) {
        return;
    }
    if (!lines.empty() || (m_inDoubt && !m_unsaved.empty())) {
        Write(lines);
    }
    if (m_unsynced && ++m_notesSinceSync >= kNotesUntilSync) {
        m_notesSinceSync = 0;
        m_unsynced = !m_file->SyncByAndBy();
    }
}

// A file in doubt, or one that has grown long, is written anew.
void Journal::Write(std::string_view lines) {
    if (m_inDoubt || m_bytes + lines.size() > std::max(kRewriteBytes, m_rewriteAt)) {
        WriteAnew();
        return;
    }
    const std::string bytes =
        (m_bytes == 0 ? std::string(kJournalHead) : std::string()) + std::string(lines);
    Settle(m_file->Append(bytes));
    m_bytes += bytes.size();
}

void Journal::WriteAnew() {
    const std::string whole = m_unsaved.empty() ? std::string() : WholeFile();
    Settle(m_file->Replace(whole));
    if (!m_inDoubt) {
        m_bytes = whole.size();
        m_rewriteAt = 2 * whole.size();
    }
}

void Journal::Settle(bool written) {
    m_inDoubt = !written;
    m_unsynced = true;
    if (m_inDoubt && !m_troubleSaid) {
        LogLine("the recovery journal could not be written; it is tried again");
    }
    m_troubleSaid = m_inDoubt;
}

std::string Journal::WholeFile() const {
    std::string whole(kJournalHead);
    for (const auto& [section, values] : m_unsaved) {
        for (const auto& [key, value] : values) {
            whole += JournalLine({value.time, section, key, value.text});
        }
    }
    return whole;
}

SettingChanges Journal::Unsaved() const {
    SettingChanges changes;
    for (const auto& [section, values] : m_unsaved) {
        for (const auto& [key, value] : values) {
            changes.push_back({section, key, value.text});
        }
    }
    return changes;
}

void Journal::Saved(const std::set<std::string, std::less<>>& sections,
                    const SettingChanges& player) {
    const std::size_t before = m_unsaved.size();
    std::erase_if(m_unsaved,
                  [&sections](const auto& unsaved) { return sections.contains(unsaved.first); });
    if (IsNoted(player)) {
        m_noted = player;
    }
    const bool outdated = m_unsaved.size() != before || (m_unsaved.empty() && m_inDoubt);
    if (m_file != nullptr && outdated && (m_bytes > 0 || m_inDoubt)) {
        WriteAnew();
    }
}

void Journal::Sync() {
    m_notesSinceSync = 0;
    if (m_file != nullptr && m_unsynced) {
        m_unsynced = !m_file->Sync();
    }
}

}  // namespace spellwick
