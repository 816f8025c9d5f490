#include "warningpictograms.h"

#include "painting.h"

#include <QPainter>
#include <QPainterPath>
#include <QPolygonF>
#include <QtMath>

#include <array>

using namespace Painting;

// Each id gets a theme (what the warning is about: driving, alcohol, the sun…)
// and a frame (a square tile, a prohibition sign, a tile with a warning badge,
// a round seal). Consecutive ids walk through the themes first, so neighbours differ most.

namespace {

constexpr int pictogramSize = 64;
constexpr qreal design = 100;

using Glyph = void (*)(QPainter&, const QColor& ink, const QColor& paper);

void line(QPainter& painter, QPointF from, QPointF to, qreal width, const QColor& color)
{
    painter.setPen(QPen(color, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawLine(from, to);
}

void polyline(QPainter& painter, const QPolygonF& points, qreal width, const QColor& color)
{
    painter.setPen(QPen(color, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    painter.drawPolyline(points);
}

void disc(QPainter& painter, QPointF centre, qreal radius, const QColor& color)
{
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawEllipse(centre, radius, radius);
}

void car(QPainter& p, const QColor& ink, const QColor& paper)
{
    QPainterPath body;
    body.addRoundedRect(QRectF(12, 46, 76, 24), 8, 8);
    QPainterPath roof;
    roof.addPolygon(QPolygonF({QPointF(26, 50), QPointF(35, 28), QPointF(66, 28), QPointF(77, 50)}));
    p.fillPath(body.united(roof).simplified(), ink);
    p.setPen(Qt::NoPen);
    p.setBrush(paper);
    p.drawPolygon(QPolygonF({QPointF(34, 45), QPointF(39.5, 33), QPointF(48, 33), QPointF(48, 45)}));
    p.drawPolygon(QPolygonF({QPointF(53, 45), QPointF(53, 33), QPointF(63, 33), QPointF(69.5, 45)}));
    for (qreal x : {32.0, 68.0}) {
        disc(p, QPointF(x, 70), 13, paper);
        disc(p, QPointF(x, 70), 10, ink);
        disc(p, QPointF(x, 70), 3.5, paper);
    }
}

void alcohol(QPainter& p, const QColor& ink, const QColor&)
{
    QPainterPath bowl;
    bowl.moveTo(31, 16);
    bowl.lineTo(69, 16);
    bowl.cubicTo(71, 36, 64, 52, 50, 54);
    bowl.cubicTo(36, 52, 29, 36, 31, 16);
    bowl.closeSubpath();
    QPainterPath wine;
    wine.addRect(QRectF(20, 32, 60, 30));
    p.fillPath(bowl.intersected(wine), ink);
    p.setPen(QPen(ink, 5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    p.setBrush(Qt::NoBrush);
    p.drawPath(bowl);
    line(p, QPointF(50, 54), QPointF(50, 80), 6, ink);
    p.setPen(Qt::NoPen);
    p.setBrush(ink);
    p.drawRoundedRect(QRectF(34, 78, 32, 7), 3.5, 3.5);
}

void pregnancy(QPainter& p, const QColor& ink, const QColor&)
{
    disc(p, QPointF(49, 19), 10, ink);
    QPainterPath body;
    body.moveTo(41, 34);
    body.cubicTo(46, 31.5, 54, 31.5, 58, 34.5);
    body.lineTo(60.5, 46);
    body.cubicTo(76, 49, 78, 69, 62, 72);
    body.lineTo(60, 90);
    body.lineTo(44, 90);
    body.lineTo(41.5, 68);
    body.cubicTo(36, 57, 36, 44, 41, 34);
    body.closeSubpath();
    p.fillPath(body, ink);
}

void breastfeeding(QPainter& p, const QColor& ink, const QColor& paper)
{
    // Mother.
    disc(p, QPointF(34, 19), 10, ink);
    QPainterPath mother;
    mother.addRoundedRect(QRectF(20, 33, 28, 57), 11, 11);
    p.fillPath(mother, ink);
    // Baby in her arm, set apart by a rim of the background colour.
    QPainterPath baby;
    baby.addEllipse(QPointF(68, 44), 11, 11);
    QPainterPath babyBody;
    babyBody.addRoundedRect(QRectF(-17, -8.5, 34, 17), 8.5, 8.5);
    QTransform lying;
    lying.translate(52, 60);
    lying.rotate(-22);
    baby = baby.united(lying.map(babyBody));
    p.setPen(QPen(paper, 6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    p.setBrush(ink);
    p.drawPath(baby);
    // The arm under the baby.
    const QPolygonF arm({QPointF(30, 44), QPointF(38, 72), QPointF(70, 62)});
    polyline(p, arm, 11, paper);
    polyline(p, arm, 6.5, ink);
}

void sun(QPainter& p, const QColor& ink, const QColor&)
{
    disc(p, QPointF(50, 50), 16, ink);
    for (int i = 0; i < 8; ++i) {
        const qreal angle = qDegreesToRadians(i * 45.0 + 22.5);
        const QPointF direction(qCos(angle), qSin(angle));
        line(p, QPointF(50, 50) + direction * 24, QPointF(50, 50) + direction * 35, 6.5, ink);
    }
}

void clock(QPainter& p, const QColor& ink, const QColor&)
{
    p.setPen(QPen(ink, 7));
    p.setBrush(Qt::NoBrush);
    p.drawEllipse(QPointF(50, 50), 32, 32);
    for (int i = 0; i < 4; ++i) {
        const qreal angle = qDegreesToRadians(i * 90.0);
        const QPointF direction(qCos(angle), qSin(angle));
        line(p, QPointF(50, 50) + direction * 22, QPointF(50, 50) + direction * 25, 4, ink);
    }
    line(p, QPointF(50, 50), QPointF(50, 28), 6, ink);
    line(p, QPointF(50, 50), QPointF(64, 58), 6, ink);
    disc(p, QPointF(50, 50), 5, ink);
}

void food(QPainter& p, const QColor& ink, const QColor&)
{
    p.setBrush(Qt::NoBrush);
    p.setPen(QPen(ink, 5));
    p.drawEllipse(QPointF(50, 52), 22, 22);
    p.setPen(QPen(ink, 2.5));
    p.drawEllipse(QPointF(50, 52), 12, 12);
    // Fork.
    for (qreal x : {11.0, 16.0, 21.0})
        line(p, QPointF(x, 22), QPointF(x, 36), 2.8, ink);
    polyline(p, QPolygonF({QPointF(11, 36), QPointF(16, 41), QPointF(21, 36)}), 3, ink);
    line(p, QPointF(16, 40), QPointF(16, 82), 5.5, ink);
    // Knife.
    QPainterPath blade;
    blade.moveTo(81, 20);
    blade.cubicTo(91, 26, 92, 44, 87, 52);
    blade.lineTo(81, 52);
    blade.closeSubpath();
    p.fillPath(blade, ink);
    line(p, QPointF(84, 50), QPointF(84, 82), 5.5, ink);
}

void milk(QPainter& p, const QColor& ink, const QColor& paper)
{
    p.setPen(Qt::NoPen);
    p.setBrush(ink);
    p.drawRoundedRect(QRectF(39, 10, 22, 9), 2, 2);
    p.drawPolygon(QPolygonF({QPointF(32, 36), QPointF(39, 20), QPointF(61, 20), QPointF(68, 36)}));
    p.drawRoundedRect(QRectF(32, 34, 36, 54), 3, 3);
    line(p, QPointF(33, 36), QPointF(67, 36), 2.5, paper);
    QPainterPath drop;
    drop.moveTo(50, 47);
    drop.cubicTo(56, 55, 60, 61, 60, 66);
    drop.cubicTo(60, 72, 55, 76.5, 50, 76.5);
    drop.cubicTo(45, 76.5, 40, 72, 40, 66);
    drop.cubicTo(40, 61, 44, 55, 50, 47);
    drop.closeSubpath();
    p.fillPath(drop, paper);
}

void grapefruit(QPainter& p, const QColor& ink, const QColor& paper)
{
    const QPointF centre(50, 50);
    disc(p, centre, 34, ink);
    disc(p, centre, 28, paper);
    disc(p, centre, 25, ink);
    for (int i = 0; i < 8; ++i) {
        const qreal angle = qDegreesToRadians(i * 45.0);
        line(p, centre, centre + QPointF(qCos(angle), qSin(angle)) * 26, 3.2, paper);
    }
    disc(p, centre, 5, paper);
}

void drowsiness(QPainter& p, const QColor& ink, const QColor&)
{
    QPainterPath moon;
    moon.addEllipse(QPointF(42, 58), 28, 28);
    QPainterPath bite;
    bite.addEllipse(QPointF(58, 45), 23, 23);
    p.fillPath(moon.subtracted(bite), ink);
    polyline(p, QPolygonF({QPointF(58, 12), QPointF(74, 12), QPointF(58, 28), QPointF(74, 28)}), 5, ink);
    polyline(p, QPolygonF({QPointF(78, 36), QPointF(89, 36), QPointF(78, 47), QPointF(89, 47)}), 4, ink);
}

void caution(QPainter& p, const QColor& ink, const QColor& paper)
{
    p.setPen(QPen(ink, 9, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    p.setBrush(ink);
    p.drawPolygon(QPolygonF({QPointF(50, 15), QPointF(87, 81), QPointF(13, 81)}));
    p.setPen(Qt::NoPen);
    p.setBrush(paper);
    p.drawRoundedRect(QRectF(45.5, 36, 9, 27), 4.5, 4.5);
    disc(p, QPointF(50, 72), 5, paper);
}

void kidney(QPainter& p, const QColor& ink, const QColor&)
{
    QPainterPath bean;
    bean.moveTo(56, 16);
    bean.cubicTo(34, 12, 20, 32, 22, 52);
    bean.cubicTo(24, 74, 40, 86, 56, 80);
    bean.cubicTo(67, 76, 68, 64, 60, 58);
    bean.cubicTo(54, 54, 54, 44, 60, 40);
    bean.cubicTo(69, 34, 69, 20, 56, 16);
    bean.closeSubpath();
    p.fillPath(bean, ink);
    p.setPen(QPen(ink, 5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    p.setBrush(Qt::NoBrush);
    QPainterPath ureter;
    ureter.moveTo(58, 50);
    ureter.cubicTo(72, 50, 78, 58, 78, 72);
    ureter.lineTo(78, 90);
    p.drawPath(ureter);
}

void liver(QPainter& p, const QColor& ink, const QColor& paper)
{
    QPainterPath lobe;
    lobe.moveTo(12, 38);
    lobe.cubicTo(16, 26, 42, 21, 62, 23);
    lobe.cubicTo(80, 25, 91, 30, 89, 41);
    lobe.cubicTo(87, 53, 66, 68, 44, 76);
    lobe.cubicTo(36, 67, 18, 55, 12, 38);
    lobe.closeSubpath();
    p.fillPath(lobe, ink);
    // The notch between the two lobes.
    line(p, QPointF(60, 23), QPointF(57, 34), 3.5, paper);
}

void heart(QPainter& p, const QColor& ink, const QColor& paper)
{
    QPainterPath shape;
    shape.moveTo(50, 86);
    shape.cubicTo(14, 62, 10, 42, 18, 30);
    shape.cubicTo(27, 17, 44, 19, 50, 32);
    shape.cubicTo(56, 19, 73, 17, 82, 30);
    shape.cubicTo(90, 42, 86, 62, 50, 86);
    shape.closeSubpath();
    p.fillPath(shape, ink);
    polyline(p, QPolygonF({QPointF(22, 50), QPointF(37, 50), QPointF(43, 38), QPointF(52, 64), QPointF(58, 46),
                           QPointF(62, 52), QPointF(78, 52)}),
             4.5, paper);
}

void child(QPainter& p, const QColor& ink, const QColor&)
{
    disc(p, QPointF(50, 24), 13, ink);
    p.setPen(Qt::NoPen);
    p.setBrush(ink);
    p.drawRoundedRect(QRectF(37, 40, 26, 28), 9, 9);
    line(p, QPointF(39, 45), QPointF(25, 60), 7, ink);
    line(p, QPointF(61, 45), QPointF(75, 60), 7, ink);
    line(p, QPointF(44, 64), QPointF(42, 87), 8.5, ink);
    line(p, QPointF(56, 64), QPointF(58, 87), 8.5, ink);
}

void elderly(QPainter& p, const QColor& ink, const QColor&)
{
    disc(p, QPointF(46, 19), 10, ink);
    line(p, QPointF(44, 35), QPointF(38, 60), 13, ink);
    line(p, QPointF(38, 60), QPointF(31, 88), 9, ink);
    line(p, QPointF(39, 60), QPointF(51, 88), 9, ink);
    line(p, QPointF(44, 41), QPointF(62, 54), 7, ink);
    // The cane with its hook.
    p.setPen(QPen(ink, 4.5, Qt::SolidLine, Qt::RoundCap));
    p.setBrush(Qt::NoBrush);
    QPainterPath cane;
    cane.moveTo(56, 56);
    cane.cubicTo(56, 48, 66, 48, 66, 56);
    cane.lineTo(68, 90);
    p.drawPath(cane);
}

void water(QPainter& p, const QColor& ink, const QColor& paper)
{
    const QPolygonF glass({QPointF(22, 18), QPointF(62, 18), QPointF(57, 86), QPointF(27, 86)});
    QPainterPath inside;
    inside.addPolygon(glass);
    QPainterPath level;
    level.moveTo(10, 44);
    level.cubicTo(24, 38, 30, 50, 42, 44);
    level.cubicTo(54, 38, 60, 50, 74, 44);
    level.lineTo(74, 96);
    level.lineTo(10, 96);
    level.closeSubpath();
    p.fillPath(inside.intersected(level), ink);
    p.setPen(QPen(ink, 5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    p.setBrush(Qt::NoBrush);
    p.drawPolygon(glass);
    // A capsule beside the glass.
    p.save();
    p.translate(78, 62);
    p.rotate(-60);
    QPainterPath capsule;
    capsule.addRoundedRect(QRectF(-15, -7, 30, 14), 7, 7);
    p.setPen(QPen(paper, 4));
    p.setBrush(ink);
    p.drawPath(capsule);
    line(p, QPointF(0, -6), QPointF(0, 6), 2.5, paper);
    p.restore();
}

struct Theme {
    Glyph glyph;
    QColor color;
};

const std::array<Theme, 17>& themes()
{
    static const std::array<Theme, 17> list = {{
        {car, QColor(0x29, 0x5c, 0x99)},
        {alcohol, QColor(0x7b, 0x3f, 0xa0)},
        {pregnancy, QColor(0xc2, 0x45, 0x7a)},
        {breastfeeding, QColor(0xb8, 0x5c, 0xa8)},
        {sun, QColor(0xe0, 0x9a, 0x10)},
        {clock, QColor(0x1f, 0x8a, 0x8a)},
        {food, QColor(0x3a, 0x8f, 0x3a)},
        {milk, QColor(0x4a, 0x90, 0xc8)},
        {grapefruit, QColor(0xd9, 0x4f, 0x5c)},
        {drowsiness, QColor(0x2c, 0x3e, 0x70)},
        {caution, QColor(0xe3, 0x50, 0x2a)},
        {kidney, QColor(0xa0, 0x43, 0x3a)},
        {liver, QColor(0x8a, 0x5a, 0x2b)},
        {heart, QColor(0xc8, 0x28, 0x3c)},
        {child, QColor(0x1e, 0x9b, 0xd7)},
        {elderly, QColor(0x5d, 0x6d, 0x7e)},
        {water, QColor(0x2a, 0x7f, 0xbf)},
    }};
    return list;
}

enum class Frame { Know, Avoid, TakeCare, Seal };

// Draws the glyph scaled about the centre of the design square.
void drawGlyph(QPainter& painter, Glyph glyph, qreal scale, QPointF offset, const QColor& ink,
               const QColor& paper)
{
    painter.save();
    painter.translate(design / 2 + offset.x(), design / 2 + offset.y());
    painter.scale(scale, scale);
    painter.translate(-design / 2, -design / 2);
    glyph(painter, ink, paper);
    painter.restore();
}

void drawFramed(QPainter& painter, const Theme& theme, Frame frame)
{
    switch (frame) {
    case Frame::Know:
        painter.setPen(Qt::NoPen);
        painter.setBrush(theme.color);
        painter.drawRoundedRect(QRectF(3, 3, 94, 94), 20, 20);
        drawGlyph(painter, theme.glyph, 0.78, QPointF(), Qt::white, theme.color);
        break;
    case Frame::Avoid: {
        disc(painter, QPointF(50, 50), 47, Qt::white);
        drawGlyph(painter, theme.glyph, 0.66, QPointF(), theme.color, Qt::white);
        const qreal offset = 40 / qSqrt(2.0);
        // A white rim keeps the glyph and the bar apart.
        line(painter, QPointF(50 - offset, 50 - offset), QPointF(50 + offset, 50 + offset), 15, Qt::white);
        line(painter, QPointF(50 - offset, 50 - offset), QPointF(50 + offset, 50 + offset), 8, orange());
        painter.setPen(QPen(orange(), 8));
        painter.setBrush(Qt::NoBrush);
        painter.drawEllipse(QPointF(50, 50), 43, 43);
        break;
    }
    case Frame::TakeCare: {
        painter.setPen(Qt::NoPen);
        painter.setBrush(theme.color);
        painter.drawRoundedRect(QRectF(3, 3, 94, 94), 20, 20);
        drawGlyph(painter, theme.glyph, 0.66, QPointF(-9, -9), Qt::white, theme.color);
        // The warning badge at the lower right.
        const QPolygonF badge({QPointF(78, 58), QPointF(97, 93), QPointF(59, 93)});
        painter.setPen(QPen(Qt::white, 9, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.setBrush(Qt::white);
        painter.drawPolygon(badge);
        painter.setPen(QPen(orange(), 4, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.setBrush(orange());
        painter.drawPolygon(badge);
        line(painter, QPointF(78, 70), QPointF(78, 81), 4.5, Qt::white);
        disc(painter, QPointF(78, 87.5), 2.6, Qt::white);
        break;
    }
    case Frame::Seal:
        disc(painter, QPointF(50, 50), 47, theme.color);
        painter.setPen(QPen(QColor(255, 255, 255, 170), 2.5));
        painter.setBrush(Qt::NoBrush);
        painter.drawEllipse(QPointF(50, 50), 41, 41);
        drawGlyph(painter, theme.glyph, 0.64, QPointF(), Qt::white, theme.color);
        break;
    }
}

} // namespace

namespace WarningPictograms {

QImage draw(int id)
{
    const int index = qBound(0, id - firstId, lastId - firstId);
    const int themeCount = static_cast<int>(themes().size());
    const Theme& theme = themes()[static_cast<size_t>(index % themeCount)];
    const Frame frame = static_cast<Frame>(index / themeCount);

    QImage image = canvas(pictogramSize, pictogramSize);
    QPainter painter;
    begin(painter, image, design);
    drawFramed(painter, theme, frame);
    return image;
}

} // namespace WarningPictograms
