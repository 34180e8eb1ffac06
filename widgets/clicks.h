// Clicks on widgets that have no click of their own, for event filters.
#pragma once

#include <QMouseEvent>
#include <QWidget>

namespace spellwick {

// Whether an event that a filter sees ends a click on the watched widget: a mouse button that is
// let go over it.
inline bool IsClick(const QObject* watched, const QEvent* event) {
    const auto* widget = qobject_cast<const QWidget*>(watched);
    return widget != nullptr && event->type() == QEvent::MouseButtonRelease &&
           widget->rect().contains(static_cast<const QMouseEvent*>(event)->position().toPoint());
}

}  // namespace spellwick
