// The state of the link with an assist tool, for the player.
#pragma once

#include <chrono>
#include <optional>
#include <string>

#include "link/assist_tool.h"

namespace spellwick {

struct LinkStatus {
    using Time = std::chrono::system_clock::time_point;

    std::string tool;  // as its title names it; empty when there is none
    AssistTool kind;
    std::optional<Time> since;
    // The last report of each kind.
    std::optional<Time> cast;
    std::optional<Time> stock;
    std::optional<Time> mana;
    std::optional<Time> skill;
};

// One line: "Linked with Razor v1.9: casts, stock, mana", or that there is none and who pays.
std::string LinkText(const LinkStatus& status, bool paysAtClick);

}  // namespace spellwick
