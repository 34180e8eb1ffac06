#include "settings_dialog/reagent_row.h"

#include <QPainter>

#include "widgets/texts.h"

namespace spellwick {

namespace {

constexpr QSize kPicture(28, 20);

}  // namespace

ReagentRow::ReagentRow(const PictureStrip& strip, QWidget* parent)
    : QWidget(parent), m_strip(strip) {
    setFixedSize((kColumns - 1) * kColumnWidth + kPicture.width(), kPicture.height());
    for (int column = 0; column < kColumns; ++column) {
        auto* place = new QWidget(this);
        place->setObjectName(IndexedName("imgReg", column));
        place->setGeometry(QRect(QPoint(column * kColumnWidth, 0), kPicture));
        m_places[static_cast<std::size_t>(column)] = place;
    }
}

void ReagentRow::SetFirstReagent(i32 reagent) {
    m_firstReagent = reagent;
    update();
}

void ReagentRow::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    for (int column = 0; column < kColumns; ++column) {
        if (ImgReg(column).isVisible()) {
            painter.drawPixmap(QRect(QPoint(column * kColumnWidth, 0), m_strip.CellSize()),
                               m_strip.Strip(), m_strip.Cell(m_firstReagent - 1 + column));
        }
    }
}

}  // namespace spellwick
