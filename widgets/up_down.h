// The pair of small arrows beside a counter. A press steps the counter's number by one, from 0 to
// the most that it may show, and goes on while it is held.
#pragma once

#include <QLineEdit>
#include <QTimer>
#include <QWidget>

#include "text/number_types.h"

namespace spellwick {

inline constexpr i32 kMostCounted = 999;

// The number after a step up (+1) or down (-1) from a counter's text, 0 to `most`.
i32 SteppedCounter(const QString& text, int step, i32 most = kMostCounted);

class UpDown : public QWidget {
    Q_OBJECT

  public:
    UpDown(QLineEdit& buddy, QWidget* parent, i32 most = kMostCounted);

    // Writes the counter, then tells of the change; at the end of the range nothing changes.
    void Step(int step);

  signals:
    void Changed();

  protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;

  private:
    QLineEdit& m_buddy;
    i32 m_most;
    QTimer m_repeat;
    int m_heldStep = 0;
};

}  // namespace spellwick
