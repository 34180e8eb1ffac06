#include "platform/windows/section_keys.h"

#include <array>

namespace spellwick {

namespace {

constexpr std::size_t kLongestKeyName = 255;
constexpr std::wstring_view kEmpty = L"%";
constexpr std::wstring_view kNumbered = L"%=";

struct Escape {
    wchar_t sign;
    std::wstring_view written;
};

constexpr std::array<Escape, 3> kEscapes{{
    {L'\\', L"%5C"},
    {L'%', L"%25"},
    {L'\0', L"%00"},
}};

}  // namespace

std::optional<std::wstring> KeyNameOfSection(std::wstring_view section) {
    std::wstring name;
    for (const wchar_t sign : section) {
        std::wstring_view written(&sign, 1);
        for (const Escape& escape : kEscapes) {
            if (escape.sign == sign) {
                written = escape.written;
            }
        }
        name += written;
    }
    if (name.size() > kLongestKeyName) {
        return std::nullopt;
    }
    return name.empty() ? std::wstring(kEmpty) : name;
}

std::wstring SectionOfKeyName(std::wstring_view keyName) {
    std::wstring section;
    if (keyName == kEmpty) {
        return section;
    }
    while (!keyName.empty()) {
        const Escape* found = nullptr;
        for (const Escape& escape : kEscapes) {
            if (keyName.starts_with(escape.written)) {
                found = &escape;
            }
        }
        section.push_back(found != nullptr ? found->sign : keyName.front());
        keyName.remove_prefix(found != nullptr ? found->written.size() : 1);
    }
    return section;
}

std::wstring NumberedKeyName(int number) {
    return std::wstring(kNumbered) + std::to_wstring(number);
}

bool IsNumberedKeyName(std::wstring_view keyName) {
    return keyName.starts_with(kNumbered);
}

}  // namespace spellwick
