// The icon of a spell, loaded when it is first painted.
#pragma once

#include <QWidget>

#include "text/number_types.h"
#include "widgets/pictures.h"

namespace spellwick {

class SpellPicture : public QWidget {
    Q_OBJECT

  public:
    SpellPicture(IconClip& icons, QWidget* parent);

    // Sets the spell row, 0 to 95, whose icon is shown.
    void SetRow(i32 row);
    i32 Row() const { return m_row; }

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    IconClip& m_icons;
    i32 m_row = 0;
};

// The icon as a picture for a button.
QPixmap SpellPixmap(IconClip& icons, i32 row);

}  // namespace spellwick
