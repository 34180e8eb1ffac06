#include "widgets/pictures.h"

#include <QString>

namespace spellwick {

namespace {

QPixmap LoadPicture(const QString& name, double devicePixelRatio) {
    const bool dense = devicePixelRatio > 1.0;
    QPixmap picture(
        QStringLiteral(":/pictures/%1%2.png").arg(name, dense ? QStringLiteral("@2x") : QString()));
    picture.setDevicePixelRatio(dense ? 2.0 : 1.0);
    return picture;
}

}  // namespace

PictureStrip::PictureStrip(const QString& name, int columns, int rows, double devicePixelRatio)
    : m_strip(LoadPicture(name, devicePixelRatio)),
      m_columns(columns),
      m_cellPixels(m_strip.width() / columns, m_strip.height() / rows),
      m_cellSize(m_cellPixels / m_strip.devicePixelRatio()) {}

QRect PictureStrip::Cell(i32 number) const {
    return {QPoint(number % m_columns * m_cellPixels.width(),
                   number / m_columns * m_cellPixels.height()),
            m_cellPixels};
}

Pictures::Pictures(double devicePixelRatio)
    : clip{{QStringLiteral("spells_colour"), 8, 12, devicePixelRatio},
           {QStringLiteral("spells_grey"), 8, 12, devicePixelRatio}},
      reagents(QStringLiteral("reagents"), 14, 1, devicePixelRatio),
      smallReagents(QStringLiteral("reagents_small"), 14, 1, devicePixelRatio),
      page{LoadPicture(QStringLiteral("page_necromancer"), devicePixelRatio),
           LoadPicture(QStringLiteral("page_paladin"), devicePixelRatio)} {}

}  // namespace spellwick
