#include "platform/windows/folder_name.h"

#include <cstdint>

#include <windows.h>

namespace spellwick {

std::wstring FolderName(std::wstring folder) {
    CharLowerBuffW(folder.data(), static_cast<DWORD>(folder.size()));
    // FNV-1a
    constexpr std::uint64_t kPrime = 0x100000001b3;
    std::uint64_t sum = 0xcbf29ce484222325;
    for (const wchar_t unit : folder) {
        sum = (sum ^ static_cast<std::uint64_t>(unit)) * kPrime;
    }
    constexpr std::wstring_view kDigits = L"0123456789abcdef";
    std::wstring name(16, L'0');
    for (auto digit = name.rbegin(); digit != name.rend(); ++digit, sum /= 16) {
        *digit = kDigits[sum % 16];
    }
    return name;
}

}  // namespace spellwick
