#include "platform/windows/registry_installation.h"

#include <algorithm>
#include <array>

#include "platform/windows/registry_key.h"
#include "platform/windows/wide_text.h"

namespace spellwick {

namespace {

// 32-bit installers write into a separate place.
constexpr std::array<REGSAM, 2> kPlaces{KEY_READ | KEY_WOW64_64KEY, KEY_READ | KEY_WOW64_32KEY};

bool IsDriveLetter(wchar_t letter) {
    return (letter >= L'A' && letter <= L'Z') || (letter >= L'a' && letter <= L'z');
}

}  // namespace

bool RegistryInstallation::HasKey(const std::string& key) {
    for (const REGSAM place : kPlaces) {
        if (RegistryKey::Open(HKEY_LOCAL_MACHINE, WideFromUtf8(key), place).Opened()) {
            return true;
        }
    }
    return false;
}

std::string RegistryInstallation::ReadText(const std::string& key, const std::string& value) {
    for (const REGSAM place : kPlaces) {
        const RegistryKey opened = RegistryKey::Open(HKEY_LOCAL_MACHINE, WideFromUtf8(key), place);
        const auto text = opened.Opened() ? opened.ReadText(WideFromUtf8(value)) : std::nullopt;
        if (text) {
            return Utf8FromWide(*text);
        }
    }
    return {};
}

std::filesystem::path RegistryInstallation::LocalPath(const std::string& drivePath) {
    const std::wstring path = WideFromUtf8(drivePath);
    if (path.size() < 2 || path[1] != L':' || !IsDriveLetter(path[0])) {
        return {};
    }
    const std::wstring root = path.substr(0, 2) + L"\\";
    const UINT drive = GetDriveTypeW(root.c_str());
    if (drive == DRIVE_UNKNOWN || drive == DRIVE_NO_ROOT_DIR) {
        return {};
    }
    // Start at the drive's root even if the path lacks its first backslash.
    const std::size_t rest = std::min(path.find_first_not_of(L"\\/", 2), path.size());
    return (std::filesystem::path(root) / path.substr(rest)).make_preferred();
}

}  // namespace spellwick
