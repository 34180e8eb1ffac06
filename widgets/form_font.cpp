#include "widgets/form_font.h"

#include <QGuiApplication>
#include <algorithm>

namespace spellwick {

int FormFontPixels() {
    constexpr double kPixelsOfPoint = 96.0 / 72.0;
    constexpr int kMostPixels = 2 * kDesignFontPixels;
    const QFont font = QGuiApplication::font();
    const int pixels =
        font.pixelSize() > 0 ? font.pixelSize() : qRound(font.pointSizeF() * kPixelsOfPoint);
    return std::clamp(pixels, kDesignFontPixels, kMostPixels);
}

QFont FormFont(int pixels) {
    QFont font = QGuiApplication::font();
    font.setPixelSize(pixels);
    return font;
}

double FormScale() {
    return static_cast<double>(FormFontPixels()) / kDesignFontPixels;
}

int Scaled(int pixels) {
    return qRound(pixels * FormScale());
}

QSize Scaled(QSize size) {
    return {Scaled(size.width()), Scaled(size.height())};
}

}  // namespace spellwick
