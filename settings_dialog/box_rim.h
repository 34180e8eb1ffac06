// On a dark ground the style draws the rim of an unticked check box nearly in the colour of the
// ground; this one draws it light.
#pragma once

#include <QProxyStyle>

namespace spellwick {

class BoxRim : public QProxyStyle {
    Q_OBJECT

  public:
    BoxRim() : QProxyStyle(QStringLiteral("Fusion")) {}

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
};

}  // namespace spellwick
