// Controls that several tabs share, and helpers to make them.
#pragma once

#include <QComboBox>
#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QStringList>
#include <QToolButton>
#include <string>

#include "model/spell_record.h"
#include "widgets/texts.h"

namespace spellwick {

inline constexpr int kMostListedRows = 20;

// A combo box that opens at most kMostListedRows high and ignores the mouse wheel, which works in
// the open list alone: what it would change are the user's data.
class ChoiceBox : public QComboBox {
    Q_OBJECT

  public:
    explicit ChoiceBox(QWidget* parent);

    void showPopup() override;

  protected:
    void wheelEvent(QWheelEvent* event) override;
};

// One of several exclusive buttons with a picture; the checked one stands out in every theme.
class PictureOption : public QToolButton {
    Q_OBJECT

  public:
    PictureOption(const QString& caption, QWidget* parent);

  protected:
    void initStyleOption(QStyleOptionToolButton* option) const override;
};

// Sets a control's object name and its accessible name.
template <typename Control>
Control* Named(Control* control, const QString& name, const QString& accessibleName = {}) {
    control->setObjectName(name);
    control->setAccessibleName(accessibleName);
    return control;
}

// A caption "Label1(index)".
QLabel* MakeCaption(QWidget* parent, int index, const QString& text);

// A heading for a column of this width in pixels of the design; longer text wraps.
QLabel* MakeHeading(QWidget* parent, int index, const QString& text, int width);

// A thin horizontal line.
QFrame* MakeLine(QWidget* parent, const QString& name);

// Writes an edit unless it holds the text already, so that an unchanged edit keeps its selection.
// True if the text changed. The edit sends no signal: the caller runs the change handler itself, so
// that its failures reach the caller.
bool ShowText(QLineEdit& edit, const std::string& text);

// Width of the longest spell name, in pixels.
int WidestSpellName(const QLabel& label, const SpellTable& spells);

// The twelve pages of eight spells as the tabs list them.
QStringList PageNames();

}  // namespace spellwick
