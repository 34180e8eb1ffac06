// The parts of the timers' window. Mouse events pass through all of them to the window, except for
// TimerControl.
#pragma once

#include <QLabel>

#include "model/colours.h"

namespace spellwick {

// A colour on the window's black ground. For a system colour that is the desktop's button face, or
// its button text if the face is dark.
QColor OnBlack(Colour colour, const QPalette& desktop);

// A single line of text, elided if it does not fit.
class TimerLabel : public QLabel {
    Q_OBJECT

  public:
    TimerLabel(QWidget* parent, Qt::Alignment alignment);

    void SetColour(Colour colour);
    Colour TextColour() const { return m_colour; }

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    Colour m_colour = kButtonFace;
};

// The bar of one timer.
class TimerBar : public QWidget {
    Q_OBJECT

  public:
    explicit TimerBar(QWidget* parent);

    // 0 to 100.
    void SetPercent(i32 percent);
    i32 Percent() const { return m_percent; }

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    i32 m_percent = 0;
};

// One of the two small buttons; never gets the focus.
class TimerControl : public QLabel {
    Q_OBJECT

  public:
    explicit TimerControl(QWidget* parent);

  signals:
    void Clicked();

  protected:
    void paintEvent(QPaintEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

  private:
    bool m_pressed = false;
};

}  // namespace spellwick
