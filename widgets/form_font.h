// The font of all forms.
#pragma once

#include <QFont>

namespace spellwick {

// The desktop's font at the size that the forms are designed for.
QFont FormFont();

}  // namespace spellwick
