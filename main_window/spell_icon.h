// The icon of one slot of the page: shows a cell of an icon strip and tells of presses, clicks and
// the mouse moving over it.
#pragma once

#include <QPixmap>
#include <QWidget>

#include "text/number_types.h"

namespace spellwick {

// Button of a press as the program counts them: 1 left, 2 right, 4 middle.
i16 MouseButtonNumber(Qt::MouseButton button);

// Mask of modifiers: 1 Shift, 2 Ctrl, 4 Alt, 8 any other; lock keys do not count.
i16 ShiftMask(Qt::KeyboardModifiers modifiers);

class SpellIcon : public QWidget {
    Q_OBJECT

  public:
    explicit SpellIcon(QWidget* parent);

    // `cell` is a part of a strip at the density of the screen; it is drawn over the whole icon.
    void SetPicture(const QPixmap& strip, const QRect& cell);
    const QRect& Cell() const { return m_cell; }

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
    QPixmap m_strip;
    QRect m_cell;  // in pixels of the strip
    bool m_pressed = false;
};

}  // namespace spellwick
