#include "widgets/up_down.h"

#include <QMouseEvent>
#include <QPainter>
#include <QPolygonF>
#include <algorithm>

#include "text/number_forms.h"
#include "widgets/texts.h"

namespace spellwick {

namespace {

constexpr int kFirstRepeatMs = 400;
constexpr int kRepeatMs = 60;

}  // namespace

i32 SteppedCounter(const QString& text, int step, i32 most) {
    return ToI32(std::clamp(NumericPrefix(ToText(text)) + step, 0.0, static_cast<double>(most)));
}

UpDown::UpDown(QLineEdit& buddy, QWidget* parent, i32 most)
    : QWidget(parent), m_buddy(buddy), m_most(most) {
    connect(&m_repeat, &QTimer::timeout, this, [this] {
        m_repeat.setInterval(kRepeatMs);
        Step(m_heldStep);
    });
}

void UpDown::Step(int step) {
    const QString number = QString::number(SteppedCounter(m_buddy.text(), step, m_most));
    if (number != m_buddy.text()) {
        m_buddy.setText(number);
        emit Changed();
    }
}

void UpDown::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        return;
    }
    m_heldStep = event->position().y() * 2 < height() ? 1 : -1;
    m_repeat.start(kFirstRepeatMs);
    update();
    Step(m_heldStep);
}

void UpDown::mouseDoubleClickEvent(QMouseEvent* event) {
    mousePressEvent(event);
}

void UpDown::mouseReleaseEvent(QMouseEvent* /*event*/) {
    m_repeat.stop();
    m_heldStep = 0;
    update();
}

void UpDown::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF area = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    QColor rim = palette().color(QPalette::WindowText);
    rim.setAlpha(70);
    painter.setPen(QPen(rim, 1.0));
    painter.setBrush(palette().color(QPalette::Button));
    painter.drawRoundedRect(area, 2.0, 2.0);
    const double middle = area.center().y();
    if (m_heldStep != 0) {
        QColor held = palette().color(QPalette::Highlight);
        held.setAlpha(140);
        const double top = m_heldStep > 0 ? area.top() : middle;
        painter.fillRect(QRectF(area.left(), top, area.width(), area.height() / 2), held);
    }
    painter.setPen(QPen(rim, 1.0, Qt::SolidLine, Qt::FlatCap));
    painter.drawLine(QPointF(area.left() + 0.5, middle), QPointF(area.right() - 0.5, middle));

    painter.setPen(Qt::NoPen);
    painter.setBrush(palette().color(QPalette::ButtonText));
    const double reach = std::min(area.width() * 0.24, area.height() * 0.17);
    const double centre = area.center().x();
    for (const int direction : {1, -1}) {
        const double y = middle - direction * area.height() / 4;
        painter.drawPolygon(QPolygonF({QPointF(centre - reach, y + direction * reach * 0.6),
                                       QPointF(centre + reach, y + direction * reach * 0.6),
                                       QPointF(centre, y - direction * reach * 0.6)}));
    }
}

}  // namespace spellwick
