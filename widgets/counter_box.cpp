#include "widgets/counter_box.h"

#include <QKeyEvent>

#include "model/purse_entries.h"

namespace spellwick {

namespace {

// Whether a key would type something into the box, and not what a counter takes.
bool IsDropped(const QKeyEvent& key) {
    if (key.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) {
        return false;
    }
    const QString text = key.text();
    if (text.isEmpty() || !text.at(0).isPrint()) {
        return false;
    }
    for (const char32_t character : text.toStdU32String()) {
        if (!CounterTakes(character)) {
            return true;
        }
    }
    return false;
}

}  // namespace

CounterBox::CounterBox(QWidget* parent) : EntryBox(parent) {
    setAlignment(Qt::AlignRight);
    setTextMargins(0, 0, 0, 0);
    setAttribute(Qt::WA_InputMethodEnabled, false);
}

void CounterBox::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Up || event->key() == Qt::Key_Down) {
        emit Stepped(event->key() == Qt::Key_Up ? 1 : -1);
        return;
    }
    if (IsDropped(*event)) {
        emit KeyDropped();
        return;
    }
    EntryBox::keyPressEvent(event);
}

}  // namespace spellwick
