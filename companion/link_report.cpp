#include "companion/link_report.h"

#include <array>
#include <ctime>
#include <optional>

namespace spellwick {

namespace {

// 23:59:59
std::string TimeOfDay(LinkStatus::Time time, const Clock& clock) {
    const std::tm local = clock.Local(std::chrono::system_clock::to_time_t(time));
    std::array<char, 16> text{};
    return {text.data(), std::strftime(text.data(), text.size(), "%H:%M:%S", &local)};
}

std::string LastReport(const char* kind, const std::optional<LinkStatus::Time>& time,
                       const Clock& clock) {
    return std::string(kind) + " " + (time ? TimeOfDay(*time, clock) : "none");
}

}  // namespace

std::string LinkReport(const LinkStatus& status, bool paysAtClick, const Clock& clock) {
    if (status.tool.empty()) {
        return "No assist tool is running.\nCasts are paid at the click.";
    }
    std::string text = status.tool;
    if (status.since) {
        text += ", since " + TimeOfDay(*status.since, clock);
    }
    text += "\nLast reports: " + LastReport("cast", status.cast, clock) + ", " +
            LastReport("stock", status.stock, clock) + ", " +
            LastReport("mana", status.mana, clock) + ", " +
            LastReport("skill", status.skill, clock);
    if (!paysAtClick) {
        return text + "\nCasts are paid when the tool reports them.";
    }
    return text + (status.kind.reportsCasts
                       ? "\nCasts are paid at the click until the tool reports a cast or stock."
                       : "\nCasts are paid at the click: this tool reports none.");
}

}  // namespace spellwick
