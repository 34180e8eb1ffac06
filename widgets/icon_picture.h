// Shows a cell of an icon strip over its whole area.
#pragma once

#include <QPixmap>
#include <QRect>
#include <QWidget>

namespace spellwick {

class IconPicture : public QWidget {
    Q_OBJECT

  public:
    explicit IconPicture(QWidget* parent) : QWidget(parent) { setMouseTracking(true); }

    // `cell` is in pixels of a strip at the density of the screen.
    void SetPicture(const QPixmap& strip, const QRect& cell);
    const QRect& Cell() const { return m_cell; }

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QPixmap m_strip;
    QRect m_cell;
};

}  // namespace spellwick
