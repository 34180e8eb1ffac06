#include "main_window/spell_icon.h"

#include <QMouseEvent>
#include <QPainter>

namespace spellwick {

i16 MouseButtonNumber(Qt::MouseButton button) {
    switch (button) {
        case Qt::LeftButton:
            return 1;
        case Qt::RightButton:
            return 2;
        case Qt::MiddleButton:
            return 4;
        default:
            return 0;
    }
}

i16 ShiftMask(Qt::KeyboardModifiers modifiers) {
    int mask = 0;
    mask |= modifiers.testFlag(Qt::ShiftModifier) ? 1 : 0;
    mask |= modifiers.testFlag(Qt::ControlModifier) ? 2 : 0;
    mask |= modifiers.testFlag(Qt::AltModifier) ? 4 : 0;
    mask |= modifiers.testFlag(Qt::MetaModifier) ? 8 : 0;
    return static_cast<i16>(mask);
}

SpellIcon::SpellIcon(QWidget* parent) : IconPicture(parent) {
    setFixedSize(42, 42);
}

void SpellIcon::paintEvent(QPaintEvent* event) {
    IconPicture::paintEvent(event);
    if (underMouse()) {
        QPainter painter(this);
        painter.setPen(QPen(palette().color(QPalette::Highlight), 2.0));
        painter.drawRect(QRectF(rect()).adjusted(1.0, 1.0, -1.0, -1.0));
    }
}

void SpellIcon::mousePressEvent(QMouseEvent* event) {
    m_pressed = true;
    emit Pressed(MouseButtonNumber(event->button()), ShiftMask(event->modifiers()));
}

void SpellIcon::mouseReleaseEvent(QMouseEvent* event) {
    const bool isClick = m_pressed && rect().contains(event->position().toPoint());
    m_pressed = false;
    if (isClick) {
        emit Clicked();
    }
}

void SpellIcon::mouseDoubleClickEvent(QMouseEvent* event) {
    // ODDITY(double-click-casts-twice): a double click casts the spell twice; kept because each of
    // its clicks is one, and nothing tells a slip of the hand from a second cast.
    // A second press that comes with another button is a press of its own.
    m_pressed = false;
    if (event->button() == Qt::LeftButton) {
        emit DoubleClicked();
    } else {
        mousePressEvent(event);
    }
}

void SpellIcon::mouseMoveEvent(QMouseEvent* /*event*/) {
    emit Hovered();
}

void SpellIcon::enterEvent(QEnterEvent* /*event*/) {
    update();
}
void SpellIcon::leaveEvent(QEvent* /*event*/) {
    update();
}

}  // namespace spellwick
