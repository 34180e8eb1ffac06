#include "platform/windows/registry_settings_store.h"

#include <algorithm>
#include <array>
#include <ctime>
#include <cwchar>
#include <functional>

#include "platform/windows/section_keys.h"
#include "platform/windows/wide_text.h"

namespace spellwick {

namespace {

constexpr std::size_t kKeptCopies = 5;

// The system's text for an error, as the end of a sentence.
std::string Words(LONG error) {
    std::wstring text(512, L'\0');
    const DWORD length = FormatMessageW(
        FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS | FORMAT_MESSAGE_MAX_WIDTH_MASK,
        nullptr, static_cast<DWORD>(error), 0, text.data(), static_cast<DWORD>(text.size()),
        nullptr);
    text.resize(length);
    while (!text.empty() && text.back() == L' ') {
        text.pop_back();
    }
    return text.empty() ? "error " + std::to_string(error) + "." : Utf8FromWide(text);
}

StoreResult Trouble(LONG error) {
    if (error == ERROR_SUCCESS) {
        return {};
    }
    return {false, "The settings could not be written to the registry: " + Words(error)};
}

std::wstring TimeName(std::chrono::system_clock::time_point time) {
    const std::time_t seconds = std::chrono::system_clock::to_time_t(time);
    std::tm parts{};
    localtime_s(&parts, &seconds);
    std::array<wchar_t, 32> text{};
    return {text.data(), std::wcsftime(text.data(), text.size(), L"%Y%m%d-%H%M%S", &parts)};
}

bool SameButForCase(const std::wstring& one, const std::wstring& other) {
    return CompareStringOrdinal(one.data(), static_cast<int>(one.size()), other.data(),
                                static_cast<int>(other.size()), TRUE) == CSTR_EQUAL;
}

std::wstring SectionOf(const RegistryKey& root, const std::wstring& keyName) {
    if (IsNumberedKeyName(keyName)) {
        const RegistryKey key = RegistryKey::Open(root.Get(), keyName, KEY_READ);
        if (const auto name = key.Opened() ? key.ReadText({}) : std::nullopt) {
            return *name;
        }
    }
    return SectionOfKeyName(keyName);
}

// A name for the key of a section that does not have one yet.
std::wstring NewKeyName(const RegistryKey& root, const std::wstring& section) {
    const std::vector<std::wstring> taken = root.Subkeys();
    const auto isTaken = [&taken](const std::wstring& name) {
        return std::ranges::any_of(
            taken, [&name](const std::wstring& other) { return SameButForCase(name, other); });
    };
    const auto plain = KeyNameOfSection(section);
    if (plain && !isTaken(*plain)) {
        return *plain;
    }
    int number = 1;
    while (isTaken(NumberedKeyName(number))) {
        ++number;
    }
    return NumberedKeyName(number);
}

}  // namespace

RegistryKey RegistrySettingsStore::Root(REGSAM access) const {
    return RegistryKey::Open(HKEY_CURRENT_USER, m_root, access);
}

std::optional<std::wstring> RegistrySettingsStore::FindKeyName(const RegistryKey& root,
                                                               const std::wstring& section) const {
    const auto plain = KeyNameOfSection(section);
    std::optional<std::wstring> found;
    for (const std::wstring& name : root.Subkeys()) {
        if (plain && name == *plain) {
            return name;
        }
        if (!found && SectionOf(root, name) == section) {
            found = name;
        }
    }
    return found;
}

RegistryKey RegistrySettingsStore::OpenSection(std::string_view section) const {
    const RegistryKey root = Root(KEY_READ);
    if (!root.Opened()) {
        return {};
    }
    const auto name = FindKeyName(root, WideFromUtf8(section));
    return name ? RegistryKey::Open(root.Get(), *name, KEY_READ) : RegistryKey();
}

std::optional<std::string> RegistrySettingsStore::Read(std::string_view section,
                                                       std::string_view key) const {
    const RegistryKey opened = OpenSection(section);
    const auto text = opened.Opened() ? opened.ReadText(WideFromUtf8(key)) : std::nullopt;
    return text ? std::optional(Utf8FromWide(*text)) : std::nullopt;
}

SectionValues RegistrySettingsStore::ReadSection(std::string_view section) const {
    SectionValues values;
    const RegistryKey opened = OpenSection(section);
    if (opened.Opened()) {
        for (const auto& [name, text] : opened.ReadTexts()) {
            // The default value is not a key: it may hold the section's name.
            if (!name.empty()) {
                values.emplace(Utf8FromWide(name), Utf8FromWide(text));
            }
        }
    }
    return values;
}

LONG RegistrySettingsStore::OpenToWrite(const RegistryKey& root, const std::wstring& section,
                                        const std::optional<std::wstring>& keyName,
                                        Opened& opened) {
    opened.isNew = !keyName;
    opened.keyName = keyName ? *keyName : NewKeyName(root, section);
    LONG error = ERROR_SUCCESS;
    opened.key = RegistryKey::Create(root.Get(), opened.keyName, KEY_READ | KEY_WRITE, error);
    if (error == ERROR_SUCCESS && opened.isNew && IsNumberedKeyName(opened.keyName)) {
        error = opened.key.WriteText({}, section);
    }
    if (error == ERROR_SUCCESS) {
        for (const std::wstring& name : opened.key.ValueNames()) {
            opened.names.insert(name);
        }
    }
    return error;
}

LONG RegistrySettingsStore::Change(Opened& opened, const SettingChange& change) {
    const std::wstring name = WideFromUtf8(change.key);
    if (name.empty()) {
        return ERROR_INVALID_NAME;
    }
    std::optional<std::wstring> before = opened.key.ReadText(name);
    if (!change.value) {
        const LONG error = opened.key.RemoveValue(name);
        if (error == ERROR_FILE_NOT_FOUND) {
            return ERROR_SUCCESS;
        }
        opened.before.emplace_back(name, std::move(before));
        return error;
    }
    const std::wstring text = WideFromUtf8(*change.value);
    if (before == text && opened.names.contains(name)) {
        return ERROR_SUCCESS;
    }
    opened.before.emplace_back(name, std::move(before));
    // A value keeps the spelling that it was created with. One that was made by hand in another
    // case would never be read again.
    if (!opened.names.contains(name)) {
        opened.key.RemoveValue(name);
        opened.names.insert(name);
    }
    return opened.key.WriteText(name, text);
}

void RegistrySettingsStore::TakeBack(const RegistryKey& root, Batch& batch) {
    for (auto& [section, opened] : batch) {
        for (auto change = opened.before.rbegin(); change != opened.before.rend(); ++change) {
            if (change->second) {
                opened.key.WriteText(change->first, *change->second);
            } else {
                opened.key.RemoveValue(change->first);
            }
        }
        if (opened.isNew && opened.key.Opened()) {
            opened.key = {};
            RegDeleteKeyW(root.Get(), opened.keyName.c_str());
        }
    }
}

// A section without keys does not exist.
void RegistrySettingsStore::DropEmpty(const RegistryKey& root, Batch& batch) {
    for (auto& [section, opened] : batch) {
        DWORD values = 0;
        DWORD keys = 0;
        RegQueryInfoKeyW(opened.key.Get(), nullptr, nullptr, nullptr, &keys, nullptr, nullptr,
                         &values, nullptr, nullptr, nullptr, nullptr);
        const DWORD own = opened.key.ReadText({}) ? 1 : 0;
        if (keys == 0 && values == own) {
            opened.key = {};
            RegDeleteKeyW(root.Get(), opened.keyName.c_str());
        }
    }
}

// Left to itself, the system may keep the registry in memory for minutes, and what a save has taken
// leaves the journal at once.
LONG RegistrySettingsStore::FlushIfChanged(const RegistryKey& root, const Batch& batch) const {
    const bool changed = std::ranges::any_of(
        batch, [](const auto& section) { return !section.second.before.empty(); });
    return changed ? m_flush(root.Get()) : LONG{ERROR_SUCCESS};
}

StoreResult RegistrySettingsStore::Apply(const std::vector<SettingChange>& changes) {
    LONG error = ERROR_SUCCESS;
    const RegistryKey root =
        RegistryKey::Create(HKEY_CURRENT_USER, m_root, KEY_READ | KEY_WRITE, error);
    Batch batch;
    for (const SettingChange& change : changes) {
        auto opened = batch.find(change.section);
        if (error == ERROR_SUCCESS && opened == batch.end()) {
            const std::wstring section = WideFromUtf8(change.section);
            opened = batch.emplace(change.section, Opened()).first;
            error = OpenToWrite(root, section, FindKeyName(root, section), opened->second);
        }
        if (error == ERROR_SUCCESS) {
            error = Change(opened->second, change);
        }
    }
    if (error == ERROR_SUCCESS) {
        error = FlushIfChanged(root, batch);
    }
    if (error != ERROR_SUCCESS) {
        TakeBack(root, batch);
    } else {
        DropEmpty(root, batch);
    }
    return Trouble(error);
}

StoreResult RegistrySettingsStore::RemoveSection(std::string_view section) {
    const RegistryKey root = Root(KEY_READ | KEY_WRITE | DELETE);
    if (!root.Opened()) {
        return Root(KEY_READ).Opened() ? Trouble(ERROR_ACCESS_DENIED) : StoreResult{};
    }
    const auto name = FindKeyName(root, WideFromUtf8(section));
    return name ? Trouble(RegDeleteTreeW(root.Get(), name->c_str())) : StoreResult{};
}

std::vector<std::string> RegistrySettingsStore::Sections() const {
    std::vector<std::string> sections;
    const RegistryKey root = Root(KEY_READ);
    if (root.Opened()) {
        for (const std::wstring& name : root.Subkeys()) {
            sections.push_back(Utf8FromWide(SectionOf(root, name)));
        }
    }
    return sections;
}

StoreResult RegistrySettingsStore::KeepCopy(std::chrono::system_clock::time_point now) {
    const RegistryKey root = Root(KEY_READ);
    if (!root.Opened()) {
        return {};  // there is nothing to copy
    }
    LONG error = ERROR_SUCCESS;
    const RegistryKey copies =
        RegistryKey::Create(HKEY_CURRENT_USER, m_root + L" copies", KEY_READ | KEY_WRITE, error);
    std::vector<std::wstring> names;
    if (error == ERROR_SUCCESS) {
        names = copies.Subkeys();
        const std::wstring base = TimeName(now);
        std::wstring name = base;
        for (int number = 2; std::ranges::find(names, name) != names.end(); ++number) {
            name = base + L"-" + std::to_wstring(number);
        }
        const RegistryKey copy =
            RegistryKey::Create(copies.Get(), name, KEY_READ | KEY_WRITE, error);
        if (error == ERROR_SUCCESS) {
            error = RegCopyTreeW(root.Get(), nullptr, copy.Get());
        }
        names.push_back(name);
    }
    if (error != ERROR_SUCCESS) {
        return Trouble(error);
    }
    // The order of the names is that of the times.
    std::ranges::sort(names, std::greater{});
    for (std::size_t i = kKeptCopies; i < names.size(); ++i) {
        RegDeleteTreeW(copies.Get(), names[i].c_str());
    }
    return {};
}

}  // namespace spellwick
