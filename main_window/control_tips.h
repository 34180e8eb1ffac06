// One sentence for each control of the main window that has no tooltip of its own. Made when it is
// shown.
#pragma once

#include <QString>

namespace spellwick {

// By the control's name, such as "CheckCircle(3)"; empty for a control that has none.
QString ControlTip(const QString& name);

}  // namespace spellwick
