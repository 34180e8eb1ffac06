#include "main_window/counter_box.h"

#include <QFocusEvent>
#include <QKeyEvent>

#include "model/purse_entries.h"

namespace spellwick {

namespace {

// Whether a key would type something into the box, and not what a counter takes.
bool IsDropped(const QKeyEvent& key) {
    if (key.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) {
        return false;
    }
    const QString text = key.text();
    if (text.isEmpty() || !text.at(0).isPrint()) {
        return false;
    }
    for (const char32_t character : text.toStdU32String()) {
        if (!CounterTakes(character)) {
            return true;
        }
    }
    return false;
}

}  // namespace

bool IsFocusMove(Qt::FocusReason reason) {
    return reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason &&
           reason != Qt::MenuBarFocusReason;
}

CounterBox::CounterBox(QWidget* parent) : QLineEdit(parent) {
    setAlignment(Qt::AlignRight);
    setTextMargins(0, 0, 0, 0);
    setAttribute(Qt::WA_InputMethodEnabled, false);
}

void CounterBox::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Up || event->key() == Qt::Key_Down) {
        emit Stepped(event->key() == Qt::Key_Up ? 1 : -1);
        return;
    }
    if (IsDropped(*event)) {
        emit KeyDropped();
        return;
    }
    QLineEdit::keyPressEvent(event);
}

void CounterBox::focusInEvent(QFocusEvent* event) {
    QLineEdit::focusInEvent(event);
    m_focusedByMouse = event->reason() == Qt::MouseFocusReason;
    if (IsFocusMove(event->reason())) {
        emit GotFocus();
    }
}

// The press that brings the focus selects the whole text, as the focus does; it would otherwise
// take the selection away again.
void CounterBox::mousePressEvent(QMouseEvent* event) {
    QLineEdit::mousePressEvent(event);
    if (m_focusedByMouse) {
        m_focusedByMouse = false;
        selectAll();
    }
}

void CounterBox::focusOutEvent(QFocusEvent* event) {
    QLineEdit::focusOutEvent(event);
    if (IsFocusMove(event->reason())) {
        emit LostFocus();
    }
}

}  // namespace spellwick
