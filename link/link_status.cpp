#include "link/link_status.h"

namespace spellwick {

std::string LinkText(const LinkStatus& status, bool paysAtClick) {
    if (status.tool.empty()) {
        return "No assist tool: casts are paid at the click";
    }
    std::string kinds;
    const auto add = [&](bool reported, const char* kind) {
        if (reported) {
            kinds += (kinds.empty() ? "" : ", ") + std::string(kind);
        }
    };
    add(status.kind.reportsCasts, "casts");
    add(status.kind.reportsStock, "stock");
    add(status.kind.stats != StatsWords::kNone, "mana");
    std::string text = "Linked with " + status.tool + (kinds.empty() ? "" : ": " + kinds);
    if (paysAtClick) {
        text += status.kind.reportsCasts ? ". Casts are paid at the click until it reports one"
                                         : ". Casts are paid at the click";
    }
    return text;
}

}  // namespace spellwick
