#include "main_window/cell_label.h"

#include <QPainter>

#include "widgets/ground.h"

namespace spellwick {

void CellLabel::SetCellGround(Colour colour) {
    if (colour != m_ground) {
        m_ground = colour;
        update();
    }
}

void CellLabel::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    const bool isSystem = IsSystemColour(m_ground);
    const QColor ground = isSystem ? palette().color(QPalette::Button) : ToQColor(m_ground);
    painter.setPen(ground.darker(150));
    painter.setBrush(ground);
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
    painter.setPen(isSystem ? palette().color(QPalette::ButtonText) : QColor(Qt::black));
    painter.drawText(rect(), Qt::AlignCenter, text().trimmed());
}

}  // namespace spellwick
