#include "settings_dialog/macros_tab.h"

namespace spellwick {

MacrosTab::MacrosTab(const SettingsServices& services, CommonDialog& /*commonDialog*/,
                     QWidget* parent)
    : SettingsTab(services, parent) {}

}  // namespace spellwick
