#include "widgets/form_font.h"

#include <QGuiApplication>

namespace spellwick {

QFont FormFont() {
    constexpr int kPixels = 12;
    QFont font = QGuiApplication::font();
    font.setPixelSize(kPixels);
    return font;
}

}  // namespace spellwick
