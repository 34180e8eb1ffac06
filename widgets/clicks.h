// For event filters: clicks on widgets that have no clicked signal.
#pragma once

#include <QMouseEvent>
#include <QWidget>

namespace spellwick {

// Whether an event ends a click on the watched widget: the release of a mouse button over it.
inline bool IsClick(const QObject* watched, const QEvent* event) {
    const auto* widget = qobject_cast<const QWidget*>(watched);
    return widget != nullptr && event->type() == QEvent::MouseButtonRelease &&
           widget->rect().contains(static_cast<const QMouseEvent*>(event)->position().toPoint());
}

}  // namespace spellwick
