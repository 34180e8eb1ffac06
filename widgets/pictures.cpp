#include "widgets/pictures.h"

#include <QImage>
#include <QImageReader>
#include <QResource>
#include <QString>
#include <QtEndian>

namespace spellwick {

namespace {

constexpr int kReagentCells = 14;

QPixmap LoadPicture(const QString& name, double devicePixelRatio) {
    const bool dense = devicePixelRatio > 1.0;
    QPixmap picture = ReadPicture(dense ? name + QStringLiteral("@2x") : name);
    picture.setDevicePixelRatio(dense ? 2.0 : 1.0);
    return picture;
}

// The form is told in data/art/unpacked.py.
QPixmap Unpacked(const QByteArray& bytes) {
    constexpr qsizetype kNumber = sizeof(quint32);
    constexpr qsizetype kHeader = 2 * kNumber;
    constexpr quint32 kLongestSide = 4096;
    if (bytes.size() < kHeader) {
        return {};
    }
    const auto width = qFromLittleEndian<quint32>(bytes.constData());
    const auto height = qFromLittleEndian<quint32>(bytes.constData() + kNumber);
    const qsizetype pixels = qsizetype{width} * height;
    if (width > kLongestSide || height > kLongestSide ||
        bytes.size() != kHeader + pixels * kNumber) {
        return {};
    }
    QImage image(static_cast<int>(width), static_cast<int>(height),
                 QImage::Format_ARGB32_Premultiplied);
    qFromLittleEndian<quint32>(bytes.constData() + kHeader, pixels, image.bits());
    return QPixmap::fromImage(std::move(image));
}

}  // namespace

// The pictures of the start are unpacked: even the search of the toolkit for its plug-ins, before
// it reads any PNG, takes as long as all of them. Left to find the format out, it would load the
// plug-ins and ask each.
QPixmap ReadPicture(const QString& name) {
    const QString file = QStringLiteral(":/pictures/") + name;
    if (const QResource unpacked(file + QStringLiteral(".argb")); unpacked.isValid()) {
        return Unpacked(unpacked.uncompressedData());
    }
    QImageReader reader(file + QStringLiteral(".png"), "png");
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
