#include "store/section_name.h"

namespace spellwick {

namespace {

constexpr char kMark = '=';

// "Settings" with any number of marks in front.
bool IsMarkable(std::string_view name) {
    return name.ends_with(kGlobalSection) &&
           name.find_first_not_of(kMark) == name.size() - kGlobalSection.size();
}

}  // namespace

std::string SectionOfPlayer(std::string_view player) {
    std::string section(player);
    if (IsMarkable(player)) {
        section.insert(section.begin(), kMark);
    }
    return section;
}

std::string PlayerOfSection(std::string_view section) {
    if (section != kGlobalSection && IsMarkable(section)) {
        section.remove_prefix(1);
    }
    return std::string(section);
}

std::vector<std::string> PlayerNames(const SettingsStore& store) {
    std::vector<std::string> names;
    for (const std::string& section : store.Sections()) {
        if (section != kGlobalSection) {
            names.push_back(PlayerOfSection(section));
        }
    }
    return names;
}

}  // namespace spellwick
