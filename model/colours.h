// The fixed colours of the program. A colour is 0x00BBGGRR; with the top bit set it is a system
// colour, which depends on the desktop.
#pragma once

#include "text/number_types.h"

namespace spellwick {

using Colour = i32;

inline constexpr Colour kRed = 0x0000FF;
inline constexpr Colour kGreen = 0x00FF00;
inline constexpr Colour kYellow = 0x00FFFF;
inline constexpr Colour kBlue = 0xFF0000;
inline constexpr Colour kAllowedInTown = 0xFFFF80;  // light cyan
inline constexpr Colour kNotInTown = 0x8080FF;      // light red

inline constexpr Colour kWindowBackground = static_cast<Colour>(0x80000005U);
inline constexpr Colour kButtonFace = static_cast<Colour>(0x8000000FU);

}  // namespace spellwick
