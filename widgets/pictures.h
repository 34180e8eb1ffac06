// The program's pictures: the icon strips of the spells, the reagents, the page pictures.
#pragma once

#include <QPixmap>
#include <QRect>

#include "model/number_types.h"

namespace spellwick {

// A strip of equal cells, loaded at the density that suits the screen.
class PictureStrip {
  public:
    // `name` is the resource without its ending; `columns` by `rows` cells.
    PictureStrip(const QString& name, int columns, int rows, double devicePixelRatio);

    const QPixmap& Strip() const { return m_strip; }

    // Cell in pixels of the strip; row-major, from 0.
    QRect Cell(i32 number) const;

    // Size of a cell in device-independent pixels.
    QSize CellSize() const { return m_cellSize; }

  private:
    QPixmap m_strip;
    int m_columns;
    QSize m_cellPixels;
    QSize m_cellSize;
};

// Strips of the main window. PictureClip 0 is in colour, 1 in grey.
struct Pictures {
    explicit Pictures(double devicePixelRatio);

    PictureStrip clip[2];
    PictureStrip reagents;       // ImageList1 for rows of 20 pixels
    PictureStrip smallReagents;  // the same for rows of 15 pixels
    QPixmap page[2];             // Image1
};

}  // namespace spellwick
