#include "tests/support/memory_settings_store.h"

namespace spellwick {

std::optional<std::string> MemorySettingsStore::Read(std::string_view section,
                                                     std::string_view key) const {
    const auto values = m_sections.find(section);
    if (values == m_sections.end()) {
        return std::nullopt;
    }
    const auto found = values->second.find(key);
    return found == values->second.end() ? std::nullopt : std::optional(found->second);
}

SectionValues MemorySettingsStore::ReadSection(std::string_view section) const {
    m_sectionsRead.emplace_back(section);
    const auto values = m_sections.find(section);
    return values == m_sections.end() ? SectionValues{} : values->second;
}

StoreResult MemorySettingsStore::Apply(const std::vector<SettingChange>& changes) {
    if (!m_trouble.empty()) {
        return {false, m_trouble};
    }
    for (const SettingChange& change : changes) {
        SectionValues& values = m_sections[change.section];
        if (change.value) {
            values[change.key] = *change.value;
        } else {
            values.erase(change.key);
        }
        if (values.empty()) {
            m_sections.erase(change.section);
        }
    }
    m_batches.push_back(changes);
    return {};
}

StoreResult MemorySettingsStore::RemoveSection(std::string_view section) {
    if (!m_trouble.empty()) {
        return {false, m_trouble};
    }
    const auto values = m_sections.find(section);
    if (values != m_sections.end()) {
        m_sections.erase(values);
    }
    return {};
}

StoreResult MemorySettingsStore::KeepCopy(std::chrono::system_clock::time_point /*now*/) {
    if (!m_copyTrouble.empty()) {
        return {false, m_copyTrouble};
    }
    m_copies.push_back(m_sections);
    return {};
}

std::vector<std::string> MemorySettingsStore::Sections() const {
    std::vector<std::string> names;
    for (const auto& [section, values] : m_sections) {
        names.push_back(section);
    }
    return names;
}

void MemorySettingsStore::Put(std::string_view section, std::string_view key,
                              std::string_view value) {
    m_sections[std::string(section)][std::string(key)] = value;
}

}  // namespace spellwick
