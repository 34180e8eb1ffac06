#include "widgets/icon_picture.h"

#include <QPainter>

namespace spellwick {

void IconPicture::SetPicture(const QPixmap& strip, const QRect& cell) {
    if (cell != m_cell || strip.cacheKey() != m_strip.cacheKey()) {
        m_strip = strip;
        m_cell = cell;
        update();
    }
}

void IconPicture::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawPixmap(rect(), m_strip, m_cell);
}

}  // namespace spellwick
