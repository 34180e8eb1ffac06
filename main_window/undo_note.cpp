#include "main_window/undo_note.h"

#include <QAccessible>
#include <QScreen>
#include <algorithm>
#include <array>
#include <limits>

namespace spellwick {

namespace {

constexpr int kGap = 4;

}  // namespace

QPoint PlaceOfNote(const QRect& button, const QRect& window, QSize size, const QRect& room) {
    const int left =
        std::clamp(button.left(), room.left(), std::max(room.left(), room.right() - size.width()));
    const int top = button.center().y() - size.height() / 2;
    const std::array<QPoint, 4> places{{
        {left, window.bottom() + 1 + kGap},
        {window.right() + 1 + kGap, top},
        {window.left() - kGap - size.width(), top},
        {left, window.top() - kGap - size.height()},
    }};
    QPoint best(left, button.bottom() + 1 + kGap);
    int nearest = std::numeric_limits<int>::max();
    for (const QPoint& place : places) {
        const QRect note(place, size);
        const int distance =
            std::max({0, note.left() - button.right(), button.left() - note.right()}) +
            std::max({0, note.top() - button.bottom(), button.top() - note.bottom()});
        if (room.contains(note) && distance < nearest) {
            nearest = distance;
            best = place;
        }
    }
    return best;
}

void UndoNote::Show(const QString& text) {
    if (m_note == nullptr) {
        m_note = new Hint(text, m_button.window());
        m_note->setObjectName(QStringLiteral("UndoNote"));
        m_note->setWindowFlag(Qt::WindowTransparentForInput);
        m_note->setWordWrap(false);
        m_events.On(&m_note->Time(), &QTimer::timeout, "closing a note",
                    [note = m_note] { note->hide(); });
    }
    m_note->setText(text);
    m_note->adjustSize();
    const QWidget& window = *m_button.window();
    const QRect button(m_button.mapToGlobal(QPoint()), m_button.size());
    m_note->move(PlaceOfNote(button, window.frameGeometry(), m_note->size(),
                             window.screen()->availableGeometry()));
    m_note->show();
    m_note->Time().start(kUndoNoteTime);
    QAccessibleEvent spoken(m_note, QAccessible::Alert);
    QAccessible::updateAccessibility(&spoken);
}

}  // namespace spellwick
