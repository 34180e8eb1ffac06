#include "settings_dialog/own_spell_table.h"

#include <QVBoxLayout>

#include "settings_dialog/controls.h"

namespace spellwick {

OwnSpellTable::OwnSpellTable(const SettingsServices& services, QWidget* parent)
    : QWidget(parent),
      LabelSpellTable(Named(new QLabel(this), QStringLiteral("LabelSpellTable"))),
      CommandSpellTable(Named(new QPushButton(this), QStringLiteral("CommandSpellTable"))),
      m_services(services),
      m_events(services.failures, this) {
    LabelSpellTable->setWordWrap(true);
    LabelSpellTable->setTextFormat(Qt::PlainText);
    CommandSpellTable->setAutoDefault(false);
    CommandSpellTable->setEnabled(m_services.spellTable.Own().has_value());
    auto* all = new QVBoxLayout(this);
    all->setContentsMargins(0, 0, 0, 0);
    all->addWidget(LabelSpellTable);
    all->addWidget(CommandSpellTable, 0, Qt::AlignLeft);
    m_events.On(CommandSpellTable, &QPushButton::clicked, "opening the spell table",
                [this] { ClickSpellTable(); });
    Load();
}

void OwnSpellTable::Load() {
    const bool own = m_services.spellTable.HasOwn();
    CommandSpellTable->setText(own ? QStringLiteral("Open my spell table")
                                   : QStringLiteral("Make a spell table of my own"));
    LabelSpellTable->setText(
        own ? QStringLiteral("Each start reads your own table of spells. Without the file it reads "
                             "the delivered one.")
            : QStringLiteral("The delivered table of spells is read. A copy of your own is read "
                             "instead from the next start on."));
    CommandSpellTable->setToolTip(
        m_services.spellTable.Own() ? ToQString(m_services.spellTable.Own()->string()) : QString());
}

void OwnSpellTable::ClickSpellTable() {
    std::string trouble = m_services.spellTable.MakeOwn();
    Load();
    if (trouble.empty() && !m_services.desktop.OpenDocument(*m_services.spellTable.Own())) {
        trouble = NotOpened(*m_services.spellTable.Own());
    }
    if (!trouble.empty()) {
        m_services.boxes.Show({.text = trouble, .icon = BoxIcon::kExclamation});
    }
}

}  // namespace spellwick
