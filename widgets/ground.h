// The ground (background) of a control in the program's colours.
#pragma once

#include <QColor>
#include <QWidget>

#include "model/colours.h"

namespace spellwick {

// The toolkit's colour for 0x00BBGGRR.
inline QColor ToQColor(Colour colour) {
    const auto bits = static_cast<unsigned>(colour);
    return {static_cast<int>(bits & 0xFFU), static_cast<int>((bits >> 8U) & 0xFFU),
            static_cast<int>((bits >> 16U) & 0xFFU)};
}

inline bool IsSystemColour(Colour colour) {
    return (static_cast<unsigned>(colour) & 0x80000000U) != 0;
}

// Gives a control a ground with black text on it; a system colour gives back the desktop's own
// colours. Costs nothing when the ground is as asked.
void SetGround(QWidget& control, Colour colour);

// The ground that SetGround gave last; `unset` for a control that never got one.
Colour GroundOf(const QWidget& control, Colour unset);

}  // namespace spellwick
