// Counts the paintings of some widgets and the paintings asked for by being shown. An event is
// counted before the widget has it.
#pragma once

#include <QEvent>
#include <QWidget>
#include <initializer_list>

namespace spellwick::testing_support {

class Paintings : public QObject {
  public:
    explicit Paintings(std::initializer_list<QWidget*> widgets) {
        for (QWidget* widget : widgets) {
            widget->installEventFilter(this);
        }
    }
    bool eventFilter(QObject* watched, QEvent* event) override {
        count += event->type() == QEvent::Paint ? 1 : 0;
        asked += event->type() == QEvent::UpdateLater ? 1 : 0;
        return QObject::eventFilter(watched, event);
    }

    int count = 0;
    int asked = 0;
};

}  // namespace spellwick::testing_support
