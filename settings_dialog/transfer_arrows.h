// The pair of small arrows between two columns: a press moves something to the side that the arrow
// points to, and goes on while it is held.
#pragma once

#include <QTimer>
#include <QWidget>

#include "model/bag_transfer.h"

namespace spellwick {

class TransferArrows : public QWidget {
    Q_OBJECT

  public:
    explicit TransferArrows(QWidget* parent);

    QSize sizeHint() const override;

  signals:
    void Pressed(spellwick::BagSide to);

  protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void StepHeld(int untilNextMs);

    QTimer m_repeat{this};
    BagSide m_side = BagSide::kLeft;
    bool m_held = false;
};

}  // namespace spellwick
