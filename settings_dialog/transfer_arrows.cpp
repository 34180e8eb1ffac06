#include "settings_dialog/transfer_arrows.h"

#include <QKeyEvent>

namespace spellwick {

TransferArrows::TransferArrows(QWidget* parent) : ArrowPair(Qt::Horizontal, parent) {
    setFocusPolicy(Qt::StrongFocus);
    connect(this, &ArrowPair::Pressed, this, [this](Arrow arrow) {
        emit MoveWanted(arrow == Arrow::kFirst ? BagSide::kLeft : BagSide::kRight);
    });
}

QSize TransferArrows::sizeHint() const {
    return {36, 18};
}

void TransferArrows::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Left || event->key() == Qt::Key_Right) {
        emit MoveWanted(event->key() == Qt::Key_Left ? BagSide::kLeft : BagSide::kRight);
    } else {
        ArrowPair::keyPressEvent(event);
    }
}

}  // namespace spellwick
