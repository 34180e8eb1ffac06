// The settings store in memory, for tests: keeps every batch that was applied, and fails when told.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "platform/settings_store.h"

namespace spellwick {

class MemorySettingsStore : public SettingsStore {
  public:
    std::optional<std::string> Read(std::string_view section, std::string_view key) const override;
    SectionValues ReadSection(std::string_view section) const override;
    StoreResult Apply(const std::vector<SettingChange>& changes) override;
    StoreResult RemoveSection(std::string_view section) override;
    std::vector<std::string> Sections() const override;

    StoreResult KeepCopy(std::chrono::system_clock::time_point now) override;

    // Puts a value in place without a batch.
    void Put(std::string_view section, std::string_view key, std::string_view value);

    // Every write from now on fails with this sentence; an empty one ends that.
    void FailWith(std::string trouble) { m_trouble = std::move(trouble); }

    // Batches that were applied, oldest first.
    const std::vector<std::vector<SettingChange>>& Batches() const { return m_batches; }
    void ForgetBatches() { m_batches.clear(); }

    // What the copies held, oldest first.
    const std::vector<std::map<std::string, SectionValues, std::less<>>>& Copies() const {
        return m_copies;
    }
    // Every copy from now on fails with this sentence; an empty one ends that.
    void FailCopiesWith(std::string trouble) { m_copyTrouble = std::move(trouble); }

    // Sections read at once, oldest first.
    const std::vector<std::string>& SectionsRead() const { return m_sectionsRead; }

  private:
    std::map<std::string, SectionValues, std::less<>> m_sections;
    std::vector<std::vector<SettingChange>> m_batches;
    mutable std::vector<std::string> m_sectionsRead;
    std::string m_trouble;
    std::vector<std::map<std::string, SectionValues, std::less<>>> m_copies;
    std::string m_copyTrouble;
};

}  // namespace spellwick
