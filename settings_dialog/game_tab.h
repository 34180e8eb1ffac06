// The Game tab: how Spellwick and the game's window work together.
#pragma once

#include <QCheckBox>

#include "settings_dialog/controls.h"
#include "settings_dialog/settings_tab.h"
#include "settings_dialog/typing_options.h"

namespace spellwick {

class GameTab : public SettingsTab {
    Q_OBJECT

  public:
    GameTab(const SettingsServices& services, QWidget* parent);

    void Load() override;
    QWidget* FirstControl() override { return CheckFront; }

    void ClickFront();

    QCheckBox* CheckFront;
    TypingOptions* Typing;
};

}  // namespace spellwick
