#include "settings_dialog/skills_tab.h"

namespace spellwick {

SkillsTab::SkillsTab(const SettingsServices& services, QWidget* parent)
    : SettingsTab(services, parent) {}

}  // namespace spellwick
