// The settings store as the program uses it: what a write could not save is kept by the journal,
// read as if it were saved, and goes out with the next write that works.
#pragma once

#include <chrono>
#include <set>

#include "platform/clock.h"
#include "store/journal.h"

namespace spellwick {

class JournalledStore final : public SettingsStore {
  public:
    // All outlive it.
    JournalledStore(SettingsStore& store, Journal& journal, const Clock& clock)
        : m_store(store), m_journal(journal), m_clock(clock) {}

    std::optional<std::string> Read(std::string_view section, std::string_view key) const override;
    SectionValues ReadSection(std::string_view section) const override;
    StoreResult Apply(const std::vector<SettingChange>& changes) override;
    StoreResult RemoveSection(std::string_view section) override;
    std::vector<std::string> Sections() const override;
    StoreResult KeepCopy(std::chrono::system_clock::time_point now) override;

    // Takes in what an earlier run left; it is due from now on.
    std::vector<Journal::Found> Recover();

    // Writes what is due: what an earlier run left, and what a failed save could not write.
    StoreResult SaveDue() { return Apply({}); }

    // Writes what comes from outside the program. What was unsaved of its sections is forgotten; of
    // the player in memory nothing is noted until it is loaded anew.
    StoreResult Replace(const SettingChanges& changes);

    // Copies the store before the next write, which fails if that cannot be done.
    void CopyBeforeWriting() { m_copyFirst = true; }

  private:
    StoreResult Write(const SettingChanges& changes);

    SettingsStore& m_store;
    Journal& m_journal;
    const Clock& m_clock;
    std::set<std::string, std::less<>> m_due;  // sections
    bool m_copyFirst = false;
};

}  // namespace spellwick
