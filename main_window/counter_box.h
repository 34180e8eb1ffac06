// A box for a number with its small commands: takes digits and signs, drops all other keys with a
// beep, and tells of the focus when it moves within the program.
#pragma once

#include <QLineEdit>

namespace spellwick {

// Whether a change of focus is one within the program. A switch to another program, a menu that
// pops up and a window that comes to the front leave an unfinished entry as it is.
bool IsFocusMove(Qt::FocusReason reason);

class CounterBox : public QLineEdit {
    Q_OBJECT

  public:
    explicit CounterBox(QWidget* parent);

  signals:
    void GotFocus();
    void LostFocus();
    void KeyDropped();
    void Stepped(int step);  // up or down arrow key

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

  private:
    bool m_focusedByMouse = false;
};

}  // namespace spellwick
