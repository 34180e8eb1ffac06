#include "store/journalled_store.h"

#include <algorithm>

#include "store/section_name.h"

namespace spellwick {

namespace {

// The changes of one section, in their order.
SettingChanges OfSection(const SettingChanges& changes, std::string_view section) {
    SettingChanges found;
    std::ranges::copy_if(changes, std::back_inserter(found),
                         [section](const auto& change) { return change.section == section; });
    return found;
}

// The player that a save writes; empty when it writes global keys alone.
std::string PlayerSection(const SettingChanges& changes) {
    const auto player = std::ranges::find_if(
        changes, [](const auto& change) { return change.section != kGlobalSection; });
    return player == changes.end() ? std::string() : player->section;
}

}  // namespace

std::optional<std::string> JournalledStore::Read(std::string_view section,
                                                 std::string_view key) const {
    SectionValues unsaved;
    m_journal.Overlay(section, unsaved);
    const auto found = unsaved.find(key);
    return found != unsaved.end() ? std::optional(found->second) : m_store.Read(section, key);
}

SectionValues JournalledStore::ReadSection(std::string_view section) const {
    SectionValues values = m_store.ReadSection(section);
    m_journal.Overlay(section, values);
    return values;
}

StoreResult JournalledStore::Apply(const std::vector<SettingChange>& changes) {
    const std::string player = PlayerSection(changes);
    SettingChanges all = m_journal.Unsaved();
    // Of the player that is being saved, the changes themselves have it all.
    std::erase_if(all, [&](const SettingChange& change) {
        return !m_due.contains(change.section) || change.section == player;
    });
    all.insert(all.end(), changes.begin(), changes.end());
    if (all.empty()) {
        return {};
    }
    StoreResult result = Write(all);
    const SettingChanges saved = OfSection(changes, player);
    m_due.insert(player);
    if (result.ok) {
        m_journal.Saved(m_due, saved);
        m_due.clear();
    } else {
        m_journal.Note(saved);
    }
    return result;
}

StoreResult JournalledStore::Write(const SettingChanges& changes) {
    if (m_copyFirst) {
        StoreResult copied = m_store.KeepCopy(m_clock.Now());
        if (!copied.ok) {
            return copied;
        }
        m_copyFirst = false;
    }
    return m_store.Apply(changes);
}

StoreResult JournalledStore::Replace(const SettingChanges& changes) {
    StoreResult result = Write(changes);
    if (result.ok) {
        std::set<std::string, std::less<>> sections;
        for (const SettingChange& change : changes) {
            sections.insert(change.section);
            m_due.erase(change.section);
        }
        m_journal.Pause();
        m_journal.Saved(sections, {});
    }
    return result;
}

StoreResult JournalledStore::RemoveSection(std::string_view section) {
    return m_store.RemoveSection(section);
}

std::vector<std::string> JournalledStore::Sections() const {
    return m_store.Sections();
}

StoreResult JournalledStore::KeepCopy(std::chrono::system_clock::time_point now) {
    return m_store.KeepCopy(now);
}

std::vector<Journal::Found> JournalledStore::Recover() {
    std::vector<Journal::Found> found = m_journal.Recover(m_store);
    for (const Journal::Found& player : found) {
        m_due.insert(player.section);
    }
    return found;
}

}  // namespace spellwick
