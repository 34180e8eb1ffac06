// A box for an entry: tells of the focus when it moves within the program, and selects its whole
// text when the mouse brings the focus.
#pragma once

#include <QLineEdit>

namespace spellwick {

// Whether a change of focus is one within the program. A switch to another program, a menu that
// pops up and a window that comes to the front leave an unfinished entry as it is.
bool IsFocusMove(Qt::FocusReason reason);

// Enter on either side of the keyboard.
bool IsEnter(const QKeyEvent& key);

class EntryBox : public QLineEdit {
    Q_OBJECT

  public:
    explicit EntryBox(QWidget* parent) : QLineEdit(parent) {}

  signals:
    void GotFocus();
    void LostFocus();

  protected:
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

  private:
    bool m_focusedByMouse = false;
    bool m_entered = false;  // has had the focus since it last lost it
};

}  // namespace spellwick
