#include "widgets/ground.h"

#include <QPalette>
#include <QVariant>

namespace spellwick {

namespace {

constexpr const char* kGroundProperty = "spellwickGround";

}  // namespace

void SetGround(QWidget& control, Colour colour) {
    const QVariant before = control.property(kGroundProperty);
    if (before.isValid() && before.toInt() == colour) {
        return;
    }
    control.setProperty(kGroundProperty, colour);
    if (IsSystemColour(colour)) {
        control.setPalette(QPalette());
        return;
    }
    QPalette palette = control.palette();
    for (const QPalette::ColorRole ground : {QPalette::Base, QPalette::Window}) {
        palette.setColor(ground, ToQColor(colour));
    }
    for (const QPalette::ColorRole text : {QPalette::Text, QPalette::WindowText}) {
        palette.setColor(text, Qt::black);
    }
    control.setPalette(palette);
}

Colour GroundOf(const QWidget& control, Colour unset) {
    const QVariant ground = control.property(kGroundProperty);
    return ground.isValid() ? ground.toInt() : unset;
}

}  // namespace spellwick
