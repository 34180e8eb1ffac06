// An edit that reports a focus change only if the focus moves within the program, and selects its
// whole text when a click gives it the focus.
#pragma once

#include <QLineEdit>

namespace spellwick {

// Whether the focus moves within the program. Switching to another program, opening a menu and
// activating a window do not count: they leave an unfinished entry alone.
bool IsFocusMove(Qt::FocusReason reason);

// Enter on the main keyboard or the keypad.
bool IsEnter(const QKeyEvent& key);

class EntryBox : public QLineEdit {
    Q_OBJECT

  public:
    explicit EntryBox(QWidget* parent) : QLineEdit(parent) {}

    // Reports LostFocus if that is still due: in a window that is not active, an edit loses the
    // focus without an event.
    void Commit();
    // Makes the next loss of the focus go unreported.
    void Abandon() { m_entered = false; }

  signals:
    void GotFocus();
    void LostFocus();

  protected:
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

  private:
    bool m_focusedByMouse = false;
    bool m_entered = false;  // has reported GotFocus since the last LostFocus
};

}  // namespace spellwick
