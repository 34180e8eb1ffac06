// Shows a cell of an icon strip over its whole area, and a word in small letters in its corner.
#pragma once

#include <QPixmap>
#include <QRect>
#include <QString>
#include <QWidget>

namespace spellwick {

class IconPicture : public QWidget {
    Q_OBJECT

  public:
    explicit IconPicture(QWidget* parent) : QWidget(parent) { setMouseTracking(true); }

    // `cell` is in pixels of a strip at the density of the screen.
    void SetPicture(const QPixmap& strip, const QRect& cell);
    const QRect& Cell() const { return m_cell; }

    // The word in the lower right corner; empty for none.
    void SetCorner(const QString& word);
    const QString& Corner() const { return m_corner; }
    // Width of a word there, in pixels.
    int CornerWidth(const QString& word) const;

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QPixmap m_strip;
    QRect m_cell;
    QString m_corner;
};

}  // namespace spellwick
