#include "widgets/counter_box.h"

#include <QKeyEvent>
#include <algorithm>
#include <string>

#include "model/purse_entries.h"

namespace spellwick {

namespace {

// Whether a key would type something into the box, and not what a counter takes. The toolkit types
// whatever is no control character and comes without Ctrl alone or Ctrl with Shift, also with Alt.
bool IsDropped(const QKeyEvent& key) {
    const Qt::KeyboardModifiers modifiers = key.modifiers() & ~Qt::KeypadModifier;
    if (modifiers == Qt::ControlModifier ||
        modifiers == (Qt::ControlModifier | Qt::ShiftModifier)) {
        return false;
    }
    const std::u32string typed = key.text().toStdU32String();
    return std::ranges::any_of(typed, [](char32_t character) {
        return QChar::category(character) != QChar::Other_Control && !CounterTakes(character);
    });
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
