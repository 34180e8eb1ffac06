#include "widgets/arrow_pair.h"

#include <QGuiApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QPolygonF>
#include <QToolButton>
#include <algorithm>

namespace spellwick {

namespace {

constexpr int kFirstRepeatMs = 400;
constexpr int kRepeatMs = 60;

// The pair draws its arrows, and an arrow stays down wherever the mouse goes until it is let go.
class ArrowButton : public QToolButton {
  public:
    explicit ArrowButton(QWidget* parent) : QToolButton(parent) {
        setFocusPolicy(Qt::NoFocus);
        setAutoRepeat(true);
        setAutoRepeatDelay(kFirstRepeatMs);
        setAutoRepeatInterval(kRepeatMs);
    }

  protected:
    void paintEvent(QPaintEvent* /*event*/) override {}
    void mouseMoveEvent(QMouseEvent* /*event*/) override {}
    void mouseReleaseEvent(QMouseEvent* /*event*/) override { setDown(false); }
};

}  // namespace

ArrowPair::ArrowPair(Qt::Orientation orientation, QWidget* parent)
    : QWidget(parent), m_orientation(orientation) {
    MakeArrow(Arrow::kFirst);
    MakeArrow(Arrow::kSecond);
}

void ArrowPair::MakeArrow(Arrow arrow) {
    auto* button = new ArrowButton(this);
    const bool isFirst = arrow == Arrow::kFirst;
    if (IsVertical()) {
        button->setAccessibleName(isFirst ? QStringLiteral("Up") : QStringLiteral("Down"));
    } else {
        button->setAccessibleName(isFirst ? QStringLiteral("Left") : QStringLiteral("Right"));
    }
    connect(button, &QToolButton::pressed, this, [this, arrow] { StepOnce(arrow); });
    m_arrows[static_cast<std::size_t>(arrow)] = button;
}

void ArrowPair::StepOnce(Arrow arrow) {
    // A step can open a message box; there are no more steps until it closes.
    if (m_stepping) {
        m_interrupted = true;
        return;
    }
    m_stepping = true;
    m_interrupted = false;
    emit Pressed(arrow);
    m_stepping = false;
    // A message box that was open for long ends the press. A short one has taken the release, so
    // ask for the state of the mouse itself.
    if (m_interrupted || !QGuiApplication::mouseButtons().testFlag(Qt::LeftButton)) {
        m_arrows[static_cast<std::size_t>(arrow)]->setDown(false);
    }
    update();
}

void ArrowPair::resizeEvent(QResizeEvent* /*event*/) {
    QRect first = rect();
    QRect second = rect();
    if (IsVertical()) {
        first.setHeight((height() + 1) / 2);
        second.setTop(first.bottom() + 1);
    } else {
        first.setWidth((width() + 1) / 2);
        second.setLeft(first.right() + 1);
    }
    m_arrows[0]->setGeometry(first);
    m_arrows[1]->setGeometry(second);
}

void ArrowPair::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF area = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    QColor rim = palette().color(QPalette::WindowText);
    rim.setAlpha(70);
    painter.setPen(hasFocus() ? QPen(palette().color(QPalette::Highlight), 1.5) : QPen(rim, 1.0));
    painter.setBrush(palette().color(QPalette::Button));
    painter.drawRoundedRect(area, 2.0, 2.0);

    // From here on along the pair and across it: a horizontal pair is a vertical one, mirrored at
    // the diagonal.
    const double length = IsVertical() ? area.height() : area.width();
    const double breadth = IsVertical() ? area.width() : area.height();
    if (!IsVertical()) {
        painter.setTransform(QTransform(0, 1, 1, 0, 0, 0), true);
    }
    constexpr double kStart = 0.5;
    const double middle = kStart + length / 2;
    QColor held = palette().color(QPalette::Highlight);
    held.setAlpha(140);
    for (const auto arrow : {Arrow::kFirst, Arrow::kSecond}) {
        if (m_arrows[static_cast<std::size_t>(arrow)]->isDown()) {
            const double start = arrow == Arrow::kFirst ? kStart : middle;
            painter.fillRect(QRectF(kStart, start, breadth, length / 2), held);
        }
    }
    painter.setPen(QPen(rim, 1.0, Qt::SolidLine, Qt::FlatCap));
    painter.drawLine(QPointF(2 * kStart, middle), QPointF(breadth, middle));

    painter.setPen(Qt::NoPen);
    painter.setBrush(palette().color(QPalette::ButtonText));
    const double reach = std::min(breadth * 0.24, length * 0.17);
    const double centre = kStart + breadth / 2;
    for (const int direction : {-1, 1}) {
        const double tip = middle + direction * (length / 4 + reach * 0.6);
        const double base = middle + direction * (length / 4 - reach * 0.6);
        painter.drawPolygon(QPolygonF(
            {QPointF(centre - reach, base), QPointF(centre + reach, base), QPointF(centre, tip)}));
    }
}

}  // namespace spellwick
