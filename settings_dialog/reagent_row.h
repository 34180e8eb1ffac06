// The pictures of the reagents above the columns of a grid.
#pragma once

#include <QWidget>
#include <array>

#include "text/number_types.h"
#include "widgets/pictures.h"

namespace spellwick {

class ReagentRow : public QWidget {
    Q_OBJECT

  public:
    static constexpr int kColumns = 8;
    static constexpr int kColumnWidth = 40;

    ReagentRow(const PictureStrip& strip, QWidget* parent);

    // Place of a column's picture, "imgReg(column)". What is drawn there is up to the row.
    QWidget& ImgReg(int column) { return *m_places[static_cast<std::size_t>(column)]; }

    // The reagent that column 0 shows.
    void SetFirstReagent(i32 reagent);
    i32 FirstReagent() const { return m_firstReagent; }

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    const PictureStrip& m_strip;
    std::array<QWidget*, kColumns> m_places{};
    i32 m_firstReagent = 1;
};

}  // namespace spellwick
