#include "main_window/control_tips.h"

#include <array>
#include <utility>

#include "model/reagents.h"
#include "model/spell_lookup.h"
#include "widgets/texts.h"

namespace spellwick {

namespace {

constexpr std::array kTips{
    std::pair{"Image1(0)", "The spells of the Necromancer: shows their first page."},
    std::pair{"Image1(1)", "The abilities of the Paladin: shows their first page."},
    std::pair{"Command(0)", "Gives back to the counters what the last cast has taken."},
    std::pair{"Command(2)", "Opens the settings: spellbook, keys, skills, stock and more."},
    std::pair{"Command(3)", "Lets the assist tool count the reagents in the bag."},
    std::pair{"LabelMana", "Mana that the spell under the mouse takes."},
    std::pair{"LabelCost", "What one cast of the spell under the mouse costs in reagents."},
    std::pair{"LabelName", "The spell under the mouse."},
    std::pair{"LabelWords", "Words of power of the spell under the mouse."},
    std::pair{"LabelCurrentMana", "Your mana, as the assist tool last reported it."},
    std::pair{"TxtTithes", "Type your tithing points, or a change of them such as +50 or -10."},
};

QString PageTip(int button) {
    if (button < kFirstCircleButton) {
        return QStringLiteral(
                   "Your own page %1: eight spells that you choose in the settings, User Spells.")
            .arg(button + 1);
    }
    if (button < kNecromancerButton) {
        return QStringLiteral("Shows the spells of Magery, circle %1.")
            .arg(button - kFirstCircleButton + 1);
    }
    if (button < kPaladinButton) {
        return QStringLiteral("Shows page %1 of the Necromancer's spells.")
            .arg(button - kNecromancerButton + 1);
    }
    return QStringLiteral("Shows page %1 of the Paladin's abilities.")
        .arg(button - kPaladinButton + 1);
}

}  // namespace

QString ControlTip(const QString& name) {
    for (const auto& [control, tip] : kTips) {
        if (name == QLatin1String(control)) {
            return QLatin1String(tip);
        }
    }
    const QString kind = name.section(QLatin1Char('('), 0, 0);
    const int index = name.section(QLatin1Char('('), 1).chopped(kind == name ? 0 : 1).toInt();
    if (kind == QStringLiteral("CheckCircle")) {
        return PageTip(index);
    }
    const bool isCounter = kind == QStringLiteral("Reagent");
    if (isCounter || kind == QStringLiteral("UpDown1")) {
        const QString reagent = ToQString(FactsOfReagent(index).name);
        return isCounter
                   ? QStringLiteral("%1 in this bag: type how many, or a change such as +10 or -3.")
                         .arg(reagent)
                   : QStringLiteral("One %1 more or less.").arg(reagent);
    }
    return {};
}

}  // namespace spellwick
