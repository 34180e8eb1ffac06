#include "settings_dialog/reagent_pictures.h"

#include <QPainter>
#include <algorithm>

namespace spellwick {

void ReagentPictures::Show(i32 first, int count) {
    m_first = first;
    m_count = count;
    update();
}

void ReagentPictures::SetPitch(int pitch) {
    m_pitch = pitch;
    update();
}

QRect ReagentPictures::PlaceOf(int picture) const {
    // In the middle of its row, a pixel higher.
    const int top = std::max(0, (m_pitch - m_strip.CellSize().height()) / 2 - 1);
    const int along = m_pitch * picture;
    const QPoint place =
        m_orientation == Qt::Horizontal ? QPoint(along, 0) : QPoint(0, along + top);
    return {place, m_strip.CellSize()};
}

void ReagentPictures::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    for (int picture = 0; picture < m_count; ++picture) {
        painter.drawPixmap(PlaceOf(picture), m_strip.Strip(), m_strip.Cell(m_first - 1 + picture));
    }
}

}  // namespace spellwick
