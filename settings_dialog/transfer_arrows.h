// The pair of small arrows between two columns. An arrow, or the arrow key for it, moves one
// reagent to the side that it points to.
#pragma once

#include "model/bag_transfer.h"
#include "widgets/arrow_pair.h"

namespace spellwick {

class TransferArrows : public ArrowPair {
    Q_OBJECT

  public:
    explicit TransferArrows(QWidget* parent);

    QSize sizeHint() const override;

  signals:
    void MoveWanted(spellwick::BagSide to);

  protected:
    void keyPressEvent(QKeyEvent* event) override;
};

}  // namespace spellwick
