// The ground (background) of a control in the program's colours.
#pragma once

#include <QColor>
#include <QWidget>

#include "model/colours.h"

namespace spellwick {

// Qt's colour for 0x00BBGGRR.
inline QColor ToQColor(Colour colour) {
    const auto bits = static_cast<unsigned>(colour);
    return {static_cast<int>(bits & 0xFFU), static_cast<int>((bits >> 8U) & 0xFFU),
            static_cast<int>((bits >> 16U) & 0xFFU)};
}

inline bool IsSystemColour(Colour colour) {
    return (static_cast<unsigned>(colour) & 0x80000000U) != 0;
}

// Sets a control's ground, with black text; a system colour restores the desktop's own colours.
// Does nothing if the ground is set already.
void SetGround(QWidget& control, Colour colour);

// The ground that SetGround set last; `unset` if there is none.
Colour GroundOf(const QWidget& control, Colour unset);

}  // namespace spellwick
