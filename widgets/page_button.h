// A small button that stays pressed while its page is shown. It paints itself, so that a one-letter
// caption is readable on a button of 14 pixels.
#pragma once

#include <QAbstractButton>

namespace spellwick {

class PageButton : public QAbstractButton {
    Q_OBJECT

  public:
    explicit PageButton(QWidget* parent);

    // Over a picture the ground is nearly opaque.
    void SetOverPicture(bool over) { m_overPicture = over; }

    // Whether the caption is bold while the button is pressed.
    void SetBoldWhenPressed(bool bold) { m_boldWhenPressed = bold; }

    QSize sizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;

  private:
    bool m_overPicture = false;
    bool m_boldWhenPressed = true;
};

}  // namespace spellwick
