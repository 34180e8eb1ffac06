// A figure on a coloured ground: the castable amount and the chance of a slot.
#pragma once

#include "model/colours.h"
#include "widgets/spoken.h"

namespace spellwick {

class CellLabel : public FigureLabel {
    Q_OBJECT

  public:
    explicit CellLabel(QWidget* parent) : FigureLabel(parent) { setAlignment(Qt::AlignCenter); }

    void SetCellGround(Colour colour);
    Colour CellGround() const { return m_ground; }

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    Colour m_ground = kButtonFace;
};

}  // namespace spellwick
