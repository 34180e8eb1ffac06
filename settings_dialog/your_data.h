// The player's data in the player's hands: all of it in a file, back from one, and a character
// removed.
#pragma once

#include <QLabel>
#include <QPushButton>
#include <QWidget>

#include "settings_dialog/services.h"
#include "widgets/guarded_events.h"

namespace spellwick {

// Disabled without services.data.
class YourData : public QWidget {
    Q_OBJECT

  public:
    // `services` outlives it.
    YourData(const SettingsServices& services, QWidget* parent);

    void ClickExport();
    void ClickImport();
    void ClickRemove();

    QPushButton* CommandExport;
    QPushButton* CommandImport;
    QPushButton* CommandRemove;

  signals:
    // Nothing that a form has taken in holds any more.
    void Replaced();

  private:
    QPushButton* MakeButton(const char* name, const char* caption, const char* toolTip);
    // Says why something was not done; true if it was.
    bool IsDone(const std::string& trouble);
    bool Asks(const std::string& question);

    const SettingsServices& m_services;
    const GuardedEvents m_events;
};

}  // namespace spellwick
