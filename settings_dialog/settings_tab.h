// The common face of the tabs: each is the panel with its controls, and no tab knows another.
#pragma once

#include <QWidget>
#include <string_view>
#include <utility>

#include "settings_dialog/services.h"

namespace spellwick {

// While it lives the program itself fills controls, and handlers that look at Updating do nothing.
class UpdatingScope {
  public:
    explicit UpdatingScope(SharedState& state) : m_state(state) { m_state.Updating = true; }
    ~UpdatingScope() { m_state.Updating = false; }
    UpdatingScope(const UpdatingScope&) = delete;
    UpdatingScope& operator=(const UpdatingScope&) = delete;
    UpdatingScope(UpdatingScope&&) = delete;
    UpdatingScope& operator=(UpdatingScope&&) = delete;

  private:
    SharedState& m_state;
};

class SettingsTab : public QWidget {
    Q_OBJECT

  public:
    // `services` outlives the tab.
    SettingsTab(const SettingsServices& services, QWidget* parent)
        : QWidget(parent), m_services(services), m_state(services.state) {}

    // The tab's steps of the load of the dialog, once for each run. The controls are there before.
    virtual void Load() {}

    // Refills the controls from the shared state.
    virtual void Refresh() {}

    // The control that takes the focus when the tab is opened; null for none.
    virtual QWidget* FirstControl() { return nullptr; }

    // Whether an entry counts only when its box is left and is unfinished until then; else it acts
    // while it is typed.
    virtual bool TakesEntriesWhenLeft() const { return true; }

  protected:
    // Runs a handler through the guard; `action` says in words what the user is doing.
    template <typename Step>
    void Guarded(std::string_view action, Step&& step) {
        Guard(m_services.failures, action, std::forward<Step>(step));
    }

    const SettingsServices& m_services;
    SharedState& m_state;
};

}  // namespace spellwick
