#include "widgets/counter_box.h"

#include <QFontMetrics>
#include <QKeyEvent>
#include <QStyle>
#include <QStyleOptionFrame>
#include <algorithm>
#include <string>

#include "model/purse_entries.h"

namespace spellwick {

namespace {

constexpr int kToolkitMargin = 2;  // that Qt keeps on either side of the text
constexpr int kSmallestPixels = 8;

// Whether a key would type something that a counter does not take. Qt types every character that is
// not a control character, unless Ctrl alone or Ctrl+Shift is down; with Alt it types.
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
    // Undoes Qt's own margins: three digits need the room.
    setTextMargins(-kToolkitMargin, 0, -kToolkitMargin + 1, 0);
    setAttribute(Qt::WA_InputMethodEnabled, false);
    connect(this, &QLineEdit::textChanged, this, &CounterBox::FitNumber);
}

void CounterBox::SetNumberFont(const QFont& font) {
    m_numberFont = font;
    FitNumber();
}

void CounterBox::resizeEvent(QResizeEvent* event) {
    EntryBox::resizeEvent(event);
    FitNumber();
}

void CounterBox::FitNumber() {
    if (!m_numberFont) {
        return;
    }
    QStyleOptionFrame frame;
    initStyleOption(&frame);
    const int room = style()->subElementRect(QStyle::SE_LineEditContents, &frame, this).width() -
                     2 * kToolkitMargin - textMargins().left() - textMargins().right();
    QFont fitting = *m_numberFont;
    while (fitting.pixelSize() > kSmallestPixels &&
           QFontMetrics(fitting).horizontalAdvance(text()) > room) {
        fitting.setPixelSize(fitting.pixelSize() - 1);
    }
    if (fitting != font()) {
        setFont(fitting);
    }
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
