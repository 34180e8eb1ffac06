#include "settings_dialog/box_rim.h"

#include <QPainter>
#include <QStyleOption>

namespace spellwick {

void BoxRim::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                           const QWidget* widget) const {
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    constexpr int kDark = 128;
    if (element != PE_IndicatorCheckBox ||
        option->palette.color(QPalette::Window).lightness() >= kDark) {
        return;
    }
    QColor rim = option->palette.color(QPalette::WindowText);
    rim.setAlphaF(0.7F);
    painter->save();
    painter->setPen(rim);
    painter->setBrush(Qt::NoBrush);
    painter->drawRect(option->rect.adjusted(0, 0, -1, -1));
    painter->restore();
}

}  // namespace spellwick
