// A figure on a coloured ground: the castable amount and the chance of a slot.
#pragma once

#include <QLabel>

#include "model/colours.h"

namespace spellwick {

class CellLabel : public QLabel {
    Q_OBJECT

  public:
    explicit CellLabel(QWidget* parent) : QLabel(parent) { setAlignment(Qt::AlignCenter); }

    void SetCellGround(Colour colour);
    Colour CellGround() const { return m_ground; }

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    Colour m_ground = kButtonFace;
};

}  // namespace spellwick
