// The table of spells: which one is read, and a copy of the player's own to edit.
#pragma once

#include <QLabel>
#include <QPushButton>
#include <QWidget>

#include "settings_dialog/services.h"
#include "widgets/guarded_events.h"

namespace spellwick {

// The button is disabled where there is no folder for the settings.
class OwnSpellTable : public QWidget {
    Q_OBJECT

  public:
    // `services` outlives it.
    OwnSpellTable(const SettingsServices& services, QWidget* parent);

    // Says which table is read.
    void Load();
    void ClickSpellTable();

    QLabel* LabelSpellTable;
    QPushButton* CommandSpellTable;

  private:
    const SettingsServices& m_services;
    const GuardedEvents m_events;
};

}  // namespace spellwick
