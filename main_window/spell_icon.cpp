#include "main_window/spell_icon.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

namespace spellwick {

namespace {

bool Clicks(const QKeyEvent& event) {
    return event.key() == Qt::Key_Space || event.key() == Qt::Key_Return ||
           event.key() == Qt::Key_Enter;
}

}  // namespace

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
    resize(42, 42);
}

void SpellIcon::paintEvent(QPaintEvent* event) {
    IconPicture::paintEvent(event);
    QPainter painter(this);
    if (hasFocus()) {
        painter.setPen(QPen(palette().color(QPalette::Active, QPalette::Window), 4.0));
        painter.drawRect(QRectF(rect()).adjusted(2.0, 2.0, -2.0, -2.0));
    }
    if (underMouse() || hasFocus()) {
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

// Modifiers give way to their first letters where there is no room for them.
void SpellIcon::SetKey(QString key) {
    if (CornerWidth(key) > width()) {
        for (const QString& modifier :
             {QStringLiteral("Ctrl"), QStringLiteral("Alt"), QStringLiteral("Shift")}) {
            key.replace(modifier + QLatin1Char('+'), modifier.left(1) + QLatin1Char('+'));
        }
    }
    if (CornerWidth(key) > width() && key.size() > 1) {
        key.remove(QLatin1Char('+'));
    }
    SetCorner(key);
}

void SpellIcon::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
        case Qt::Key_Left:
            emit StepWanted(-1, 0);
            return;
        case Qt::Key_Right:
            emit StepWanted(1, 0);
            return;
        case Qt::Key_Up:
            emit StepWanted(0, -1);
            return;
        case Qt::Key_Down:
            emit StepWanted(0, 1);
            return;
        case Qt::Key_Menu:
            emit Pressed(MouseButtonNumber(Qt::RightButton), ShiftMask(event->modifiers()));
            return;
        default:
            break;
    }
    if (!Clicks(*event)) {
        IconPicture::keyPressEvent(event);
    } else if (!event->isAutoRepeat()) {
        m_heldKey = event->key();
    }
}

// Clicks only when the key comes up: held down, it would go on into the game.
void SpellIcon::keyReleaseEvent(QKeyEvent* event) {
    if (event->isAutoRepeat()) {
        return;
    }
    const bool isClick = m_heldKey != 0 && event->key() == m_heldKey;
    m_heldKey = 0;
    if (isClick) {
        emit Pressed(MouseButtonNumber(Qt::LeftButton), ShiftMask(event->modifiers()));
        emit Clicked();
    }
}

void SpellIcon::Press() {
    emit Pressed(MouseButtonNumber(Qt::LeftButton), 0);
    emit Clicked();
}

void SpellIcon::focusInEvent(QFocusEvent* /*event*/) {
    m_heldKey = 0;
    update();
    emit Focused();
}

void SpellIcon::focusOutEvent(QFocusEvent* /*event*/) {
    m_heldKey = 0;
    update();
}

}  // namespace spellwick
