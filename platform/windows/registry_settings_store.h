// The settings store in the user's part of the registry: a registry key for each section, a text
// value for each key. Names of values are not case-sensitive; names of sections are.
#pragma once

#include <functional>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/settings_store.h"
#include "platform/windows/registry_key.h"

namespace spellwick {

inline constexpr const wchar_t* kSettingsKey = L"Software\\Spellwick";

class RegistrySettingsStore final : public SettingsStore {
  public:
    // Brings what was written below a key onto the disk; gives ERROR_SUCCESS or the system's error.
    using Flush = std::function<LONG(HKEY)>;

    // A store under this key of HKEY_CURRENT_USER, which need not exist. Every call reads the
    // current registry.
    explicit RegistrySettingsStore(std::wstring root = kSettingsKey, Flush flush = RegFlushKey)
        : m_root(std::move(root)), m_flush(std::move(flush)) {}

    std::optional<std::string> Read(std::string_view section, std::string_view key) const override;
    SectionValues ReadSection(std::string_view section) const override;
    // On the disk when it returns, as a file's transaction is. After a failure, what was already
    // written is restored. If the process is killed meanwhile, each value is either old or new.
    StoreResult Apply(const std::vector<SettingChange>& changes) override;
    StoreResult RemoveSection(std::string_view section) override;
    std::vector<std::string> Sections() const override;
    // Under a key beside the store's: "Software\\Spellwick copies\\20011231-235959".
    StoreResult KeepCopy(std::chrono::system_clock::time_point now) override;

  private:
    // An open section of a batch, and its values before.
    struct Opened {
        std::wstring keyName;
        bool isNew = false;
        RegistryKey key;
        std::set<std::wstring> names;  // its values before
        // What was changed, in this order.
        std::vector<std::pair<std::wstring, std::optional<std::wstring>>> before;
    };
    using Batch = std::map<std::string, Opened, std::less<>>;

    RegistryKey Root(REGSAM access) const;
    std::optional<std::wstring> FindKeyName(const RegistryKey& root,
                                            const std::wstring& section) const;
    RegistryKey OpenSection(std::string_view section) const;
    static LONG OpenToWrite(const RegistryKey& root, const std::wstring& section,
                            const std::optional<std::wstring>& keyName, Opened& opened);
    static LONG Change(Opened& opened, const SettingChange& change);
    static void TakeBack(const RegistryKey& root, Batch& batch);
    static void DropEmpty(const RegistryKey& root, Batch& batch);
    LONG FlushIfChanged(const RegistryKey& root, const Batch& batch) const;

    std::wstring m_root;
    Flush m_flush;
};

}  // namespace spellwick
