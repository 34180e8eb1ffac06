#include "main_window/cell_label.h"

#include <QPainter>
#include <algorithm>

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
    // In the screen's own pixels, so that at any density all four edges are of one width.
    const QTransform toDevice = painter.deviceTransform();
    const QTransform toLabel = toDevice.inverted();
    const QRectF bounds = toDevice.mapRect(QRectF(rect()));
    const QRect outer(QPoint(qRound(bounds.left()), qRound(bounds.top())),
                      QPoint(qRound(bounds.right()) - 1, qRound(bounds.bottom()) - 1));
    const int line = std::max(1, static_cast<int>(toDevice.m11()));
    painter.fillRect(toLabel.mapRect(QRectF(outer)), ground.darker(150));
    painter.fillRect(toLabel.mapRect(QRectF(outer.adjusted(line, line, -line, -line))), ground);
    painter.setPen(isSystem ? palette().color(QPalette::ButtonText) : QColor(Qt::black));
    painter.drawText(rect(), Qt::AlignCenter, text().trimmed());
}

}  // namespace spellwick
