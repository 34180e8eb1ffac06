// The tab that says what this is and who made it.
#pragma once

#include <QLabel>
#include <QPushButton>

#include "settings_dialog/settings_tab.h"

namespace spellwick {

class AboutTab : public SettingsTab {
    Q_OBJECT

  public:
    AboutTab(const SettingsServices& services, QWidget* parent);

    void Load() override;

    void ClickWeb();

    QLabel* Image1;
    QLabel* LabelVersion;
    QPushButton* CommandWeb;
};

}  // namespace spellwick
