// The option to look for assist tools in Wine, with what it does and what keeps it from working.
#pragma once

#include <QCheckBox>
#include <QLabel>
#include <QTimer>
#include <QWidget>

#include "settings_dialog/services.h"
#include "widgets/guarded_events.h"

namespace spellwick {

// Hidden on a system that has no such search.
class WineToolsOption : public QWidget {
    Q_OBJECT

  public:
    // `services` outlives it.
    WineToolsOption(const SettingsServices& services, QWidget* parent);

    // Fills it from the shared state.
    void Load();
    void ClickWineTools();

    QCheckBox* CheckWineTools;
    QLabel* LabelWineTools;

  private:
    void ShowTrouble();

    const SettingsServices& m_services;
    const GuardedEvents m_events;
    QTimer m_looks;
};

}  // namespace spellwick
