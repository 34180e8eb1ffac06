// The pictures of the reagents along a grid: above its columns or beside its rows.
#pragma once

#include <QWidget>

#include "text/number_types.h"
#include "widgets/pictures.h"

namespace spellwick {

class ReagentPictures : public QWidget {
    Q_OBJECT

  public:
    ReagentPictures(const PictureStrip& strip, Qt::Orientation orientation, QWidget* parent)
        : QWidget(parent), m_strip(strip), m_orientation(orientation) {}

    // Draws `count` reagents, starting with `first`.
    void Show(i32 first, int count);

    // The distance from one picture to the next, in pixels.
    void SetPitch(int pitch);

    // The place of a picture, counted from 0.
    QRect PlaceOf(int picture) const;

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    const PictureStrip& m_strip;
    Qt::Orientation m_orientation;
    i32 m_first = 1;
    int m_count = 0;
    int m_pitch = 0;
};

}  // namespace spellwick
