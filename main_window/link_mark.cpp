#include "main_window/link_mark.h"

#include <QPainter>

namespace spellwick {

namespace {

const QColor kLinked{0x2e, 0x9e, 0x4f};

}  // namespace

LinkMark::LinkMark(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("LinkMark"));
}

void LinkMark::SetLink(const QString& text, bool pays) {
    setToolTip(text);
    setAccessibleName(text);
    if (pays != m_pays) {
        m_pays = pays;
        update();
    }
}

void LinkMark::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (m_pays) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(kLinked);
    } else {
        QColor ring = palette().color(QPalette::WindowText);
        ring.setAlphaF(0.6F);
        painter.setPen(ring);
    }
    painter.drawEllipse(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5));
}

}  // namespace spellwick
