// Says for three seconds what Undo has given back, beside the window and near the button. It takes
// neither the focus nor a click.
#pragma once

#include <QWidget>
#include <chrono>

#include "widgets/guarded_events.h"
#include "widgets/hint.h"

namespace spellwick {

inline constexpr std::chrono::milliseconds kUndoNoteTime{3000};

// The place for a note of this size: outside of `window`, as near to `button` as there is room for
// it within `room`; else under the button.
QPoint PlaceOfNote(const QRect& button, const QRect& window, QSize size, const QRect& room);

class UndoNote {
  public:
    // `button` is a child of the window and outlives the note.
    UndoNote(QWidget& button, const GuardedEvents& events) : m_button(button), m_events(events) {}

    // Its time starts anew if it is shown already.
    void Show(const QString& text);

  private:
    QWidget& m_button;
    const GuardedEvents& m_events;
    Hint* m_note = nullptr;  // a child of the window, made at the first undo
};

}  // namespace spellwick
