#include "settings_dialog/services.h"

#include "store/text_forms.h"

namespace spellwick {

void SetSwitch(const SettingsServices& services, const KeyOf<bool>& key, bool on) {
    services.state.*key.cell = on;
    services.companion.SaveOption(key.key, BoolText(on));
}

}  // namespace spellwick
