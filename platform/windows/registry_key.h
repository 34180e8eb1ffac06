// An open key of the registry, closed with its owner.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <windows.h>

namespace spellwick {

class RegistryKey {
  public:
    RegistryKey() = default;
    // The key under `parent`; check Opened.
    static RegistryKey Open(HKEY parent, const std::wstring& path, REGSAM access);
    static RegistryKey Create(HKEY parent, const std::wstring& path, REGSAM access, LONG& error);

    RegistryKey(RegistryKey&& other) noexcept : m_key(std::exchange(other.m_key, nullptr)) {}
    RegistryKey& operator=(RegistryKey&& other) noexcept {
        std::swap(m_key, other.m_key);
        return *this;
    }
    RegistryKey(const RegistryKey&) = delete;
    RegistryKey& operator=(const RegistryKey&) = delete;
    ~RegistryKey();

    bool Opened() const { return m_key != nullptr; }
    HKEY Get() const { return m_key; }

    // Nothing if there is no such value or it is not a text. Variables in it are not expanded.
    std::optional<std::wstring> ReadText(const std::wstring& value) const;

    // The names and texts of all text values.
    std::vector<std::pair<std::wstring, std::wstring>> ReadTexts() const;

    // The names of all values of any kind.
    std::vector<std::wstring> ValueNames() const;

    // Names of the keys directly under it, in the registry's order.
    std::vector<std::wstring> Subkeys() const;

    // Each gives ERROR_SUCCESS or the system's error.
    LONG WriteText(const std::wstring& value, const std::wstring& text) const;
    LONG RemoveValue(const std::wstring& value) const;

  private:
    explicit RegistryKey(HKEY key) : m_key(key) {}

    // Visits all values with name, kind, bytes and size.
    template <typename Visitor>
    void VisitValues(const Visitor& visit) const;

    HKEY m_key = nullptr;
};

}  // namespace spellwick
