#include "store/macro_report.h"

#include <algorithm>
#include <array>

#include "model/shared_state.h"
#include "text/characters.h"

namespace spellwick {

namespace {

struct Reason {
    LeftReason why;
    std::string_view text;
};

constexpr std::array<Reason, 6> kReasons{{
    {LeftReason::kUnknownSpell, "No spell has this name"},
    {LeftReason::kNoKey, "No key"},
    {LeftReason::kMouse, "A mouse button or the wheel"},
    {LeftReason::kOtherKey, "A key that Spellwick cannot press"},
    {LeftReason::kSecond, "A second macro for the spell, of which the first counts"},
    {LeftReason::kMoreActions, "A macro that does more than cast"},
}};

constexpr std::size_t kMostCharacters = 40;

// A name from a file can be of any length and hold anything.
std::string Shown(std::string_view name) {
    std::string shown(FirstCharacters(name, kMostCharacters));
    if (shown.size() < name.size()) {
        shown += "...";
    }
    const auto isControl = [](char sign) { return static_cast<unsigned char>(sign) < ' '; };
    std::ranges::replace_if(shown, isControl, ' ');
    return shown;
}

std::string Listed(const std::vector<std::string>& names, std::size_t most) {
    std::string list;
    for (std::size_t place = 0; place < std::min(names.size(), most); ++place) {
        list.append(place == 0 ? "" : ", ").append(Shown(names[place]));
    }
    if (names.size() > most) {
        list.append(" and ").append(std::to_string(names.size() - most)).append(" more");
    }
    return list;
}

void AddLine(std::string& text, std::string_view title, const std::vector<std::string>& names,
             std::size_t most) {
    if (!names.empty()) {
        text.append("\n").append(title).append(": ").append(Listed(names, most)).append(".");
    }
}

void AddLeft(std::string& text, const std::vector<LeftMacro>& left, std::size_t most) {
    for (const Reason& reason : kReasons) {
        std::vector<std::string> names;
        std::set<std::string_view> known;
        for (const LeftMacro& macro : left) {
            if (macro.why == reason.why && known.insert(macro.name).second) {
                names.push_back(macro.name);
            }
        }
        AddLine(text, std::string("\u2022 ").append(reason.text), names, most);
    }
}

}  // namespace

std::string CountedSpells(const std::set<i32>& macros) {
    const bool meditation = macros.contains(kMeditationMacro);
    const std::size_t spells = macros.size() - (meditation ? 1 : 0);
    if (meditation && spells == 0) {
        return "Meditation";
    }
    return std::to_string(spells) + (spells == 1 ? " spell" : " spells") +
           (meditation ? " and Meditation" : "");
}

std::string LoadText(const MacroLoad& load, std::string_view file, std::size_t mostNames) {
    std::string text = load.taken.empty() ? "No key was loaded from " + Shown(file) + "."
                                          : "The keys of " + CountedSpells(load.taken) +
                                                " were loaded from " + Shown(file) + ".";
    if (!load.left.empty()) {
        text += " These macros were left:";
        AddLeft(text, load.left, mostNames);
    }
    if (load.isCutShort) {
        text += "\nThe load ended at a spell that has no macro here.";
    }
    return text;
}

std::string SaveText(const MacroSave& save, std::string_view file, std::size_t mostNames) {
    std::set<i32> saved = save.replaced;
    saved.insert(save.added.begin(), save.added.end());
    std::string text = "Nothing had to be changed in " + Shown(file) + ".";
    if (!saved.empty()) {
        text = "The keys of " + CountedSpells(saved) + " were saved to " + Shown(file) + ": " +
               std::to_string(save.replaced.size()) + " changed, " +
               std::to_string(save.added.size()) + " new.";
    }
    if (!save.unchanged.empty()) {
        text.append("\nIn the file already: ").append(CountedSpells(save.unchanged)).append(".");
    }
    AddLine(text, "No longer on a mouse button, the wheel or another key", save.moved, mostNames);
    AddLine(text, "On the key of another macro too, so that only one of both works", save.shared,
            mostNames);
    if (!save.left.empty()) {
        text += "\nThese were not saved:";
        AddLeft(text, save.left, mostNames);
    }
    return text;
}

}  // namespace spellwick
