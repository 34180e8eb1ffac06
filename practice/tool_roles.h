// The assist tools that the practice tool can pretend to be: how each calls itself and what it
// reports of what happens.
#pragma once

#include <array>
#include <optional>
#include <string_view>

#include "practice/tool_lines.h"

namespace spellwick::practice {

enum class StatsReport {
    kManaAsItIs,
    kHits,  // in place of the mana
};

struct ToolRole {
    std::string_view name;  // on the command line
    std::string_view title;
    bool castsWithinCircle;  // else by their own numbers
    bool reportsCasts;
    bool reportsStock;  // else nothing of it, and nothing when it is asked to count
    bool reportsTithing;
    bool reportsSkills;
    StatsReport stats;
};

inline constexpr std::array<ToolRole, 4> kToolRoles{{
    {"uoassist", "UOAssist - Practice", false, true, true, true, true, StatsReport::kManaAsItIs},
    {"razor", "Practice (Practice) - Razor v1.0", true, true, true, false, true,
     StatsReport::kManaAsItIs},
    {"razor-enhanced", "Practice (Practice) - Razor Enhanced 1.0", true, true, false, false, true,
     StatsReport::kManaAsItIs},
    {"classicuo", "UOASSIST-TP-MSG-WND", true, false, false, false, false, StatsReport::kHits},
}};

// The role of this name, or null.
const ToolRole* FindToolRole(std::string_view name);

// A report of the script as this tool makes it; nothing if it does not.
std::optional<ToolMessage> AsRole(const ToolRole& role, const ToolMessage& report);

}  // namespace spellwick::practice
