#include "model/reagents.h"

#include <array>

#include "text/runtime_failure.h"

namespace spellwick {

namespace {

// ODDITY(crossed-stock-keys): the stock of Grave Dust is saved under "DB" and that of Daemon Blood
// under "GD"; kept because players' existing stores are written this way.
constexpr std::array<ReagentFacts, 14> kReagents{{
    {"Mandrake Root", "MR", "MR", "MR price", 3},
    {"Sulphurous Ash", "SA", "SA", "SA price", 3},
    {"Bloodmoss", "BM", "BM", "BM price", 6},
    {"Spider Silk", "SS", "SS", "SS price", 3},
    {"Garlic", "GL", "GA", "GA price", 3},
    {"Black Pearl", "BP", "BP", "BP price", 6},
    {"Nightshade", "NI", "NI", "NI price", 3},
    {"Ginseng", "GS", "GI", "GI price", 3},
    {"Bat Wing", "BW", "BW", "BW price", 3},
    {"Grave Dust", "GD", "DB", "GD price", 3},
    {"Daemon Blood", "DB", "GD", "DB price", 6},
    {"Nox Crystal", "NC", "NC", "NC price", 6},
    {"Pig Iron", "PI", "PI", "PI price", 5},
    {"Tithes", "TI", "", "", 1},
}};

constexpr std::array<std::string_view, kBagCount> kBagNames{
    "Red Backpack", "Blue Backpack", "Green Backpack", "Yellow Backpack", "Purple Backpack",
    "Crate",        "Chest",         "Pouch",          "Wooden box",      "Bank Box"};

}  // namespace

const ReagentFacts& FactsOfReagent(i32 reagent) {
    if (reagent < 1 || reagent > kTithes) {
        throw RuntimeFailure(FailureKind::kSubscript,
                             "There is no reagent number " + std::to_string(reagent) + ".");
    }
    return kReagents[static_cast<std::size_t>(reagent - 1)];
}

std::string_view DefaultBagName(i32 bag) {
    if (bag < 0 || bag >= kBagCount) {
        throw RuntimeFailure(FailureKind::kSubscript,
                             "There is no bag number " + std::to_string(bag) + ".");
    }
    return kBagNames[static_cast<std::size_t>(bag)];
}

}  // namespace spellwick
