// The icon of one slot of the page, with signals for presses, clicks and the mouse moving over it.
#pragma once

#include "text/number_types.h"
#include "widgets/icon_picture.h"

namespace spellwick {

// Button of a press as the program counts them: 1 left, 2 right, 4 middle.
i16 MouseButtonNumber(Qt::MouseButton button);

// Mask of modifiers: 1 Shift, 2 Ctrl, 4 Alt, 8 any other; lock keys do not count.
i16 ShiftMask(Qt::KeyboardModifiers modifiers);

class SpellIcon : public IconPicture {
    Q_OBJECT

  public:
    explicit SpellIcon(QWidget* parent);

  signals:
    void Pressed(spellwick::i16 button, spellwick::i16 shift);
    void Clicked();
    void DoubleClicked();
    void Hovered();

  protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;

  private:
    bool m_pressed = false;
};

}  // namespace spellwick
