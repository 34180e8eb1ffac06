// A pair of small arrows, one above the other or side by side. A press steps at once and goes on
// while it is held, also when the mouse slides off the arrow.
#pragma once

#include <QWidget>
#include <array>

#include "widgets/spoken.h"

class QToolButton;

namespace spellwick {

enum class Arrow { kFirst, kSecond };  // up or left, down or right

class ArrowPair : public QWidget, public Spoken {
    Q_OBJECT

  public:
    // A vertical pair points up and down, a horizontal one left and right.
    ArrowPair(Qt::Orientation orientation, QWidget* parent);

    QAccessible::Role SpokenRole() const override { return QAccessible::Grouping; }
    QString SpokenName() const override { return accessibleName(); }

  signals:
    // One step; due at the press and at each repeat.
    void Pressed(spellwick::Arrow arrow);

  protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    // Of a button that is not the left one: goes no further.
    void mousePressEvent(QMouseEvent* /*event*/) override {}

  private:
    bool IsVertical() const { return m_orientation == Qt::Vertical; }
    void MakeArrow(Arrow arrow);
    void StepOnce(Arrow arrow);

    Qt::Orientation m_orientation;
    std::array<QToolButton*, 2> m_arrows{};
    bool m_stepping = false;
    bool m_interrupted = false;  // a repeat was due while a step was going on
};

}  // namespace spellwick
