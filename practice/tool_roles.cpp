#include "practice/tool_roles.h"

#include <algorithm>

#include "practice/tool_numbers.h"

namespace spellwick::practice {
namespace {

constexpr int kTithingNumber = 200;
constexpr int kHits = 100;

int WithinCircle(int spell) {
    constexpr int kSpellsInCircle = 8;
    constexpr int kOfNecromancy = 100;
    constexpr int kOfChivalry = 200;
    if (spell <= kOfNecromancy) {
        return (spell - 1) % kSpellsInCircle + 1;
    }
    return spell - (spell > kOfChivalry ? kOfChivalry : kOfNecromancy);
}

}  // namespace

const ToolRole* FindToolRole(std::string_view name) {
    const auto* const found = std::ranges::find(kToolRoles, name, &ToolRole::name);
    return found == kToolRoles.end() ? nullptr : found;
}

std::optional<ToolMessage> AsRole(const ToolRole& role, const ToolMessage& report) {
    ToolMessage made = report;
    bool isMade = true;
    switch (report.number) {
        case kCastMessage:
            isMade = role.reportsCasts;
            made.wParam = role.castsWithinCircle ? WithinCircle(report.wParam) : report.wParam;
            break;
        case kStockMessage:
            isMade = report.wParam == kTithingNumber ? role.reportsTithing : role.reportsStock;
            break;
        case kManaMessage:
            made.lParam = role.stats == StatsReport::kHits ? kHits : report.lParam;
            break;
        case kMageryMessage:
        case kSkillMessage:
            isMade = role.reportsSkills;
            break;
        default:
            break;
    }
    return isMade ? std::optional(made) : std::nullopt;
}

}  // namespace spellwick::practice
