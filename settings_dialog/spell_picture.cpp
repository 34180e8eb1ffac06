#include "settings_dialog/spell_picture.h"

#include <QPainter>

namespace spellwick {

namespace {

constexpr int kSide = 42;

}  // namespace

SpellPicture::SpellPicture(IconClip& icons, QWidget* parent) : QWidget(parent), m_icons(icons) {
    setFixedSize(kSide, kSide);
}

void SpellPicture::SetRow(i32 row) {
    m_row = row;
    update();
}

void SpellPicture::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    const PictureStrip& strip = m_icons.StripOf(m_row);
    painter.drawPixmap(rect(), strip.Strip(), strip.Cell(m_row % kSlotCount));
}

QPixmap SpellPixmap(IconClip& icons, i32 row) {
    const PictureStrip& strip = icons.StripOf(row);
    return strip.Strip().copy(strip.Cell(row % kSlotCount));
}

}  // namespace spellwick
