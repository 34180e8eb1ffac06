// A small button that stays pressed while its page is shown. It paints itself, so that a one-letter
// caption is readable on a button of 14 pixels.
#pragma once

#include <QAbstractButton>

#include "widgets/spoken.h"

namespace spellwick {

class PageButton : public QAbstractButton, public Spoken {
    Q_OBJECT

  public:
    explicit PageButton(QWidget* parent);

    // Over a picture the ground is nearly opaque.
    void SetOverPicture(bool over) { m_overPicture = over; }

    // Whether the caption is bold while the button is pressed.
    void SetBoldWhenPressed(bool bold) { m_boldWhenPressed = bold; }

    // What it is to a screen reader: one of several pages, or of several tabs.
    void SetSpokenRole(QAccessible::Role role) { m_role = role; }

    QSize sizeHint() const override;

    QAccessible::Role SpokenRole() const override { return m_role; }
    QString SpokenName() const override { return accessibleName(); }
    bool CanPress() const override { return true; }
    void Press() override { click(); }

  protected:
    void paintEvent(QPaintEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;

  private:
    bool m_overPicture = false;
    bool m_boldWhenPressed = true;
    QAccessible::Role m_role = QAccessible::RadioButton;
};

}  // namespace spellwick
