#include "widgets/pictures.h"

#include <QImageReader>
#include <QString>

namespace spellwick {

namespace {

constexpr int kReagentCells = 14;

QPixmap LoadPicture(const QString& name, double devicePixelRatio) {
    const bool dense = devicePixelRatio > 1.0;
    QPixmap picture = ReadPicture(
        QStringLiteral(":/pictures/%1%2.png").arg(name, dense ? QStringLiteral("@2x") : QString()));
    picture.setDevicePixelRatio(dense ? 2.0 : 1.0);
    return picture;
}

}  // namespace

// Left to find the format out, the toolkit first loads all its plug-ins for pictures and asks each.
QPixmap ReadPicture(const QString& file) {
    QImageReader reader(file, "png");
    reader.setAutoDetectImageFormat(false);
    return QPixmap::fromImageReader(&reader);
}

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

const PictureStrip& IconClip::StripOf(i32 row) {
    const i32 page = row / kSlotCount;
    std::optional<PictureStrip>& strip = m_pages.at(static_cast<std::size_t>(page));
    if (!strip) {
        strip.emplace(QStringLiteral("spells_%1_%2").arg(m_tone).arg(page + 1), kSlotCount, 1,
                      m_devicePixelRatio);
    }
    return *strip;
}

Pictures::Pictures(double devicePixelRatio)
    : clip{IconClip(QStringLiteral("colour"), devicePixelRatio),
           IconClip(QStringLiteral("grey"), devicePixelRatio)},
      page{LoadPicture(QStringLiteral("page_necromancer"), devicePixelRatio),
           LoadPicture(QStringLiteral("page_paladin"), devicePixelRatio)},
      m_devicePixelRatio(devicePixelRatio) {}

const PictureStrip& Pictures::Reagents() {
    return Loaded(m_reagents, "reagents");
}

const PictureStrip& Pictures::SmallReagents() {
    return Loaded(m_smallReagents, "reagents_small");
}

const PictureStrip& Pictures::Loaded(std::optional<PictureStrip>& strip, const char* name) const {
    if (!strip) {
        strip.emplace(QLatin1String(name), kReagentCells, 1, m_devicePixelRatio);
    }
    return *strip;
}

}  // namespace spellwick
