#include "settings_dialog/transfer_arrows.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPolygonF>

namespace spellwick {

namespace {

constexpr int kFirstRepeatMs = 400;
constexpr int kRepeatMs = 60;
constexpr QSize kSize(36, 18);

}  // namespace

TransferArrows::TransferArrows(QWidget* parent) : QWidget(parent) {
    setFocusPolicy(Qt::StrongFocus);
    m_repeat.setSingleShot(true);
    connect(&m_repeat, &QTimer::timeout, this, [this] { StepHeld(kRepeatMs); });
}

QSize TransferArrows::sizeHint() const {
    return kSize;
}

// A step can bring up a box, during which there are no more steps. The box takes the release of the
// button, so the button itself is asked.
void TransferArrows::StepHeld(int untilNextMs) {
    emit Pressed(m_side);
    m_held = m_held && QGuiApplication::mouseButtons().testFlag(Qt::LeftButton);
    if (m_held) {
        m_repeat.start(untilNextMs);
    }
    update();
}

void TransferArrows::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        return;
    }
    m_side = event->position().x() * 2 < width() ? BagSide::kLeft : BagSide::kRight;
    m_held = true;
    update();
    StepHeld(kFirstRepeatMs);
}

void TransferArrows::mouseDoubleClickEvent(QMouseEvent* event) {
    mousePressEvent(event);
}

void TransferArrows::mouseReleaseEvent(QMouseEvent* /*event*/) {
    m_repeat.stop();
    m_held = false;
    update();
}

void TransferArrows::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Left || event->key() == Qt::Key_Right) {
        emit Pressed(event->key() == Qt::Key_Left ? BagSide::kLeft : BagSide::kRight);
    } else {
        QWidget::keyPressEvent(event);
    }
}

void TransferArrows::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF area = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    QColor rim = palette().color(QPalette::WindowText);
    rim.setAlpha(70);
    painter.setPen(hasFocus() ? QPen(palette().color(QPalette::Highlight), 1.5) : QPen(rim, 1.0));
    painter.setBrush(palette().color(QPalette::Button));
    painter.drawRoundedRect(area, 2.0, 2.0);
    const double middle = area.center().x();
    if (m_held) {
        QColor held = palette().color(QPalette::Highlight);
        held.setAlpha(140);
        const double left = m_side == BagSide::kLeft ? area.left() : middle;
        painter.fillRect(QRectF(left, area.top(), area.width() / 2, area.height()), held);
    }
    painter.setPen(QPen(rim, 1.0));
    painter.drawLine(QPointF(middle, area.top()), QPointF(middle, area.bottom()));

    painter.setPen(Qt::NoPen);
    painter.setBrush(palette().color(QPalette::ButtonText));
    const double reach = area.height() * 0.24;
    const double centre = area.center().y();
    for (const int direction : {-1, 1}) {
        const double x = middle + direction * area.width() / 4;
        painter.drawPolygon(QPolygonF({QPointF(x - direction * reach * 0.6, centre - reach),
                                       QPointF(x - direction * reach * 0.6, centre + reach),
                                       QPointF(x + direction * reach * 0.6, centre)}));
    }
}

}  // namespace spellwick
