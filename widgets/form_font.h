// The font of all forms, and how much larger than designed their boxes are beside it.
#pragma once

#include <QFont>
#include <QSize>

namespace spellwick {

// The height of the font for which the forms are designed: the toolkit's default of 9 points.
inline constexpr int kDesignFontPixels = 12;

// The height of the desktop's font in pixels, kDesignFontPixels to 24. The screen's density is no
// part of it: the toolkit enlarges all windows by that.
int FormFontPixels();

// The desktop's font at a height in pixels.
QFont FormFont(int pixels = FormFontPixels());

// How much larger than designed the forms are: 1 at the default font, and at most 2.
double FormScale();

// Pixels of the design in pixels of a form.
int Scaled(int pixels);
QSize Scaled(QSize size);

}  // namespace spellwick
