#include "settings_dialog/reagents_tab.h"

namespace spellwick {

ReagentsTab::ReagentsTab(const SettingsServices& services, QWidget* parent)
    : SettingsTab(services, parent) {}

}  // namespace spellwick
