// The options of what stands on the icons: the spells' keys in the main window, the seconds of the
// running timers, and how those timers are shown.
#pragma once

#include <QCheckBox>
#include <QWidget>

#include "settings_dialog/controls.h"
#include "settings_dialog/services.h"
#include "widgets/guarded_events.h"

namespace spellwick {

class IconOptions : public QWidget {
    Q_OBJECT

  public:
    // `services` outlives it.
    IconOptions(const SettingsServices& services, QWidget* parent);

    // Fills it from the shared state.
    void Load();
    void ClickKeys();
    void ClickSeconds();
    void ChooseTimers();

    QCheckBox* CheckKeysOnIcons;
    QCheckBox* CheckSecondsOnIcons;
    ChoiceBox* ComboTimers;  // its entries are TimerMode in its order

  private:
    const SettingsServices& m_services;
    const GuardedEvents m_events;
};

}  // namespace spellwick
