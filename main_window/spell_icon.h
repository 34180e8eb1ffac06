// The icon of one slot of the page, with signals for presses, clicks and the mouse moving over it.
// With the focus, Space and Enter are a left click, the menu key is a press of the right button,
// and the arrows ask for another icon.
#pragma once

#include <QString>
#include <functional>

#include "text/number_types.h"
#include "widgets/icon_picture.h"
#include "widgets/spoken.h"

namespace spellwick {

// Button of a press as the program counts them: 1 left, 2 right, 4 middle.
i16 MouseButtonNumber(Qt::MouseButton button);

// Mask of modifiers: 1 Shift, 2 Ctrl, 4 Alt, 8 any other; lock keys do not count.
i16 ShiftMask(Qt::KeyboardModifiers modifiers);

class SpellIcon : public IconPicture, public Spoken {
    Q_OBJECT

  public:
    explicit SpellIcon(QWidget* parent);

    // The key of the spell, in small letters in a corner; empty for none.
    void SetKey(QString key);

    // What is told of its spell; asked each time.
    void SetSpoken(std::function<QString()> spoken) { m_spoken = std::move(spoken); }
    QAccessible::Role SpokenRole() const override { return QAccessible::Button; }
    QString SpokenName() const override { return m_spoken ? m_spoken() : accessibleName(); }
    bool CanPress() const override { return true; }
    // A left click without modifiers.
    void Press() override;

  signals:
    void Pressed(spellwick::i16 button, spellwick::i16 shift);
    void Clicked();
    void DoubleClicked();
    void Hovered();
    void Focused();
    // An arrow key: so many columns to the right and rows down.
    void StepWanted(int columns, int rows);

  protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

  private:
    std::function<QString()> m_spoken;
    bool m_pressed = false;
    int m_heldKey = 0;  // that clicks when it comes up; 0 for none
};

}  // namespace spellwick
