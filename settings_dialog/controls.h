// The little that the tabs share in making their controls.
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

// A list to choose from. The wheel changes it only where the user is at work, not when it passes
// by.
class ChoiceBox : public QComboBox {
    Q_OBJECT

  public:
    explicit ChoiceBox(QWidget* parent);

  protected:
    void wheelEvent(QWheelEvent* event) override;
};

// One of several captions with a picture; the one that is on stands out in every theme.
class PictureOption : public QToolButton {
    Q_OBJECT

  public:
    PictureOption(const QString& caption, QWidget* parent);

  protected:
    void initStyleOption(QStyleOptionToolButton* option) const override;
};

// Gives a control its name and the words that a person would want read out.
template <typename Control>
Control* Named(Control* control, const QString& name, const QString& accessibleName = {}) {
    control->setObjectName(name);
    control->setAccessibleName(accessibleName);
    return control;
}

// A caption "Label1(index)".
QLabel* MakeCaption(QWidget* parent, int index, const QString& text);

// A heading for a column of this width: what is too wide goes on in the next line.
QLabel* MakeHeading(QWidget* parent, int index, const QString& text, int width);

// A thin line across.
QFrame* MakeLine(QWidget* parent, const QString& name);

// Writes a box unless it holds the text already, so that an unchanged box keeps its selection. True
// when the text changed; the box sends no signal, so that a change handler can be called in its
// place and its failures reach the caller.
bool ShowText(QLineEdit& box, const std::string& text);

// Room for the longest name of a spell, in pixels.
int WidestSpellName(const QLabel& label, const SpellTable& spells);

// The twelve pages of eight spells as the tabs list them.
QStringList PageNames();

}  // namespace spellwick
