// The About tab: the program's version and its makers.
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
