#include "settings_dialog/spell_texts_tab.h"

#include <QGridLayout>
#include <QSignalBlocker>
#include <limits>

namespace spellwick {

namespace {

// The longest text that the game accepts in one line.
constexpr int kLineLength = 76;

// A text is never cut short.
void LiftLimit(QLineEdit& box) {
    box.setMaxLength(std::numeric_limits<int>::max());
}

}  // namespace

SpellTextsTab::SpellTextsTab(const SettingsServices& services, QWidget* parent)
    : SettingsTab(services, parent),
      ComboSpellText(Named(new ChoiceBox(this), QStringLiteral("ComboSpellText"),
                           QStringLiteral("Page of spells"))),
      CheckSpellText(Named(new QCheckBox(QStringLiteral("Send texts when casting spells"), this),
                           QStringLiteral("CheckSpellText"))),
      CheckSendSuffix(Named(new QCheckBox(QStringLiteral("Send suffix"), this),
                            QStringLiteral("CheckSendSuffix"))),
      SpellSuffix(Named(new QLineEdit(this), QStringLiteral("SpellSuffix"),
                        QStringLiteral("Suffix of all texts"))) {
    m_events.On(ComboSpellText, &QComboBox::activated, "choosing a page of spells",
                [this] { RefreshSpellTextPage(); });
    m_events.On(CheckSpellText, &QCheckBox::clicked, "changing an option",
                [this] { ClickSendText(); });
    m_events.On(CheckSendSuffix, &QCheckBox::clicked, "changing an option",
                [this] { ClickSendSuffix(); });
    m_events.On(SpellSuffix, &QLineEdit::textChanged, "changing the suffix",
                [this] { ChangeSuffix(); });
    LiftLimit(*SpellSuffix);
    for (int row = 0; row < kSlotCount; ++row) {
        const auto at = static_cast<std::size_t>(row);
        m_names[at] = Named(new QLabel(this), IndexedName("LabelSpell", row + kSlotCount));
        m_names[at]->setTextFormat(Qt::PlainText);
        TextSpell[at] = Named(new QLineEdit(this), IndexedName("TextSpell", row),
                              QStringLiteral("Text of spell %1").arg(row + 1));
        LiftLimit(*TextSpell[at]);
        m_events.On(TextSpell[at], &QLineEdit::textChanged, "changing the text of a spell",
                    [this, row] { ChangeText(row); });
    }
    PlaceControls();
    // Tab order as on the screen: the page, its texts, then the switches.
    QWidget* before = ComboSpellText;
    for (QLineEdit* box : TextSpell) {
        setTabOrder(before, box);
        before = box;
    }
    setTabOrder(before, CheckSpellText);
}

void SpellTextsTab::PlaceControls() {
    auto* grid = new QGridLayout(this);
    grid->setColumnStretch(1, 1);
    grid->setHorizontalSpacing(8);
    int line = 0;
    grid->addWidget(ComboSpellText, line, 0);
    grid->addWidget(
        MakeCaption(
            this, 26,
            QStringLiteral("Enter text here that you want to say while you are casting the spell")),
        line, 1);
    for (int row = 0; row < kSlotCount; ++row) {
        ++line;
        grid->addWidget(&LabelSpell(row), line, 0);
        grid->addWidget(TextSpell[static_cast<std::size_t>(row)], line, 1);
    }
    grid->addWidget(
        MakeCaption(this, 81,
                    QStringLiteral("Prefix with : and a space to emote, ! and a space to yell, ; "
                                   "and a space to whisper")),
        ++line, 0, 1, 2);
    grid->addWidget(CheckSpellText, ++line, 0, 1, 2);
    grid->addWidget(CheckSendSuffix, ++line, 0);
    grid->addWidget(SpellSuffix, line, 1);
    grid->setRowStretch(++line, 1);
}

void SpellTextsTab::Load() {
    LabelSpell(0).setMinimumWidth(WidestSpellName(LabelSpell(0), m_state.Spells));
    ComboSpellText->addItems(PageNames());
    ComboSpellText->setCurrentIndex(0);
    Refresh();
}

void SpellTextsTab::Refresh() {
    CheckSpellText->setChecked(m_state.SendSpellText == 1);
    CheckSendSuffix->setChecked(m_state.SendSpellSuffix == 1);
    ShowText(*SpellSuffix, m_state.SpellTextSuffix);
    RefreshSpellTextPage();
}

void SpellTextsTab::RefreshSpellTextPage() {
    for (int row = 0; row < kSlotCount; ++row) {
        const SpellRecord& spell = m_state.Spells(SpellRow(row));
        LabelSpell(row).setText(ToQString(spell.Name));
        TextSpell[static_cast<std::size_t>(row)]->setAccessibleName(
            QStringLiteral("Text of %1").arg(ToQString(spell.Name)));
        if (ShowText(*TextSpell[static_cast<std::size_t>(row)], spell.SpellText)) {
            ChangeText(row);
        }
    }
}

void SpellTextsTab::ChangeText(int row) {
    QLineEdit& box = *TextSpell[static_cast<std::size_t>(row)];
    const QString text = box.text();
    m_state.Spells(SpellRow(row)).SpellText = ToText(text);
    // ODDITY(long-text-marked): from the 77th character on a spell text is marked while it is
    // typed, so that the next key replaces the selection; kept because it shows what the game
    // would not say, and a pasted text is never cut short.
    if (text.size() > kLineLength) {
        box.setSelection(kLineLength, static_cast<int>(text.size()) - kLineLength);
    }
}

void SpellTextsTab::ClickSendText() {
    m_state.SendSpellText = CheckSpellText->isChecked() ? i16{1} : i16{0};
}

void SpellTextsTab::ClickSendSuffix() {
    m_state.SendSpellSuffix = CheckSendSuffix->isChecked() ? i16{1} : i16{0};
}

void SpellTextsTab::ChangeSuffix() {
    m_state.SpellTextSuffix = ToText(SpellSuffix->text());
}

}  // namespace spellwick
