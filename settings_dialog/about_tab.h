// The About tab: the program's version and its makers.
#pragma once

#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>

#include "settings_dialog/settings_tab.h"

namespace spellwick {

class AboutTab : public SettingsTab {
    Q_OBJECT

  public:
    AboutTab(const SettingsServices& services, QWidget* parent);

    void Load() override;

    void ClickWeb();
    // Copies what stands on the tab.
    void ClickCopy();

    QLabel* Image1;
    QLabel* LabelVersion;
    QPushButton* CommandWeb;
    QPlainTextEdit* TextFacts;  // where the data lie, and the licences
    QPushButton* CommandCopy;
};

}  // namespace spellwick
