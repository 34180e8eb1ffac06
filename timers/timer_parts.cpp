#include "timers/timer_parts.h"

#include <QGuiApplication>
#include <QMouseEvent>
#include <QPainter>

#include "model/timer_display.h"
#include "widgets/ground.h"

namespace spellwick {

QColor OnBlack(Colour colour, const QPalette& desktop) {
    constexpr int kDarkest = 128;
    if (!IsSystemColour(colour)) {
        return ToQColor(colour);
    }
    const QColor face = desktop.color(QPalette::Active, QPalette::Button);
    return face.lightness() >= kDarkest ? face
                                        : desktop.color(QPalette::Active, QPalette::ButtonText);
}

TimerLabel::TimerLabel(QWidget* parent, Qt::Alignment alignment) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
    setAlignment(alignment | Qt::AlignVCenter);
    setMouseTracking(true);
}

void TimerLabel::SetColour(Colour colour) {
    if (colour != m_colour) {
        m_colour = colour;
        update();
    }
}

void TimerLabel::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setPen(OnBlack(m_colour, QGuiApplication::palette()));
    painter.drawText(rect(), static_cast<int>(alignment()),
                     fontMetrics().elidedText(text(), Qt::ElideRight, width()));
}

TimerBar::TimerBar(QWidget* parent) : QWidget(parent) {
    setMouseTracking(true);
}

void TimerBar::SetPercent(i32 percent) {
    if (percent != m_percent) {
        m_percent = percent;
        update();
    }
}

void TimerBar::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.scale(width() / static_cast<double>(kTimerBarWidth),
                  height() / static_cast<double>(kTimerBarHeight));
    const i32 left = BarWidth(m_percent);
    painter.fillRect(0, 0, left, kTimerBarHeight, ToQColor(kBlue));
    painter.fillRect(left, 0, kTimerBarWidth - left, kTimerBarHeight,
                     OnBlack(BarRestColour(m_percent), QGuiApplication::palette()));
}

TimerControl::TimerControl(QWidget* parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
    setAlignment(Qt::AlignCenter);
    setFocusPolicy(Qt::NoFocus);
}

void TimerControl::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    const QColor face = OnBlack(kButtonFace, QGuiApplication::palette());
    if (underMouse()) {
        painter.fillRect(rect(), face);
    }
    painter.setPen(underMouse() ? QColor(Qt::black) : face);
    painter.drawText(rect(), Qt::AlignCenter, text());
}

void TimerControl::enterEvent(QEnterEvent* /*event*/) {
    update();
}

void TimerControl::leaveEvent(QEvent* /*event*/) {
    update();
}

void TimerControl::mousePressEvent(QMouseEvent* /*event*/) {
    m_pressed = true;
}

void TimerControl::mouseMoveEvent(QMouseEvent* /*event*/) {}

void TimerControl::mouseReleaseEvent(QMouseEvent* event) {
    const bool isClick = m_pressed && rect().contains(event->position().toPoint());
    m_pressed = false;
    if (isClick) {
        emit Clicked();
    }
}

}  // namespace spellwick
