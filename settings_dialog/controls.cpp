#include "settings_dialog/controls.h"

#include <QAbstractItemView>
#include <QFontMetrics>
#include <QScreen>
#include <QSignalBlocker>
#include <QStyleOptionToolButton>
#include <QWheelEvent>
#include <algorithm>

#include "widgets/form_font.h"

namespace spellwick {

ChoiceBox::ChoiceBox(QWidget* parent) : QComboBox(parent) {
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    setFocusPolicy(Qt::StrongFocus);
    setMaxVisibleItems(16);
}

// The style opens all rows that fit on the screen.
void ChoiceBox::showPopup() {
    QComboBox::showPopup();
    QWidget* popup = view()->window();
    const int most =
        view()->sizeHintForRow(0) * kMostListedRows + popup->height() - view()->height();
    if (count() <= kMostListedRows || popup->height() <= most) {
        return;
    }
    const QRect room = screen()->availableGeometry();
    const int box = mapToGlobal(QPoint()).y();
    const int wanted = box + height() / 2 - most / 2;
    popup->setGeometry(
        popup->x(), std::clamp(wanted, room.top(), std::max(room.top(), room.bottom() + 1 - most)),
        popup->width(), most);
    view()->scrollTo(view()->currentIndex(), QAbstractItemView::PositionAtCenter);
}

void ChoiceBox::wheelEvent(QWheelEvent* event) {
    event->ignore();
}

PictureOption::PictureOption(const QString& caption, QWidget* parent) : QToolButton(parent) {
    setText(caption);
    setAccessibleName(caption);
    setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    setCheckable(true);
    setAutoExclusive(true);
    setFocusPolicy(Qt::StrongFocus);
}

void PictureOption::initStyleOption(QStyleOptionToolButton* option) const {
    QToolButton::initStyleOption(option);
    if (isChecked()) {
        QPalette& colours = option->palette;
        colours.setBrush(QPalette::Button, colours.brush(QPalette::Highlight));
        colours.setBrush(QPalette::ButtonText, colours.brush(QPalette::HighlightedText));
    }
}

QLabel* MakeCaption(QWidget* parent, int index, const QString& text) {
    auto* caption = Named(new QLabel(text, parent), IndexedName("Label1", index));
    caption->setTextFormat(Qt::PlainText);
    return caption;
}

QLabel* MakeHeading(QWidget* parent, int index, const QString& text, int width) {
    QLabel* heading = MakeCaption(parent, index, text);
    heading->setWordWrap(true);
    heading->setFixedWidth(Scaled(width));
    heading->setAlignment(Qt::AlignHCenter | Qt::AlignBottom);
    return heading;
}

QFrame* MakeLine(QWidget* parent, const QString& name) {
    auto* line = Named(new QFrame(parent), name);
    line->setFrameShape(QFrame::HLine);
    line->setFrameShadow(QFrame::Plain);
    line->setForegroundRole(QPalette::Mid);
    return line;
}

bool ShowText(QLineEdit& edit, const std::string& text) {
    const QString shown = ToQString(text);
    if (edit.text() == shown) {
        return false;
    }
    const QSignalBlocker quiet(edit);
    edit.setText(shown);
    return true;
}

int WidestSpellName(const QLabel& label, const SpellTable& spells) {
    const QFontMetrics metrics(label.font());
    int widest = 0;
    for (i32 row = 0; row <= std::min(kLastRow, spells.Last()); ++row) {
        widest = std::max(widest, metrics.size(0, ToQString(spells(row).Name)).width());
    }
    return widest;
}

QStringList PageNames() {
    QStringList names;
    for (int level = 1; level <= 8; ++level) {
        names << QStringLiteral("Level %1 spells").arg(level);
    }
    return names << QStringLiteral("Necromancer 1") << QStringLiteral("Necromancer 2")
                 << QStringLiteral("Paladin 1") << QStringLiteral("Paladin 2");
}

}  // namespace spellwick
