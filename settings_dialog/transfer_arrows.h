// The pair of small arrows between two columns: they move something to the side that they point
// to, also by the arrow keys.
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
