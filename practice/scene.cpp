#include "practice/scene.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QPolygonF>
#include <QRadialGradient>
#include <cmath>

namespace spellwick::practice {
namespace {

// Everything is drawn on a stage of this size and scaled to the widget.
constexpr int kStageWidth = 520;
constexpr int kStageHeight = 210;
constexpr QPointF kMoon(404, 52);
constexpr QPointF kFeet(236, 182);
constexpr QPointF kStaffHead(263, 127);

void PaintSky(QPainter& painter) {
    QLinearGradient sky(0, 0, 0, kStageHeight);
    sky.setColorAt(0.0, QColor(0x10, 0x12, 0x2b));
    sky.setColorAt(0.55, QColor(0x2a, 0x2f, 0x58));
    sky.setColorAt(1.0, QColor(0x6d, 0x5a, 0x73));
    painter.fillRect(QRectF(0, 0, kStageWidth, kStageHeight), sky);
    for (int star = 0; star < 90; ++star) {
        // Steps of the golden ratio spread the stars evenly and reproducibly.
        const double x = std::fmod(star * 0.618034 * kStageWidth, kStageWidth);
        const double y = std::fmod(star * 0.754878 * 130.0, 130.0);
        const int light = 90 + (star * 53) % 140;
        painter.setPen(Qt::NoPen);
        painter.setBrush(QColor(255, 250, 230, light));
        const double radius = star % 9 == 0 ? 1.2 : 0.7;
        painter.drawEllipse(QPointF(x, y), radius, radius);
    }
    QRadialGradient halo(kMoon, 70);
    halo.setColorAt(0.0, QColor(255, 244, 214, 110));
    halo.setColorAt(1.0, QColor(255, 244, 214, 0));
    painter.setBrush(halo);
    painter.drawEllipse(kMoon, 70, 70);
    painter.setBrush(QColor(0xf6, 0xec, 0xcf));
    painter.drawEllipse(kMoon, 19, 19);
    painter.setBrush(QColor(0xe2, 0xd3, 0xad, 150));
    painter.drawEllipse(kMoon + QPointF(-6, -4), 5, 4);
    painter.drawEllipse(kMoon + QPointF(7, 6), 4, 3);
}

void PaintRidge(QPainter& painter, const QPolygonF& ridge, const QColor& colour) {
    QPolygonF ground = ridge;
    ground << QPointF(kStageWidth, kStageHeight) << QPointF(0, kStageHeight);
    painter.setPen(Qt::NoPen);
    painter.setBrush(colour);
    painter.drawPolygon(ground);
}

void PaintTower(QPainter& painter) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0x1b, 0x1c, 0x35));
    painter.drawRect(QRectF(82, 88, 30, 80));
    for (int merlon = 0; merlon < 4; ++merlon) {
        painter.drawRect(QRectF(78 + merlon * 10.5, 80, 6, 10));
    }
    painter.drawRect(QRectF(78, 87, 38, 5));
    painter.drawRect(QRectF(112, 126, 34, 42));
    painter.drawPolygon(QPolygonF({{110, 127}, {129, 110}, {149, 127}}));
    QRadialGradient glow(QPointF(97, 112), 18);
    glow.setColorAt(0.0, QColor(255, 190, 90, 140));
    glow.setColorAt(1.0, QColor(255, 190, 90, 0));
    painter.setBrush(glow);
    painter.drawEllipse(QPointF(97, 112), 18, 18);
    painter.setBrush(QColor(0xff, 0xcf, 0x7a));
    painter.drawRoundedRect(QRectF(94, 106, 6, 11), 3, 3);
    painter.drawRoundedRect(QRectF(126, 138, 5, 8), 2, 2);
}

void PaintLand(QPainter& painter) {
    PaintRidge(painter,
               {{0, 138},
                {54, 104},
                {96, 130},
                {150, 92},
                {214, 138},
                {286, 108},
                {340, 132},
                {404, 98},
                {462, 128},
                {520, 106}},
               QColor(0x39, 0x36, 0x5c));
    PaintRidge(painter,
               {{0, 152}, {70, 148}, {150, 160}, {230, 150}, {320, 158}, {420, 144}, {520, 152}},
               QColor(0x25, 0x29, 0x47));
    PaintTower(painter);
    QPainterPath hill(QPointF(0, 176));
    hill.cubicTo(120, 150, 220, 196, 330, 178);
    hill.cubicTo(410, 166, 470, 172, 520, 180);
    hill.lineTo(kStageWidth, kStageHeight);
    hill.lineTo(0, kStageHeight);
    hill.closeSubpath();
    QLinearGradient grass(0, 160, 0, kStageHeight);
    grass.setColorAt(0.0, QColor(0x1e, 0x2c, 0x33));
    grass.setColorAt(1.0, QColor(0x0e, 0x14, 0x1c));
    painter.setBrush(grass);
    painter.drawPath(hill);
    for (const double x : {398.0, 424.0, 452.0, 490.0}) {
        const double height = 34 + std::fmod(x, 17.0);
        painter.setBrush(QColor(0x12, 0x1c, 0x24));
        painter.drawPolygon(QPolygonF({{x - 10, 182}, {x, 182 - height}, {x + 10, 182}}));
    }
}

