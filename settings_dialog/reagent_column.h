// The pictures of the reagents beside the rows of a grid.
#pragma once

#include <QWidget>

#include "text/number_types.h"
#include "widgets/pictures.h"

namespace spellwick {

class ReagentColumn : public QWidget {
    Q_OBJECT

  public:
    ReagentColumn(const PictureStrip& strip, QWidget* parent);

    // The reagents that are drawn from the top, one each `pitch` pixels.
    void Show(i32 first, int count);
    void SetPitch(int pitch);

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    const PictureStrip& m_strip;
    i32 m_first = 1;
    int m_count = 0;
    int m_pitch = 0;
};

}  // namespace spellwick
