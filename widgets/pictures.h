// The program's pictures: the icon strips of the spells, the reagents, the page pictures.
#pragma once

#include <QPixmap>
#include <QRect>
#include <QString>
#include <array>
#include <optional>
#include <utility>

#include "model/spell_record.h"

namespace spellwick {

// A picture from the resources, "reagents@2x"; null if there is none of that name.
QPixmap ReadPicture(const QString& name);

// A strip of equal cells, loaded at the screen's density.
class PictureStrip {
  public:
    // `name` is the resource without its extension; `columns` by `rows` cells.
    PictureStrip(const QString& name, int columns, int rows, double devicePixelRatio);

    const QPixmap& Strip() const { return m_strip; }

    // A cell in pixels of the strip; row-major, from 0.
    QRect Cell(i32 number) const;

    // Size of a cell in device-independent pixels.
    QSize CellSize() const { return m_cellSize; }

  private:
    QPixmap m_strip;
    int m_columns;
    QSize m_cellPixels;
    QSize m_cellSize;
};

// The icons of the spells in one tone. Each page of eight is loaded when it is first shown:
// decoding all of them would slow the start noticeably.
class IconClip {
  public:
    // `tone` is the part of the resource name that stands for the tone.
    IconClip(QString tone, double devicePixelRatio)
        : m_tone(std::move(tone)), m_devicePixelRatio(devicePixelRatio) {}

    // The strip that holds the icon of a row, 0 to 95, in the cell of the row's slot.
    const PictureStrip& StripOf(i32 row);

  private:
    QString m_tone;
    double m_devicePixelRatio;
    std::array<std::optional<PictureStrip>, kPageCount> m_pages;
};

// Pictures of the main window. PictureClip 0 is in colour, 1 in grey.
struct Pictures {
    explicit Pictures(double devicePixelRatio);

    // ImageList1, loaded when it is first asked for: for rows of 20 pixels, and for those of 15,
    // which only one arrangement has.
    const PictureStrip& Reagents();
    const PictureStrip& SmallReagents();

    std::array<IconClip, 2> clip;
    QPixmap page[2];  // Image1

  private:
    const PictureStrip& Loaded(std::optional<PictureStrip>& strip, const char* name) const;

    double m_devicePixelRatio;
    std::optional<PictureStrip> m_reagents;
    std::optional<PictureStrip> m_smallReagents;
};

}  // namespace spellwick
