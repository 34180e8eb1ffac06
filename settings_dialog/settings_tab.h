// The base of the tabs. Each tab is the panel with its controls; no tab knows another.
#pragma once

#include <QWidget>

#include "companion/way.h"
#include "settings_dialog/services.h"
#include "widgets/guarded_events.h"

namespace spellwick {

class SettingsTab : public QWidget {
    Q_OBJECT

  public:
    // `services` outlives the tab.
    SettingsTab(const SettingsServices& services, QWidget* parent)
        : QWidget(parent),
          m_services(services),
          m_state(services.state),
          m_events(services.failures, this) {}

    // Fills the tab, once per run; the controls exist already.
    virtual void Load() {}

    // Refills the controls from the shared state.
    virtual void Refresh() {}

    // The control that gets the focus when the tab is opened; null for none.
    virtual QWidget* FirstControl() { return nullptr; }

    // The control that a hint leads to, made ready for the hint's spell.
    virtual QWidget* ControlFor(const Target& /*target*/) { return FirstControl(); }

    // Whether an entry counts only when its edit loses the focus; else it takes effect while it is
    // typed.
    virtual bool TakesEntriesWhenLeft() const { return true; }

  protected:
    const SettingsServices& m_services;
    SharedState& m_state;
    const GuardedEvents m_events;
};

}  // namespace spellwick
