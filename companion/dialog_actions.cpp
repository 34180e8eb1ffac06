#include "companion/dialog_actions.h"

#include "store/catalogue.h"
#include "store/text_forms.h"

namespace spellwick {

void DialogActions::ChooseArrangement(bool vertical) {
    if (vertical) {
        LayoutVertical();
    } else {
        LayoutHorizontal();
    }
    SaveOption(kDisplayVerticalKey.key, BoolText(vertical));
}

}  // namespace spellwick