void PaintCaster(QPainter& painter, bool magic) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0, 0, 0, 90));
    painter.drawEllipse(kFeet, 20, 4);
    QPainterPath robe(kFeet + QPointF(-15, 0));
    robe.quadTo(kFeet + QPointF(-9, -30), kFeet + QPointF(-8, -38));
    robe.quadTo(kFeet + QPointF(0, -44), kFeet + QPointF(8, -38));
    robe.quadTo(kFeet + QPointF(9, -30), kFeet + QPointF(15, 0));
    robe.closeSubpath();
    QLinearGradient cloth(kFeet + QPointF(-15, -40), kFeet + QPointF(15, 0));
    cloth.setColorAt(0.0, QColor(0x5d, 0x3a, 0x6e));
    cloth.setColorAt(1.0, QColor(0x33, 0x1f, 0x45));
    painter.setBrush(cloth);
    painter.drawPath(robe);
    QPainterPath hood(kFeet + QPointF(-9, -40));
    hood.quadTo(kFeet + QPointF(-11, -56), kFeet + QPointF(2, -63));
    hood.quadTo(kFeet + QPointF(11, -54), kFeet + QPointF(9, -40));
    hood.closeSubpath();
    painter.drawPath(hood);
    painter.setBrush(QColor(0xd9, 0xb4, 0x94));
    painter.drawEllipse(kFeet + QPointF(1, -47), 5, 6);
    painter.setPen(QPen(QColor(0x8a, 0x66, 0x3c), 3, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(kFeet + QPointF(22, -2), kStaffHead);
    painter.setPen(QPen(QColor(0x45, 0x2b, 0x5a), 6, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(kFeet + QPointF(8, -34), kFeet + QPointF(23, -27));
    const double reach = magic ? 46 : 15;
    QRadialGradient glow(kStaffHead, reach);
    glow.setColorAt(0.0, magic ? QColor(190, 240, 255, 235) : QColor(150, 200, 255, 120));
    glow.setColorAt(0.25, magic ? QColor(110, 200, 255, 120) : QColor(110, 180, 255, 60));
    glow.setColorAt(1.0, QColor(90, 170, 255, 0));
    painter.setPen(Qt::NoPen);
    painter.setBrush(glow);
    painter.drawEllipse(kStaffHead, reach, reach);
    painter.setBrush(QColor(0xcf, 0xee, 0xff));
    painter.drawEllipse(kStaffHead, 4, 4);
}

void PaintOutlined(QPainter& painter, const QRectF& place, int alignment, const QString& text,
                   const QColor& colour) {
    painter.setPen(QColor(0, 0, 0, 190));
    for (const QPointF& shadow : {QPointF(-1, 0), QPointF(1, 0), QPointF(0, -1), QPointF(0, 1)}) {
        painter.drawText(place.translated(shadow), alignment, text);
    }
    painter.setPen(colour);
    painter.drawText(place, alignment, text);
}

}  // namespace

Scene::Scene(QWidget* parent) : QWidget(parent) {
    setMinimumSize(kStageWidth, kStageHeight);
    setAccessibleName(tr("The game's view"));
}

void Scene::ShowCharacter(const QString& name, const QString& server) {
    m_name = name;
    m_server = server;
    m_words.clear();
    m_magic = false;
    update();
}

void Scene::ShowWords(const QString& words, bool magic) {
    m_words = words;
    m_magic = magic;
    update();
}

void Scene::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.save();
    painter.scale(width() / double{kStageWidth}, height() / double{kStageHeight});
    PaintSky(painter);
    PaintLand(painter);
    if (!m_name.isEmpty()) {
        PaintCaster(painter, m_magic);
    }
    painter.restore();
    QFont font = painter.font();
    font.setPixelSize(13);
    font.setBold(true);
    painter.setFont(font);
    const QRectF whole = rect();
    if (m_name.isEmpty()) {
        PaintOutlined(painter, whole.adjusted(0, 24, 0, 0), Qt::AlignHCenter | Qt::AlignTop,
                      tr("Choose a character below"), QColor(0xf0, 0xe2, 0xb8));
        return;
    }
    const double top = height() * (kFeet.y() - 104) / kStageHeight;
    const QRectF words(16, top - 20, width() - 2 * 16, 40);
    const double shift = width() * (kFeet.x() / kStageWidth - 0.5);
    PaintOutlined(painter, words.translated(shift, 0),
                  static_cast<int>(Qt::AlignHCenter) | Qt::AlignBottom | Qt::TextWordWrap, m_words,
                  m_magic ? QColor(0xbf, 0xe8, 0xff) : QColor(0xff, 0xf3, 0xc8));
    PaintOutlined(painter, whole.adjusted(0, 0, -12, -8), Qt::AlignRight | Qt::AlignBottom,
                  m_name + QStringLiteral("  \u00b7  ") + m_server, QColor(0xf0, 0xe2, 0xb8));
}

}  // namespace spellwick::practice
