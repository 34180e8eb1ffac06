// The tab of the stock of ten bags.
#pragma once

#include "settings_dialog/settings_tab.h"

namespace spellwick {

class ReagentsTab : public SettingsTab {
    Q_OBJECT

  public:
    ReagentsTab(const SettingsServices& services, QWidget* parent);
};

}  // namespace spellwick
