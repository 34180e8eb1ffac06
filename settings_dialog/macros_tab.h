// The tab of the keys of the client's macros.
#pragma once

#include "settings_dialog/common_dialog.h"
#include "settings_dialog/settings_tab.h"

namespace spellwick {

class MacrosTab : public SettingsTab {
    Q_OBJECT

  public:
    MacrosTab(const SettingsServices& services, CommonDialog& commonDialog, QWidget* parent);
};

}  // namespace spellwick
