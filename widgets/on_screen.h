// Brings windows back whose saved place is on no screen any more.
#pragma once

#include <QRect>
#include <QWidget>
#include <vector>

namespace spellwick {

// Where a window of this size, without its frame, goes that is to stand at `place`: there, if
// enough of it to be grasped lies on one of `screens`, else wholly onto the nearest one, with room
// for a frame. Any place is good, however far away.
QPoint OnScreens(QPoint place, QSize size, const std::vector<QRect>& screens);

// The same for a window, on the screens of the moment.
QPoint OnScreens(QPoint place, const QWidget& window);

// The nearest place to `place` for a window of this size, frame included, at which it lies wholly
// on one of `screens` and covers none of `others`, the most important first; where there is no room
// for that, the last ones are covered; `place` if even the first cannot be kept clear.
QPoint ClearOf(QPoint place, QSize size, std::vector<QRect> others,
               const std::vector<QRect>& screens);

// The same on the screens of the moment.
QPoint ClearOf(QPoint place, QSize size, const std::vector<QRect>& others);

}  // namespace spellwick
