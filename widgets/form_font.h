// The font of all forms.
#pragma once

#include <QFont>

namespace spellwick {

// The desktop's font in the size that the forms are laid out for.
QFont FormFont();

}  // namespace spellwick
