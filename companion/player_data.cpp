#include "companion/player_data.h"

#include <memory>

#include "link/client_watch.h"
#include "store/catalogue.h"
#include "store/section_name.h"
#include "store/settings_io.h"

namespace spellwick {

namespace {

// A store that gives what was read from a file and keeps nothing.
class ReadStore final : public SettingsStore {
  public:
    explicit ReadStore(const AllSettings& settings) : m_settings(settings) {}

    std::optional<std::string> Read(std::string_view section, std::string_view key) const override {
        const SectionValues values = ReadSection(section);
        const auto found = values.find(key);
        return found == values.end() ? std::nullopt : std::optional(found->second);
    }
    SectionValues ReadSection(std::string_view section) const override {
        const auto found = m_settings.find(section);
        return found == m_settings.end() ? SectionValues{} : found->second;
    }
    StoreResult Apply(const std::vector<SettingChange>& /*changes*/) override { return {}; }
    StoreResult RemoveSection(std::string_view /*section*/) override { return {}; }
    StoreResult KeepCopy(std::chrono::system_clock::time_point /*now*/) override { return {}; }
    std::vector<std::string> Sections() const override { return {}; }

  private:
    const AllSettings& m_settings;
};

// The first value that no load would take, as a sentence; empty if there is none.
std::string BadValue(const SharedState& state, const AllSettings& settings) {
    const auto scratch = std::make_unique<SharedState>(state);
    ReadStore store(settings);
    SettingsIo io(*scratch, store, [](PlayerPart /*part*/) {});
    std::string section(kGlobalSection);
    try {
        io.LoadGlobalSettings();
        for (const std::string& character : PlayerData::Characters(settings)) {
            section = character;
            io.LoadPlayerSettings(character);
        }
    } catch (const RuntimeFailure&) {
        if (!store.Read(section, io.LastKey())) {
            section = scratch->CurrentPlayerName;  // the first of the characters to be loaded
        }
        return "The value \"" + io.LastKey() + "\" of \"" + section +
               "\" in the file cannot be read. Nothing was changed.";
    }
    return {};
}

}  // namespace

StoreResult PlayerData::Secure() {
    StoreResult saved = m_parts.saveAll();
    return saved.ok ? m_parts.store.KeepCopy(m_parts.clock.Now()) : saved;
}

std::string PlayerData::Export(const std::filesystem::path& file) {
    if (const StoreResult saved = m_parts.saveAll(); !saved.ok) {
        return saved.trouble;
    }
    AllSettings settings;
    for (const std::string& section : m_parts.store.Sections()) {
        settings[section] = m_parts.store.ReadSection(section);
    }
    return m_parts.files.Write(file, settings).trouble;
}

ReadSettings PlayerData::Open(const std::filesystem::path& file) const {
    ReadSettings read = m_parts.files.Read(file);
    if (read.trouble.empty()) {
        read.trouble = BadValue(m_parts.state, read.sections);
    }
    if (!read.trouble.empty()) {
        read.sections.clear();
    }
    return read;
}

std::vector<std::string> PlayerData::Characters(const AllSettings& settings) {
    std::vector<std::string> names;
    for (const auto& [section, values] : settings) {
        if (section != kGlobalSection) {
            names.push_back(PlayerOfSection(section));
        }
    }
    return names;
}

void PlayerData::AddChanges(SettingChanges& changes, const std::string& section,
                            const SectionValues& values) const {
    for (const auto& [key, value] : m_parts.store.ReadSection(section)) {
        if (!values.contains(key)) {
            changes.push_back({section, key, std::nullopt});
        }
    }
    for (const auto& [key, value] : values) {
        changes.push_back({section, key, value});
    }
}

std::string PlayerData::Import(const AllSettings& settings,
                               const std::optional<std::string>& character) {
    if (const StoreResult secured = Secure(); !secured.ok) {
        return secured.trouble;
    }
    SettingChanges changes;
    for (const auto& [section, values] : settings) {
        if (!character || section == SectionOfPlayer(*character)) {
            AddChanges(changes, section, values);
        }
    }
    const StoreResult written = m_parts.store.Replace(changes);
    if (!written.ok) {
        return written.trouble;
    }
    m_parts.reload();
    return {};
}

std::string PlayerData::RemoveCurrent() {
    SharedState& state = m_parts.state;
    const std::string character = state.CurrentPlayerName;
    if (character.empty()) {
        return "There is no character to remove.";
    }
    if (state.ClientWindow != 0 && IsRealServer(state.ServerName) &&
        state.ClientTitle == character) {
        return "This character is in the game. Log it out first.";
    }
    if (const StoreResult secured = Secure(); !secured.ok) {
        return secured.trouble;
    }
    SettingChanges changes;
    AddChanges(changes, SectionOfPlayer(character), {});
    changes.push_back({std::string(kGlobalSection), std::string(kPlayerNameKey), std::string()});
    const StoreResult written = m_parts.store.Replace(changes);
    if (!written.ok) {
        return written.trouble;
    }
    m_parts.reload();
    return {};
}

}  // namespace spellwick
