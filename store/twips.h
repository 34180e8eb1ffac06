// Saved places of windows are in twips, fifteenths of a pixel.
#pragma once

#include "text/number_forms.h"

namespace spellwick {

inline constexpr float kTwipsOfPixel = 15.0F;

inline float TwipsOf(int pixels) {
    return static_cast<float>(pixels) * kTwipsOfPixel;
}

// Rounded to a whole pixel. RuntimeFailure (overflow) beyond 32 bits.
inline i32 PixelsOf(float twips) {
    return ToI32(double{twips / kTwipsOfPixel});
}

}  // namespace spellwick
