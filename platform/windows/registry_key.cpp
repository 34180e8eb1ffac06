#include "platform/windows/registry_key.h"

#include <cstring>

namespace spellwick {

namespace {

bool IsText(DWORD type) {
    return type == REG_SZ || type == REG_EXPAND_SZ;
}

// The text in a value's bytes, without the terminating zero, which may be missing.
std::wstring TextOf(const std::vector<BYTE>& bytes, std::size_t size) {
    std::wstring text(size / sizeof(wchar_t), L'\0');
    std::memcpy(text.data(), bytes.data(), text.size() * sizeof(wchar_t));
    if (!text.empty() && text.back() == L'\0') {
        text.pop_back();
    }
    return text;
}

}  // namespace

RegistryKey RegistryKey::Open(HKEY parent, const std::wstring& path, REGSAM access) {
    HKEY key = nullptr;
    const LONG error = RegOpenKeyExW(parent, path.c_str(), 0, access, &key);
    return RegistryKey(error == ERROR_SUCCESS ? key : nullptr);
}

RegistryKey RegistryKey::Create(HKEY parent, const std::wstring& path, REGSAM access, LONG& error) {
    HKEY key = nullptr;
    error = RegCreateKeyExW(parent, path.c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE, access,
                            nullptr, &key, nullptr);
    return RegistryKey(error == ERROR_SUCCESS ? key : nullptr);
}

RegistryKey::~RegistryKey() {
    if (m_key != nullptr) {
        RegCloseKey(m_key);
    }
}

std::optional<std::wstring> RegistryKey::ReadText(const std::wstring& value) const {
    std::vector<BYTE> bytes(512);
    for (;;) {
        DWORD type = REG_NONE;
        auto size = static_cast<DWORD>(bytes.size());
        const LONG error =
            RegQueryValueExW(m_key, value.c_str(), nullptr, &type, bytes.data(), &size);
        if (error == ERROR_MORE_DATA) {
            bytes.resize(size);
        } else if (error != ERROR_SUCCESS || !IsText(type)) {
            return std::nullopt;
        } else {
            return TextOf(bytes, size);
        }
    }
}

template <typename Visitor>
void RegistryKey::VisitValues(const Visitor& visit) const {
    DWORD longestName = 0;
    DWORD largestValue = 0;
    if (RegQueryInfoKeyW(m_key, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                         &longestName, &largestValue, nullptr, nullptr) != ERROR_SUCCESS) {
        return;
    }
    std::wstring name(longestName + 1, L'\0');
    std::vector<BYTE> bytes(largestValue + sizeof(wchar_t));
    for (DWORD index = 0;;) {
        DWORD type = REG_NONE;
        auto nameSize = static_cast<DWORD>(name.size());
        auto size = static_cast<DWORD>(bytes.size());
        const LONG error = RegEnumValueW(m_key, index, name.data(), &nameSize, nullptr, &type,
                                         bytes.data(), &size);
        if (error == ERROR_MORE_DATA) {
            // Another program has written a larger one meanwhile.
            name.resize(name.size() * 2);
            bytes.resize(bytes.size() * 2);
            continue;
        }
        if (error != ERROR_SUCCESS) {
            return;
        }
        visit(name.substr(0, nameSize), type, bytes, size);
        ++index;
    }
}

std::vector<std::pair<std::wstring, std::wstring>> RegistryKey::ReadTexts() const {
    std::vector<std::pair<std::wstring, std::wstring>> texts;
    VisitValues([&texts](const std::wstring& name, DWORD type, const std::vector<BYTE>& bytes,
                         std::size_t size) {
        if (IsText(type)) {
            texts.emplace_back(name, TextOf(bytes, size));
        }
    });
    return texts;
}

std::vector<std::wstring> RegistryKey::ValueNames() const {
    std::vector<std::wstring> names;
    VisitValues([&names](const std::wstring& name, DWORD /*type*/,
                         const std::vector<BYTE>& /*bytes*/,
                         std::size_t /*size*/) { names.push_back(name); });
    return names;
}

std::vector<std::wstring> RegistryKey::Subkeys() const {
    constexpr std::size_t kLongestKeyName = 255;
    std::vector<std::wstring> names;
    std::wstring name(kLongestKeyName + 1, L'\0');
    for (DWORD index = 0;; ++index) {
        auto size = static_cast<DWORD>(name.size());
        if (RegEnumKeyExW(m_key, index, name.data(), &size, nullptr, nullptr, nullptr, nullptr) !=
            ERROR_SUCCESS) {
            return names;
        }
        names.push_back(name.substr(0, size));
    }
}

LONG RegistryKey::WriteText(const std::wstring& value, const std::wstring& text) const {
    const void* untyped = text.c_str();
    return RegSetValueExW(m_key, value.c_str(), 0, REG_SZ, static_cast<const BYTE*>(untyped),
                          static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t)));
}

LONG RegistryKey::RemoveValue(const std::wstring& value) const {
    return RegDeleteValueW(m_key, value.c_str());
}

}  // namespace spellwick
