#include "settings_dialog/reagent_column.h"

#include <QPainter>

namespace spellwick {

ReagentColumn::ReagentColumn(const PictureStrip& strip, QWidget* parent)
    : QWidget(parent), m_strip(strip) {
    setFixedWidth(strip.CellSize().width());
}

void ReagentColumn::Show(i32 first, int count) {
    m_first = first;
    m_count = count;
    update();
}

void ReagentColumn::SetPitch(int pitch) {
    m_pitch = pitch;
    update();
}

void ReagentColumn::paintEvent(QPaintEvent* /*event*/) {
    constexpr int kTop = 2;
    QPainter painter(this);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    for (int line = 0; line < m_count; ++line) {
        painter.drawPixmap(QRect(QPoint(0, m_pitch * line + kTop), m_strip.CellSize()),
                           m_strip.Strip(), m_strip.Cell(m_first - 1 + line));
    }
}

}  // namespace spellwick
