#include "practice/tool_words.h"

#include <QObject>
#include <algorithm>

#include "practice/spell_costs.h"
#include "practice/tool_numbers.h"

namespace spellwick::practice {
namespace {

QString StockWords(int number, int count) {
    const auto* const item = std::ranges::find(kStockItems, number, &StockItem::number);
    return item == kStockItems.end()
               ? QObject::tr("Unknown item %1: %2").arg(number).arg(count)
               : QStringLiteral("%1: %2").arg(FromView(item->name)).arg(count);
}

QString SkillWords(int number, int tenths) {
    const auto* const skill = std::ranges::find(kCasterSkills, number, &KnownSkill::number);
    const QString name =
        skill == kCasterSkills.end() ? QObject::tr("Skill %1").arg(number) : FromView(skill->name);
    return QStringLiteral("%1: %2").arg(name).arg(tenths / 10.0, 0, 'f', 1);
}

QString CastWords(int number) {
    const SpellCost* const spell = FindSpell(number);
    return spell == nullptr ? QObject::tr("Spell number %1 is cast").arg(number)
                            : QObject::tr("%1 is cast").arg(FromView(spell->name));
}

}  // namespace

QString FromView(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

QString WordsOf(const ToolMessage& message) {
    switch (message.number) {
        case kRegisterMessage:
            return QObject::tr("Register window %1").arg(message.wParam);
        case kCountMessage:
            return QObject::tr("Count, please");
        case kStockMessage:
            return StockWords(message.wParam, message.lParam);
        case kCastMessage:
            return CastWords(message.wParam);
        case kLoginMessage:
            return QObject::tr("The character is there");
        case kMageryMessage:
            return QObject::tr("Magery in whole points: %1").arg(message.wParam);
        case kManaMessage:
            return QObject::tr("Intelligence: %1, mana: %2")
                .arg(message.wParam)
                .arg(message.lParam);
        case kSkillMessage:
            return SkillWords(message.wParam, message.lParam);
        case kLogoutMessage:
            return QObject::tr("The character has left");
        case kHitsMessage:
            return QObject::tr("Hits: %1 of %2").arg(message.wParam).arg(message.lParam);
        case kStaminaMessage:
            return QObject::tr("Stamina: %1 of %2").arg(message.wParam).arg(message.lParam);
        default:
            return QObject::tr("Message %1: %2, %3")
                .arg(message.number)
                .arg(message.wParam)
                .arg(message.lParam);
    }
}

QString WordsOfLine(const QString& line) {
    const auto parsed = ParseToolLine(line.toStdString());
    if (!parsed) {
        return line;
    }
    if (const auto* const message = std::get_if<ToolMessage>(&*parsed)) {
        return WordsOf(*message);
    }
    return QObject::tr("Answer: %1").arg(std::get<ToolResult>(*parsed).number);
}

}  // namespace spellwick::practice
