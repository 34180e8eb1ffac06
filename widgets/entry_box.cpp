#include "widgets/entry_box.h"

#include <QFocusEvent>
#include <QKeyEvent>

namespace spellwick {

bool IsFocusMove(Qt::FocusReason reason) {
    return reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason &&
           reason != Qt::MenuBarFocusReason;
}

bool IsEnter(const QKeyEvent& key) {
    return key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter;
}

void EntryBox::focusInEvent(QFocusEvent* event) {
    QLineEdit::focusInEvent(event);
    m_focusedByMouse = event->reason() == Qt::MouseFocusReason;
    // A window's first activation gives its first edit the focus.
    if (IsFocusMove(event->reason()) || !m_entered) {
        m_entered = true;
        emit GotFocus();
    }
}

// Select the text again after the click that gave the focus: the base class has cleared the
// selection.
void EntryBox::mousePressEvent(QMouseEvent* event) {
    QLineEdit::mousePressEvent(event);
    if (m_focusedByMouse) {
        m_focusedByMouse = false;
        selectAll();
    }
}

void EntryBox::focusOutEvent(QFocusEvent* event) {
    QLineEdit::focusOutEvent(event);
    if (IsFocusMove(event->reason())) {
        Commit();
    }
}

void EntryBox::Commit() {
    if (m_entered) {
        m_entered = false;
        emit LostFocus();
    }
}

}  // namespace spellwick
