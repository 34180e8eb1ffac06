#include "widgets/icon_picture.h"

#include <QFontMetrics>
#include <QPainter>

#include "widgets/form_font.h"

namespace spellwick {

namespace {

constexpr int kCornerPixels = 9;
constexpr int kCornerMargin = 2;

QFont Small(QFont font) {
    font.setPixelSize(font.pixelSize() * kCornerPixels / kDesignFontPixels);
    return font;
}

}  // namespace

void IconPicture::SetPicture(const QPixmap& strip, const QRect& cell) {
    if (cell != m_cell || strip.cacheKey() != m_strip.cacheKey()) {
        m_strip = strip;
        m_cell = cell;
        update();
    }
}

void IconPicture::SetCorner(const QString& word) {
    if (word != m_corner) {
        m_corner = word;
        update();
    }
}

int IconPicture::CornerWidth(const QString& word) const {
    return QFontMetrics(Small(font())).horizontalAdvance(word) + 2 * kCornerMargin;
}

void IconPicture::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawPixmap(rect(), m_strip, m_cell);
    constexpr int kDark = 128;
    if (palette().color(QPalette::Window).lightness() < kDark && !m_cell.isEmpty()) {
        painter.setPen(QColor(255, 255, 255, 120));
        painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 4.0, 4.0);
    }
    if (m_corner.isEmpty()) {
        return;
    }
    painter.setFont(Small(font()));
    const QSize size(CornerWidth(m_corner), painter.fontMetrics().height());
    const QRect corner(QPoint(width() - size.width(), height() - size.height()), size);
    painter.fillRect(corner, QColor(0, 0, 0, 190));
    painter.setPen(Qt::white);
    painter.drawText(corner, Qt::AlignCenter, m_corner);
}

}  // namespace spellwick
