#include "warningpictograms.h"

#include "painting.h"

#include <QPainter>
#include <QPainterPath>
#include <QPolygonF>
#include <QtMath>

#include <array>

using namespace Painting;

// Each warning id has its own entry below: a glyph of what the warning is
// about, a frame that says what to do (plain tile: how to take it; warning
// badge: take care; prohibition badge: avoid it; round seal: the drug contains
// it) and the colour of its field (food, family, organs, checks…). The glyphs
// are bold and simple, since the sections show them at 28 by 28 pixels.

namespace {

// Twice the size the sections show, so that scaling down halves it exactly.
constexpr int pictogramSize = 56;
constexpr qreal design = 100;

using Glyph = void (*)(QPainter&, const QColor& ink, const QColor& paper);

QPen roundPen(const QColor& color, qreal width)
{
    return QPen(color, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
}

void line(QPainter& painter, QPointF from, QPointF to, qreal width, const QColor& color)
{
    painter.setPen(roundPen(color, width));
    painter.drawLine(from, to);
}

void polyline(QPainter& painter, const QPolygonF& points, qreal width, const QColor& color)
{
    painter.setPen(roundPen(color, width));
    painter.setBrush(Qt::NoBrush);
    painter.drawPolyline(points);
}

void disc(QPainter& painter, QPointF centre, qreal radius, const QColor& color)
{
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawEllipse(centre, radius, radius);
}

void ring(QPainter& painter, QPointF centre, qreal radius, qreal width, const QColor& color)
{
    painter.setPen(QPen(color, width));
    painter.setBrush(Qt::NoBrush);
    painter.drawEllipse(centre, radius, radius);
}

// Draws another glyph scaled about `centre`, for glyphs made of two things.
void part(QPainter& painter, Glyph glyph, qreal scale, QPointF centre, const QColor& ink, const QColor& paper)
{
    painter.save();
    painter.translate(centre);
    painter.scale(scale, scale);
    painter.translate(-design / 2, -design / 2);
    glyph(painter, ink, paper);
    painter.restore();
}

// Fills a path with a rim of the paper colour around it, so that it stands
// apart from what lies under it.
void cutOut(QPainter& painter, const QPainterPath& path, qreal rim, const QColor& ink, const QColor& paper)
{
    painter.setPen(roundPen(paper, rim * 2));
    painter.setBrush(paper);
    painter.drawPath(path);
    painter.fillPath(path, ink);
}

QPainterPath dropPath(QPointF tip, qreal height)
{
    const qreal s = height / 76;
    QPainterPath drop;
    drop.moveTo(tip);
    drop.cubicTo(tip + QPointF(12, 20) * s, tip + QPointF(26, 34) * s, tip + QPointF(26, 50) * s);
    drop.cubicTo(tip + QPointF(26, 66) * s, tip + QPointF(14, 76) * s, tip + QPointF(0, 76) * s);
    drop.cubicTo(tip + QPointF(-14, 76) * s, tip + QPointF(-26, 66) * s, tip + QPointF(-26, 50) * s);
    drop.cubicTo(tip + QPointF(-26, 34) * s, tip + QPointF(-12, 20) * s, tip);
    drop.closeSubpath();
    return drop;
}

QPainterPath capsulePath(QPointF centre, qreal length, qreal thickness, qreal angle)
{
    QPainterPath capsule;
    capsule.addRoundedRect(QRectF(-length / 2, -thickness / 2, length, thickness), thickness / 2, thickness / 2);
    QTransform place;
    place.translate(centre.x(), centre.y());
    place.rotate(angle);
    return place.map(capsule);
}

void arrow(QPainter& painter, QPointF from, QPointF to, qreal width, const QColor& color)
{
    line(painter, from, to, width, color);
    const QLineF shaft(to, from);
    for (qreal turn : {-35.0, 35.0}) {
        QLineF head = shaft;
        head.setLength(width * 2.6);
        head.setAngle(shaft.angle() + turn);
        line(painter, to, head.p2(), width, color);
    }
}

void text(QPainter& painter, const QString& label, qreal size, QPointF centreBaseline, const QColor& color)
{
    drawCenteredText(painter, label, font(size, true), centreBaseline.x(), centreBaseline.y(), color);
}

// --- Driving, the mind, the senses ---

void car(QPainter& p, const QColor& ink, const QColor& paper)
{
    QPainterPath body;
    body.addRoundedRect(QRectF(8, 44, 84, 26), 9, 9);
    QPainterPath roof;
    roof.addPolygon(QPolygonF({QPointF(22, 48), QPointF(32, 24), QPointF(68, 24), QPointF(80, 48)}));
    p.fillPath(body.united(roof).simplified(), ink);
    p.setPen(Qt::NoPen);
    p.setBrush(paper);
    p.drawPolygon(QPolygonF({QPointF(32, 43), QPointF(38, 30), QPointF(48, 30), QPointF(48, 43)}));
    p.drawPolygon(QPolygonF({QPointF(54, 43), QPointF(54, 30), QPointF(64, 30), QPointF(71, 43)}));
    for (qreal x : {29.0, 71.0}) {
        disc(p, QPointF(x, 70), 14, paper);
        disc(p, QPointF(x, 70), 10.5, ink);
    }
}

void drowsiness(QPainter& p, const QColor& ink, const QColor&)
{
    QPainterPath moon;
    moon.addEllipse(QPointF(40, 60), 30, 30);
    QPainterPath bite;
    bite.addEllipse(QPointF(58, 46), 24, 24);
    p.fillPath(moon.subtracted(bite), ink);
    polyline(p, QPolygonF({QPointF(58, 10), QPointF(78, 10), QPointF(58, 30), QPointF(78, 30)}), 7, ink);
    polyline(p, QPolygonF({QPointF(80, 40), QPointF(92, 40), QPointF(80, 52), QPointF(92, 52)}), 5, ink);
}

void dizziness(QPainter& p, const QColor& ink, const QColor&)
{
    // A spiral of two and a half turns, open enough to stay a spiral when small.
    QPainterPath spiral;
    const QPointF centre(50, 50);
    spiral.moveTo(centre);
    for (int step = 1; step <= 90; ++step) {
        const qreal angle = step / 90.0 * 2.5 * 2 * M_PI;
        const qreal radius = 2 + step / 90.0 * 36;
        spiral.lineTo(centre + QPointF(qCos(angle), qSin(angle)) * radius);
    }
    p.setPen(roundPen(ink, 8));
    p.setBrush(Qt::NoBrush);
    p.drawPath(spiral);
}

QPainterPath headPath()
{
    // A head in profile, looking right.
    QPainterPath head;
    head.moveTo(34, 92);
    head.lineTo(34, 74);
    head.cubicTo(18, 66, 12, 50, 14, 38);
    head.cubicTo(17, 18, 34, 8, 52, 9);
    head.cubicTo(70, 10, 82, 24, 81, 40);
    head.lineTo(90, 56);
    head.lineTo(81, 58);
    head.lineTo(81, 68);
    head.cubicTo(81, 75, 75, 77, 66, 76);
    head.lineTo(66, 92);
    head.closeSubpath();
    return head;
}

void epilepsy(QPainter& p, const QColor& ink, const QColor& paper)
{
    p.fillPath(headPath(), ink);
    p.setPen(Qt::NoPen);
    p.setBrush(paper);
    p.drawPolygon(QPolygonF({QPointF(54, 16), QPointF(30, 46), QPointF(46, 46), QPointF(38, 72), QPointF(64, 38),
                             QPointF(49, 38), QPointF(60, 16)}));
}

void mood(QPainter& p, const QColor& ink, const QColor& paper)
{
    disc(p, QPointF(50, 50), 38, ink);
    disc(p, QPointF(37, 40), 6, paper);
    disc(p, QPointF(63, 40), 6, paper);
    p.setPen(roundPen(paper, 7));
    p.setBrush(Qt::NoBrush);
    QPainterPath frown;
    frown.moveTo(32, 72);
    frown.quadTo(50, 56, 68, 72);
    p.drawPath(frown);
}

void addiction(QPainter& p, const QColor& ink, const QColor& paper)
{
    // Two links of a chain, the second passing through the first.
    const QPainterPath first = capsulePath(QPointF(36, 64), 52, 28, -45);
    const QPainterPath second = capsulePath(QPointF(64, 36), 52, 28, -45);
    p.setBrush(Qt::NoBrush);
    p.setPen(roundPen(ink, 9));
    p.drawPath(first);
    p.setPen(roundPen(paper, 17));
    p.drawPath(second);
    p.setPen(roundPen(ink, 9));
    p.drawPath(second);
    // Where the first link passes over the second.
    p.save();
    p.setClipRect(QRectF(20, 44, 30, 30));
    p.setPen(roundPen(paper, 17));
    p.drawPath(first);
    p.setPen(roundPen(ink, 9));
    p.drawPath(first);
    p.restore();
}

void taperingDose(QPainter& p, const QColor& ink, const QColor&)
{
    p.setPen(Qt::NoPen);
    p.setBrush(ink);
    const qreal heights[] = {66, 50, 34, 18};
    for (int i = 0; i < 4; ++i)
        p.drawRoundedRect(QRectF(12 + i * 20, 86 - heights[i], 15, heights[i]), 3, 3);
    arrow(p, QPointF(22, 12), QPointF(84, 44), 6, ink);
}

void insomnia(QPainter& p, const QColor& ink, const QColor&)
{
    // A bed under a crescent moon.
    p.setPen(Qt::NoPen);
    p.setBrush(ink);
    p.drawRoundedRect(QRectF(8, 36, 10, 54), 4, 4);
    p.drawRoundedRect(QRectF(8, 62, 84, 16), 4, 4);
    p.drawRoundedRect(QRectF(82, 62, 10, 28), 4, 4);
    p.drawRoundedRect(QRectF(22, 48, 22, 12), 6, 6);
    p.drawRoundedRect(QRectF(44, 52, 48, 10), 4, 4);
    QPainterPath moon;
    moon.addEllipse(QPointF(70, 26), 17, 17);
    QPainterPath bite;
    bite.addEllipse(QPointF(80, 19), 14, 14);
    p.fillPath(moon.subtracted(bite), ink);
}

void eye(QPainter& p, const QColor& ink, const QColor& paper)
{
    QPainterPath shape;
    shape.moveTo(6, 50);
    shape.quadTo(50, 6, 94, 50);
    shape.quadTo(50, 94, 6, 50);
    shape.closeSubpath();
    p.fillPath(shape, ink);
    disc(p, QPointF(50, 50), 18, paper);
    disc(p, QPointF(50, 50), 10, ink);
}

void glasses(QPainter& p, const QColor& ink, const QColor&)
{
    p.setPen(roundPen(ink, 8));
    p.setBrush(Qt::NoBrush);
    p.drawRoundedRect(QRectF(8, 44, 34, 28), 10, 10);
    p.drawRoundedRect(QRectF(58, 44, 34, 28), 10, 10);
    QPainterPath bridge;
    bridge.moveTo(42, 52);
    bridge.quadTo(50, 44, 58, 52);
    p.drawPath(bridge);
    line(p, QPointF(10, 48), QPointF(4, 30), 6, ink);
    line(p, QPointF(90, 48), QPointF(96, 30), 6, ink);
    // The blur: waves over the lenses.
    for (qreal y : {18.0, 30.0}) {
        QPainterPath wave;
        wave.moveTo(24, y);
        wave.cubicTo(36, y - 8, 44, y + 8, 56, y);
        wave.cubicTo(64, y - 6, 70, y + 6, 78, y);
        p.setPen(roundPen(ink, 5));
        p.drawPath(wave);
    }
}

// --- Food and drink ---

void wineGlass(QPainter& p, const QColor& ink, const QColor&)
{
    QPainterPath bowl;
    bowl.moveTo(28, 12);
    bowl.lineTo(72, 12);
    bowl.cubicTo(75, 36, 66, 54, 50, 56);
    bowl.cubicTo(34, 54, 25, 36, 28, 12);
    bowl.closeSubpath();
    QPainterPath wine;
    wine.addRect(QRectF(20, 30, 60, 30));
    p.fillPath(bowl.intersected(wine), ink);
    p.setPen(roundPen(ink, 7));
    p.setBrush(Qt::NoBrush);
    p.drawPath(bowl);
    line(p, QPointF(50, 56), QPointF(50, 82), 8, ink);
    p.setPen(Qt::NoPen);
    p.setBrush(ink);
    p.drawRoundedRect(QRectF(30, 80, 40, 9), 4.5, 4.5);
}

void liver(QPainter& p, const QColor& ink, const QColor& paper)
{
    QPainterPath lobe;
    lobe.moveTo(8, 36);
    lobe.cubicTo(12, 22, 40, 17, 62, 19);
    lobe.cubicTo(82, 21, 95, 28, 93, 40);
    lobe.cubicTo(91, 54, 68, 70, 42, 80);
    lobe.cubicTo(32, 70, 14, 56, 8, 36);
    lobe.closeSubpath();
    p.fillPath(lobe, ink);
    line(p, QPointF(60, 19), QPointF(56, 36), 5, paper);
}

void alcoholAndLiver(QPainter& p, const QColor& ink, const QColor& paper)
{
    part(p, liver, 0.78, QPointF(58, 60), ink, paper);
    // The glass in front of the liver, with a rim of the field between them.
    p.save();
    p.translate(28, 40);
    p.scale(0.6, 0.6);
    p.translate(-50, -50);
    QPainterPath outline;
    outline.moveTo(28, 12);
    outline.lineTo(72, 12);
    outline.cubicTo(75, 36, 66, 54, 50, 56);
    outline.cubicTo(34, 54, 25, 36, 28, 12);
    outline.closeSubpath();
    outline.addRect(QRectF(44, 54, 12, 28));
    outline.addRoundedRect(QRectF(30, 78, 40, 11), 5, 5);
    p.setPen(roundPen(paper, 16));
    p.setBrush(paper);
    p.drawPath(outline.simplified());
    wineGlass(p, ink, paper);
    p.restore();
}

void grapefruit(QPainter& p, const QColor& ink, const QColor& paper)
{
    const QPointF centre(50, 50);
    disc(p, centre, 40, ink);
    disc(p, centre, 33, paper);
    disc(p, centre, 29, ink);
    for (int i = 0; i < 8; ++i) {
        const qreal angle = qDegreesToRadians(i * 45.0 + 22.5);
        line(p, centre, centre + QPointF(qCos(angle), qSin(angle)) * 30, 4.5, paper);
    }
    disc(p, centre, 6, paper);
}

void milkCarton(QPainter& p, const QColor& ink, const QColor& paper)
{
    p.setPen(Qt::NoPen);
    p.setBrush(ink);
    p.drawRoundedRect(QRectF(36, 6, 28, 10), 2, 2);
    p.drawPolygon(QPolygonF({QPointF(26, 36), QPointF(36, 17), QPointF(64, 17), QPointF(74, 36)}));
    p.drawRoundedRect(QRectF(26, 34, 48, 60), 4, 4);
    line(p, QPointF(27, 37), QPointF(73, 37), 3.5, paper);
    p.fillPath(dropPath(QPointF(50, 46), 38), paper);
}

void meal(QPainter& p, const QColor& ink, const QColor&)
{
    ring(p, QPointF(50, 52), 24, 7, ink);
    ring(p, QPointF(50, 52), 12, 4, ink);
    // Fork.
    for (qreal x : {8.0, 14.0, 20.0})
        line(p, QPointF(x, 16), QPointF(x, 34), 4, ink);
    polyline(p, QPolygonF({QPointF(8, 34), QPointF(14, 40), QPointF(20, 34)}), 4, ink);
    line(p, QPointF(14, 38), QPointF(14, 88), 7, ink);
    // Knife.
    QPainterPath blade;
    blade.moveTo(84, 14);
    blade.cubicTo(96, 22, 97, 42, 91, 52);
    blade.lineTo(84, 52);
    blade.closeSubpath();
    p.fillPath(blade, ink);
    line(p, QPointF(87, 50), QPointF(87, 88), 7, ink);
}

void coffee(QPainter& p, const QColor& ink, const QColor&)
{
    QPainterPath cup;
    cup.moveTo(16, 44);
    cup.lineTo(70, 44);
    cup.lineTo(66, 74);
    cup.cubicTo(64, 82, 58, 86, 50, 86);
    cup.lineTo(36, 86);
    cup.cubicTo(28, 86, 22, 82, 20, 74);
    cup.closeSubpath();
    p.fillPath(cup, ink);
    ring(p, QPointF(74, 58), 10, 7, ink);
    line(p, QPointF(10, 92), QPointF(76, 92), 5, ink);
    for (qreal x : {32.0, 52.0}) {
        QPainterPath steam;
        steam.moveTo(x, 36);
        steam.cubicTo(x - 8, 28, x + 8, 20, x, 10);
        p.setPen(roundPen(ink, 6));
        p.setBrush(Qt::NoBrush);
        p.drawPath(steam);
    }
}

void leaf(QPainter& p, const QColor& ink, const QColor& paper)
{
    QPainterPath shape;
    shape.moveTo(18, 84);
    shape.cubicTo(8, 44, 44, 12, 88, 12);
    shape.cubicTo(90, 56, 58, 90, 18, 84);
    shape.closeSubpath();
    p.fillPath(shape, ink);
    line(p, QPointF(24, 78), QPointF(70, 32), 5, paper);
    line(p, QPointF(44, 58), QPointF(44, 40), 4, paper);
    line(p, QPointF(44, 58), QPointF(62, 58), 4, paper);
    line(p, QPointF(18, 84), QPointF(8, 94), 7, ink);
}

void cheese(QPainter& p, const QColor& ink, const QColor& paper)
{
    p.setPen(roundPen(ink, 6));
    p.setBrush(ink);
    p.drawPolygon(QPolygonF({QPointF(10, 50), QPointF(86, 26), QPointF(90, 50), QPointF(90, 80), QPointF(10, 80)}));
    line(p, QPointF(12, 51), QPointF(88, 51), 3.5, paper);
    disc(p, QPointF(32, 65), 7, paper);
    disc(p, QPointF(60, 70), 5, paper);
    disc(p, QPointF(74, 60), 4, paper);
    disc(p, QPointF(66, 38), 4, paper);
}

void juice(QPainter& p, const QColor& ink, const QColor& paper)
{
    const QPolygonF glass({QPointF(20, 30), QPointF(72, 30), QPointF(66, 94), QPointF(26, 94)});
    QPainterPath inside;
    inside.addPolygon(glass);
    QPainterPath level;
    level.addRect(QRectF(0, 44, 100, 60));
    p.fillPath(inside.intersected(level), ink);
    p.setPen(roundPen(ink, 7));
    p.setBrush(Qt::NoBrush);
    p.drawPolygon(glass);
    // The straw, bent over the rim.
    polyline(p, QPolygonF({QPointF(54, 84), QPointF(62, 16), QPointF(84, 6)}), 7, ink);
    line(p, QPointF(55, 80), QPointF(59, 48), 7, paper);
}

void burger(QPainter& p, const QColor& ink, const QColor& paper)
{
    QPainterPath top;
    top.moveTo(10, 44);
    top.cubicTo(10, 18, 90, 18, 90, 44);
    top.closeSubpath();
    p.fillPath(top, ink);
    for (QPointF seed : {QPointF(36, 32), QPointF(52, 28), QPointF(66, 34)})
        disc(p, seed, 3, paper);
    p.setPen(Qt::NoPen);
    p.setBrush(ink);
    p.drawRoundedRect(QRectF(6, 50, 88, 14), 7, 7);
    p.drawRoundedRect(QRectF(10, 70, 80, 16), 6, 6);
}

void licorice(QPainter& p, const QColor& ink, const QColor& paper)
{
    // Three twisted sticks of licorice.
    p.save();
    p.translate(50, 50);
    p.rotate(-35);
    for (qreal y : {-24.0, 0.0, 24.0}) {
        QPainterPath stick;
        stick.addRoundedRect(QRectF(-34, y - 8, 68, 16), 6, 6);
        p.fillPath(stick, ink);
        p.save();
        p.setClipPath(stick);
        for (qreal x = -30; x <= 30; x += 12)
            line(p, QPointF(x - 5, y + 9), QPointF(x + 5, y - 9), 3, paper);
        p.restore();
    }
    p.restore();
}

void timeApart(QPainter& p, const QColor& ink, const QColor& paper)
{
    // A clock whose hands stand two hours apart.
    ring(p, QPointF(50, 50), 36, 8, ink);
    for (int i = 0; i < 12; ++i) {
        const qreal angle = qDegreesToRadians(i * 30.0);
        const QPointF direction(qCos(angle), qSin(angle));
        line(p, QPointF(50, 50) + direction * 24, QPointF(50, 50) + direction * 27, 4, ink);
    }
    QPainterPath wedge;
    wedge.moveTo(50, 50);
    wedge.arcTo(QRectF(28, 28, 44, 44), 90, -60);
    wedge.closeSubpath();
    p.fillPath(wedge, ink);
    line(p, QPointF(50, 50), QPointF(50, 24), 6, ink);
    line(p, QPointF(50, 50), QPointF(72, 37), 6, ink);
    disc(p, QPointF(50, 50), 5, paper);
}

void waterGlass(QPainter& p, const QColor& ink, const QColor& paper)
{
    const QPolygonF glass({QPointF(18, 12), QPointF(64, 12), QPointF(58, 90), QPointF(24, 90)});
    QPainterPath inside;
    inside.addPolygon(glass);
    QPainterPath level;
    level.moveTo(4, 38);
    level.cubicTo(20, 30, 28, 46, 42, 38);
    level.cubicTo(56, 30, 62, 46, 78, 38);
    level.lineTo(78, 100);
    level.lineTo(4, 100);
    level.closeSubpath();
    p.fillPath(inside.intersected(level), ink);
    p.setPen(roundPen(ink, 6));
    p.setBrush(Qt::NoBrush);
    p.drawPolygon(glass);
    cutOut(p, capsulePath(QPointF(78, 64), 36, 17, -60), 3.5, ink, paper);
}

// --- Pregnancy, children, age ---

void pregnancy(QPainter& p, const QColor& ink, const QColor&)
{
    disc(p, QPointF(47, 15), 11, ink);
    QPainterPath body;
    body.moveTo(37, 31);
    body.cubicTo(43, 28, 53, 28, 58, 31.5);
    body.lineTo(61, 44);
    body.cubicTo(80, 47, 82, 71, 63, 74);
    body.lineTo(61, 94);
    body.lineTo(41, 94);
    body.lineTo(38, 70);
    body.cubicTo(31, 57, 31, 42, 37, 31);
    body.closeSubpath();
    p.fillPath(body, ink);
}

void trimester(QPainter& p, const QColor& ink, const QColor& paper, const QString& numeral)
{
    part(p, pregnancy, 0.9, QPointF(36, 52), ink, paper);
    text(p, numeral, 36, QPointF(78, 48), ink);
}

void firstTrimester(QPainter& p, const QColor& ink, const QColor& paper)
{
    trimester(p, ink, paper, QStringLiteral("I"));
}

void thirdTrimester(QPainter& p, const QColor& ink, const QColor& paper)
{
    trimester(p, ink, paper, QStringLiteral("III"));
}

void breastfeeding(QPainter& p, const QColor& ink, const QColor& paper)
{
    disc(p, QPointF(32, 16), 11, ink);
    QPainterPath mother;
    mother.addRoundedRect(QRectF(16, 31, 32, 63), 12, 12);
    p.fillPath(mother, ink);
    QPainterPath baby;
    baby.addEllipse(QPointF(70, 42), 13, 13);
    QPainterPath babyBody;
    babyBody.addRoundedRect(QRectF(-20, -10, 40, 20), 10, 10);
    QTransform lying;
    lying.translate(54, 62);
    lying.rotate(-22);
    cutOut(p, baby.united(lying.map(babyBody)), 3.5, ink, paper);
}

void child(QPainter& p, const QColor& ink, const QColor&)
{
    disc(p, QPointF(50, 20), 14, ink);
    p.setPen(Qt::NoPen);
    p.setBrush(ink);
    p.drawRoundedRect(QRectF(35, 38, 30, 32), 10, 10);
    line(p, QPointF(38, 44), QPointF(22, 62), 9, ink);
    line(p, QPointF(62, 44), QPointF(78, 62), 9, ink);
    line(p, QPointF(43, 66), QPointF(41, 90), 10, ink);
    line(p, QPointF(57, 66), QPointF(59, 90), 10, ink);
}

void elderly(QPainter& p, const QColor& ink, const QColor&)
{
    disc(p, QPointF(44, 15), 11, ink);
    line(p, QPointF(42, 33), QPointF(36, 60), 15, ink);
    line(p, QPointF(36, 60), QPointF(28, 90), 10, ink);
    line(p, QPointF(37, 60), QPointF(50, 90), 10, ink);
    line(p, QPointF(42, 40), QPointF(62, 54), 8, ink);
    p.setPen(roundPen(ink, 6));
    p.setBrush(Qt::NoBrush);
    QPainterPath cane;
    cane.moveTo(56, 56);
    cane.cubicTo(56, 46, 68, 46, 68, 56);
    cane.lineTo(70, 92);
    p.drawPath(cane);
}

void femaleSign(QPainter& p, const QColor& ink, const QColor&)
{
    ring(p, QPointF(50, 36), 22, 10, ink);
    line(p, QPointF(50, 60), QPointF(50, 92), 10, ink);
    line(p, QPointF(34, 78), QPointF(66, 78), 10, ink);
}

void maleSign(QPainter& p, const QColor& ink, const QColor&)
{
    ring(p, QPointF(40, 60), 24, 10, ink);
    line(p, QPointF(57, 43), QPointF(84, 16), 10, ink);
    line(p, QPointF(60, 14), QPointF(86, 14), 10, ink);
    line(p, QPointF(86, 14), QPointF(86, 40), 10, ink);
}

// --- Organs and how the body reacts ---

void kidney(QPainter& p, const QColor& ink, const QColor&)
{
    QPainterPath bean;
    bean.moveTo(54, 10);
    bean.cubicTo(28, 6, 14, 30, 16, 52);
    bean.cubicTo(18, 78, 36, 92, 56, 84);
    bean.cubicTo(68, 80, 70, 66, 60, 60);
    bean.cubicTo(53, 55, 53, 44, 60, 40);
    bean.cubicTo(71, 33, 70, 15, 54, 10);
    bean.closeSubpath();
    p.fillPath(bean, ink);
    p.setPen(roundPen(ink, 7));
    p.setBrush(Qt::NoBrush);
    QPainterPath ureter;
    ureter.moveTo(58, 50);
    ureter.cubicTo(74, 50, 82, 60, 82, 74);
    ureter.lineTo(82, 94);
    p.drawPath(ureter);
}

void heartRhythm(QPainter& p, const QColor& ink, const QColor& paper)
{
    QPainterPath shape;
    shape.moveTo(50, 90);
    shape.cubicTo(10, 64, 4, 40, 14, 26);
    shape.cubicTo(24, 12, 44, 14, 50, 28);
    shape.cubicTo(56, 14, 76, 12, 86, 26);
    shape.cubicTo(96, 40, 90, 64, 50, 90);
    shape.closeSubpath();
    p.fillPath(shape, ink);
    polyline(p, QPolygonF({QPointF(14, 50), QPointF(32, 50), QPointF(40, 34), QPointF(52, 66), QPointF(60, 42),
                           QPointF(66, 52), QPointF(86, 52)}),
             6, paper);
}

void bloodDrop(QPainter& p, const QColor& ink, const QColor& paper)
{
    p.fillPath(dropPath(QPointF(50, 6), 88), ink);
    p.setPen(roundPen(paper, 5));
    p.setBrush(Qt::NoBrush);
    p.drawArc(QRectF(30, 48, 32, 32), 180 * 16, 70 * 16);
}

void anticoagulant(QPainter& p, const QColor& ink, const QColor& paper)
{
    p.fillPath(dropPath(QPointF(38, 8), 82), ink);
    cutOut(p, capsulePath(QPointF(72, 68), 44, 20, -50), 4, ink, paper);
    // The seam between the capsule's halves.
    const QPointF across(qCos(qDegreesToRadians(40.0)) * 9, -qSin(qDegreesToRadians(40.0)) * 9);
    line(p, QPointF(72, 68) - across, QPointF(72, 68) + across, 3, paper);
}

void lungs(QPainter& p, const QColor& ink, const QColor& paper)
{
    QPainterPath left;
    left.moveTo(44, 30);
    left.cubicTo(30, 22, 12, 40, 10, 68);
    left.cubicTo(9, 84, 24, 92, 44, 84);
    left.closeSubpath();
    QTransform mirror;
    mirror.translate(100, 0);
    mirror.scale(-1, 1);
    p.fillPath(left, ink);
    p.fillPath(mirror.map(left), ink);
    line(p, QPointF(50, 8), QPointF(50, 44), 8, ink);
    polyline(p, QPolygonF({QPointF(34, 62), QPointF(50, 44), QPointF(66, 62)}), 5, paper);
    line(p, QPointF(50, 36), QPointF(50, 46), 8, ink);
}

void stomachBleeding(QPainter& p, const QColor& ink, const QColor& paper)
{
    // The stomach, the gullet at the top left and the outlet rising at the
    // right, with a drop of blood inside.
    QPainterPath stomach;
    stomach.moveTo(24, 4);
    stomach.lineTo(38, 4);
    stomach.lineTo(38, 24);
    stomach.cubicTo(40, 38, 58, 46, 74, 42);
    stomach.lineTo(84, 38);
    stomach.lineTo(84, 24);
    stomach.lineTo(96, 24);
    stomach.lineTo(96, 48);
    stomach.cubicTo(96, 52, 92, 54, 88, 55);
    stomach.cubicTo(80, 80, 60, 94, 40, 90);
    stomach.cubicTo(16, 86, 8, 60, 16, 40);
    stomach.cubicTo(20, 30, 24, 24, 24, 16);
    stomach.closeSubpath();
    p.fillPath(stomach, ink);
    p.fillPath(dropPath(QPointF(44, 46), 36), paper);
}

void hand(QPainter& p, const QColor& ink, const QColor& paper)
{
    p.setPen(Qt::NoPen);
    p.setBrush(ink);
    p.drawRoundedRect(QRectF(26, 46, 50, 48), 14, 14);
    const qreal tops[] = {14, 8, 10, 20};
    for (int i = 0; i < 4; ++i)
        p.drawRoundedRect(QRectF(27 + i * 12.5, tops[i], 11, 50), 5.5, 5.5);
    QPainterPath thumb = capsulePath(QPointF(20, 60), 34, 13, 55);
    p.fillPath(thumb, ink);
    for (QPointF spot : {QPointF(42, 62), QPointF(58, 70), QPointF(48, 80), QPointF(62, 56), QPointF(36, 76)})
        disc(p, spot, 4, paper);
}

void muscle(QPainter& p, const QColor& ink, const QColor&)
{
    // An arm bent to show the biceps, and the ache above it.
    line(p, QPointF(10, 80), QPointF(54, 76), 22, ink);
    line(p, QPointF(54, 76), QPointF(70, 36), 18, ink);
    disc(p, QPointF(72, 26), 14, ink);
    p.setPen(Qt::NoPen);
    p.setBrush(ink);
    p.drawEllipse(QPointF(34, 66), 24, 18);
    for (qreal angle : {200.0, 240.0, 280.0}) {
        const QPointF direction(qCos(qDegreesToRadians(angle)), qSin(qDegreesToRadians(angle)));
        line(p, QPointF(34, 62) + direction * 30, QPointF(34, 62) + direction * 42, 6, ink);
    }
}

void cough(QPainter& p, const QColor& ink, const QColor& paper)
{
    part(p, [](QPainter& q, const QColor& i, const QColor&) { q.fillPath(headPath(), i); }, 0.84, QPointF(34, 56),
         ink, paper);
    for (QPointF puff : {QPointF(76, 46), QPointF(90, 34), QPointF(90, 56)})
        disc(p, puff, 6.5, ink);
}

void foot(QPainter& p, const QColor& ink, const QColor& paper)
{
    QPainterPath leg;
    leg.moveTo(28, 6);
    leg.lineTo(54, 6);
    leg.lineTo(54, 50);
    leg.cubicTo(64, 58, 74, 64, 86, 68);
    leg.cubicTo(96, 72, 96, 90, 86, 92);
    leg.lineTo(26, 92);
    leg.cubicTo(18, 92, 16, 84, 18, 76);
    leg.cubicTo(20, 66, 28, 60, 28, 50);
    leg.closeSubpath();
    p.fillPath(leg, ink);
    // The swelling round the ankle.
    p.setPen(roundPen(paper, 4));
    p.setBrush(Qt::NoBrush);
    p.drawArc(QRectF(18, 40, 48, 48), 100 * 16, 80 * 16);
}

void lips(QPainter& p, const QColor& ink, const QColor& paper)
{
    QPainterPath mouth;
    mouth.moveTo(6, 54);
    mouth.cubicTo(20, 34, 36, 30, 50, 40);
    mouth.cubicTo(64, 30, 80, 34, 94, 54);
    mouth.cubicTo(78, 80, 22, 80, 6, 54);
    mouth.closeSubpath();
    p.fillPath(mouth, ink);
    p.setPen(roundPen(paper, 4.5));
    p.setBrush(Qt::NoBrush);
    QPainterPath gap;
    gap.moveTo(12, 54);
    gap.quadTo(50, 62, 88, 54);
    p.drawPath(gap);
    // Cracks of a dry lip.
    line(p, QPointF(38, 64), QPointF(40, 70), 3, paper);
    line(p, QPointF(56, 64), QPointF(54, 71), 3, paper);
    // The drop that is missing.
    p.setPen(roundPen(ink, 4));
    p.drawPath(dropPath(QPointF(82, 4), 22));
    line(p, QPointF(70, 12), QPointF(94, 26), 4, ink);
}

void urineColour(QPainter& p, const QColor& ink, const QColor& paper)
{
    // A sample cup, filled.
    p.setPen(Qt::NoPen);
    p.setBrush(ink);
    p.drawRoundedRect(QRectF(20, 10, 60, 12), 4, 4);
    const QPolygonF cup({QPointF(26, 28), QPointF(74, 28), QPointF(68, 92), QPointF(32, 92)});
    p.setPen(roundPen(ink, 6));
    p.setBrush(Qt::NoBrush);
    p.drawPolygon(cup);
    QPainterPath inside;
    inside.addPolygon(cup);
    QPainterPath level;
    level.addRect(QRectF(0, 48, 100, 60));
    p.fillPath(inside.intersected(level), ink);
    line(p, QPointF(36, 60), QPointF(64, 60), 3.5, paper);
}

// --- Checks and measurements ---

void gauge(QPainter& p, const QColor& ink, const QColor& paper, qreal needleAngle)
{
    const QPointF centre(50, 60);
    p.setPen(QPen(ink, 9, Qt::SolidLine, Qt::FlatCap));
    p.setBrush(Qt::NoBrush);
    p.drawArc(QRectF(10, 20, 80, 80), 0, 180 * 16);
    for (int i = 0; i <= 4; ++i) {
        const qreal angle = qDegreesToRadians(180.0 - i * 45.0);
        const QPointF direction(qCos(angle), -qSin(angle));
        line(p, centre + direction * 22, centre + direction * 28, 4, ink);
    }
    const qreal angle = qDegreesToRadians(needleAngle);
    line(p, centre, centre + QPointF(qCos(angle), -qSin(angle)) * 30, 7, ink);
    disc(p, centre, 8, ink);
    disc(p, centre, 3, paper);
    p.setPen(Qt::NoPen);
    p.setBrush(ink);
    p.drawRoundedRect(QRectF(10, 78, 80, 10), 5, 5);
}

void bloodPressure(QPainter& p, const QColor& ink, const QColor& paper)
{
    gauge(p, ink, paper, 55);
}

void pressureDrop(QPainter& p, const QColor& ink, const QColor& paper)
{
    part(p, [](QPainter& q, const QColor& i, const QColor& w) { gauge(q, i, w, 160); }, 0.8, QPointF(38, 58), ink,
         paper);
    arrow(p, QPointF(86, 8), QPointF(86, 56), 8, ink);
}

void testTube(QPainter& p, const QColor& ink, const QColor&)
{
    for (qreal x : {34.0, 66.0}) {
        QPainterPath tube;
        tube.moveTo(x - 11, 14);
        tube.lineTo(x - 11, 76);
        tube.arcTo(QRectF(x - 11, 65, 22, 22), 180, 180);
        tube.lineTo(x + 11, 14);
        p.setPen(roundPen(ink, 6));
        p.setBrush(Qt::NoBrush);
        p.drawPath(tube);
        QPainterPath fill;
        fill.addRect(QRectF(x - 11, x < 50 ? 44 : 56, 22, 50));
        QPainterPath inside;
        inside.addRoundedRect(QRectF(x - 11, 10, 22, 77), 11, 11);
        p.fillPath(inside.intersected(fill), ink);
        line(p, QPointF(x - 16, 12), QPointF(x + 16, 12), 6, ink);
    }
}

void inr(QPainter& p, const QColor& ink, const QColor&)
{
    text(p, QStringLiteral("INR"), 38, QPointF(50, 64), ink);
}

void glucometer(QPainter& p, const QColor& ink, const QColor& paper)
{
    p.setPen(Qt::NoPen);
    p.setBrush(ink);
    p.drawRoundedRect(QRectF(14, 28, 48, 66), 10, 10);
    p.drawRect(QRectF(32, 10, 12, 20));
    p.setBrush(paper);
    p.drawRoundedRect(QRectF(21, 38, 34, 22), 3, 3);
    disc(p, QPointF(38, 76), 7, paper);
    p.fillPath(dropPath(QPointF(78, 30), 44), ink);
}

void lowSugar(QPainter& p, const QColor& ink, const QColor& paper)
{
    p.fillPath(dropPath(QPointF(36, 10), 80), ink);
    text(p, QStringLiteral("G"), 34, QPointF(36, 76), paper);
    arrow(p, QPointF(82, 14), QPointF(82, 84), 8, ink);
}

void potassium(QPainter& p, const QColor& ink, const QColor&)
{
    text(p, QStringLiteral("K"), 64, QPointF(38, 80), ink);
    arrow(p, QPointF(82, 86), QPointF(82, 16), 8, ink);
}

// --- Storing the drug ---

void thermometer(QPainter& p, const QColor& ink, const QColor& paper)
{
    QPainterPath outline;
    outline.addRoundedRect(QRectF(38, 6, 24, 66), 12, 12);
    outline.addEllipse(QPointF(50, 76), 18, 18);
    p.fillPath(outline.simplified(), ink);
    p.setPen(Qt::NoPen);
    p.setBrush(paper);
    p.drawRoundedRect(QRectF(45, 13, 10, 38), 5, 5);
    for (qreal y : {20.0, 32.0, 44.0})
        line(p, QPointF(68, y), QPointF(80, y), 5, ink);
}

void keepFromLight(QPainter& p, const QColor& ink, const QColor& paper)
{
    // A carton in front of the sun.
    disc(p, QPointF(30, 30), 14, ink);
    for (int i = 0; i < 8; ++i) {
        const qreal angle = qDegreesToRadians(i * 45.0);
        const QPointF direction(qCos(angle), qSin(angle));
        line(p, QPointF(30, 30) + direction * 20, QPointF(30, 30) + direction * 27, 5, ink);
    }
    QPainterPath box;
    box.addRect(QRectF(40, 42, 50, 50));
    cutOut(p, box, 5, ink, paper);
    line(p, QPointF(40, 56), QPointF(90, 56), 3.5, paper);
}

// --- Other drugs and treatment ---

QPainterPath tabletPath(QPointF centre, qreal radius)
{
    QPainterPath tablet;
    tablet.addEllipse(centre, radius, radius);
    return tablet;
}

void tablets(QPainter& p, const QColor& ink, const QColor& paper)
{
    p.fillPath(tabletPath(QPointF(34, 40), 26), ink);
    line(p, QPointF(16, 40), QPointF(52, 40), 4.5, paper);
    cutOut(p, tabletPath(QPointF(66, 64), 26), 4, ink, paper);
    line(p, QPointF(48, 64), QPointF(84, 64), 4.5, paper);
}

void capsules(QPainter& p, const QColor& ink, const QColor& paper)
{
    p.fillPath(capsulePath(QPointF(50, 50), 82, 28, 45), ink);
    cutOut(p, capsulePath(QPointF(50, 50), 82, 28, -45), 4, ink, paper);
    line(p, QPointF(50 - 6, 50 - 6), QPointF(50 + 6, 50 + 6), 3.5, paper);
}

void interaction(QPainter& p, const QColor& ink, const QColor&)
{
    // Two capsules that meet with a spark.
    p.fillPath(capsulePath(QPointF(22, 78), 40, 20, -45), ink);
    p.fillPath(capsulePath(QPointF(78, 22), 40, 20, -45), ink);
    p.setPen(Qt::NoPen);
    p.setBrush(ink);
    QPolygonF star;
    for (int i = 0; i < 16; ++i) {
        const qreal angle = qDegreesToRadians(i * 22.5 - 90);
        const qreal radius = i % 2 ? 9 : 24;
        star << QPointF(50, 50) + QPointF(qCos(angle), qSin(angle)) * radius;
    }
    p.drawPolygon(star);
}

void crushedTablet(QPainter& p, const QColor& ink, const QColor&)
{
    // A tablet broken in two along a jagged crack, with crumbs below.
    QPainterPath tablet;
    tablet.addEllipse(QPointF(50, 44), 36, 36);
    const QPolygonF crack({QPointF(52, 0), QPointF(42, 26), QPointF(56, 42), QPointF(40, 60), QPointF(50, 100)});
    QPolygonF leftSide = crack;
    leftSide << QPointF(0, 100) << QPointF(0, 0);
    QPolygonF rightSide = crack;
    rightSide << QPointF(100, 100) << QPointF(100, 0);
    QPainterPath left;
    left.addPolygon(leftSide);
    QPainterPath right;
    right.addPolygon(rightSide);
    p.fillPath(QTransform::fromTranslate(-6, 0).map(tablet.intersected(left)), ink);
    p.fillPath(QTransform::fromTranslate(6, 4).map(tablet.intersected(right)), ink);
    disc(p, QPointF(26, 92), 5, ink);
    disc(p, QPointF(42, 94), 4, ink);
}

void runner(QPainter& p, const QColor& ink, const QColor&)
{
    disc(p, QPointF(62, 14), 11, ink);
    line(p, QPointF(56, 32), QPointF(46, 58), 14, ink);
    polyline(p, QPolygonF({QPointF(46, 58), QPointF(30, 70), QPointF(14, 66)}), 10, ink);
    polyline(p, QPolygonF({QPointF(46, 58), QPointF(62, 72), QPointF(58, 92)}), 10, ink);
    polyline(p, QPolygonF({QPointF(54, 36), QPointF(70, 48), QPointF(84, 38)}), 8, ink);
    polyline(p, QPolygonF({QPointF(54, 36), QPointF(38, 42), QPointF(28, 56)}), 8, ink);
}

void fullCourse(QPainter& p, const QColor& ink, const QColor&)
{
    p.setPen(roundPen(ink, 7));
    p.setBrush(Qt::NoBrush);
    p.drawRoundedRect(QRectF(12, 20, 76, 70), 8, 8);
    p.setPen(Qt::NoPen);
    p.setBrush(ink);
    p.drawRect(QRectF(12, 20, 76, 18));
    line(p, QPointF(32, 10), QPointF(32, 26), 7, ink);
    line(p, QPointF(68, 10), QPointF(68, 26), 7, ink);
    polyline(p, QPolygonF({QPointF(30, 62), QPointF(44, 76), QPointF(70, 48)}), 9, ink);
}

void bacteria(QPainter& p, const QColor& ink, const QColor& paper)
{
    const QPainterPath rods[] = {capsulePath(QPointF(34, 32), 44, 20, 25), capsulePath(QPointF(66, 56), 44, 20, -35),
                                 capsulePath(QPointF(32, 74), 44, 20, 5)};
    for (const QPainterPath& rod : rods)
        cutOut(p, rod, 3, ink, paper);
    for (QPointF dot : {QPointF(28, 30), QPointF(40, 35), QPointF(60, 60), QPointF(72, 52), QPointF(26, 73),
                        QPointF(38, 74)})
        disc(p, dot, 3, paper);
    // The plus of a helpful bacterium.
    line(p, QPointF(80, 12), QPointF(80, 32), 6, ink);
    line(p, QPointF(70, 22), QPointF(90, 22), 6, ink);
}

void flower(QPainter& p, const QColor& ink, const QColor& paper)
{
    const QPointF centre(50, 46);
    p.setPen(Qt::NoPen);
    p.setBrush(ink);
    for (int i = 0; i < 5; ++i) {
        p.save();
        p.translate(centre);
        p.rotate(i * 72.0);
        p.drawEllipse(QPointF(0, -22), 12, 19);
        p.restore();
    }
    disc(p, centre, 11, paper);
    disc(p, centre, 6, ink);
    line(p, QPointF(50, 78), QPointF(50, 96), 6, ink);
}

void syringe(QPainter& p, const QColor& ink, const QColor& paper)
{
    p.save();
    p.translate(50, 50);
    p.rotate(-45);
    p.setPen(Qt::NoPen);
    p.setBrush(ink);
    p.drawRoundedRect(QRectF(-26, -12, 48, 24), 3, 3);
    p.drawRect(QRectF(-40, -4, 16, 8));
    p.drawRoundedRect(QRectF(-46, -14, 7, 28), 2, 2);
    p.drawRect(QRectF(22, -6, 8, 12));
    line(p, QPointF(30, 0), QPointF(48, 0), 4, ink);
    for (qreal x : {-14.0, -4.0, 6.0})
        line(p, QPointF(x, -12), QPointF(x, -3), 3, paper);
    p.restore();
}

// --- What the drug contains ---

void lactose(QPainter& p, const QColor& ink, const QColor& paper)
{
    // A milk bottle.
    QPainterPath bottle;
    bottle.moveTo(38, 22);
    bottle.lineTo(62, 22);
    bottle.lineTo(62, 30);
    bottle.cubicTo(72, 38, 74, 44, 74, 54);
    bottle.lineTo(74, 86);
    bottle.cubicTo(74, 92, 70, 94, 64, 94);
    bottle.lineTo(36, 94);
    bottle.cubicTo(30, 94, 26, 92, 26, 86);
    bottle.lineTo(26, 54);
    bottle.cubicTo(26, 44, 28, 38, 38, 30);
    bottle.closeSubpath();
    p.fillPath(bottle, ink);
    p.setPen(Qt::NoPen);
    p.setBrush(ink);
    p.drawRoundedRect(QRectF(35, 8, 30, 11), 3, 3);
    line(p, QPointF(28, 56), QPointF(72, 56), 4, paper);
}

void sugar(QPainter& p, const QColor& ink, const QColor& paper)
{
    // Three sugar cubes, each a hexagon with its edges.
    const QPointF centres[] = {QPointF(30, 66), QPointF(70, 66), QPointF(50, 32)};
    for (QPointF centre : centres) {
        QPolygonF hexagon;
        for (int i = 0; i < 6; ++i) {
            const qreal angle = qDegreesToRadians(i * 60.0 - 90);
            hexagon << centre + QPointF(qCos(angle), qSin(angle)) * 21;
        }
        QPainterPath cube;
        cube.addPolygon(hexagon);
        cube.closeSubpath();
        cutOut(p, cube, 2.5, ink, paper);
        const qreal s = 21 * qSqrt(3.0) / 2;
        line(p, centre, centre + QPointF(0, 21), 3, paper);
        line(p, centre, centre + QPointF(-s, -10.5), 3, paper);
        line(p, centre, centre + QPointF(s, -10.5), 3, paper);
    }
}

void salt(QPainter& p, const QColor& ink, const QColor& paper)
{
    QPainterPath cap;
    cap.moveTo(30, 40);
    cap.cubicTo(30, 14, 70, 14, 70, 40);
    cap.closeSubpath();
    p.fillPath(cap, ink);
    for (QPointF hole : {QPointF(42, 30), QPointF(50, 25), QPointF(58, 30)})
        disc(p, hole, 3.2, paper);
    p.setPen(Qt::NoPen);
    p.setBrush(ink);
    p.drawPolygon(QPolygonF({QPointF(28, 44), QPointF(72, 44), QPointF(78, 90), QPointF(22, 90)}));
    text(p, QStringLiteral("Na"), 22, QPointF(50, 78), paper);
}

void sun(QPainter& p, const QColor& ink, const QColor&)
{
    disc(p, QPointF(50, 50), 19, ink);
    for (int i = 0; i < 8; ++i) {
        const qreal angle = qDegreesToRadians(i * 45.0 + 22.5);
        const QPointF direction(qCos(angle), qSin(angle));
        line(p, QPointF(50, 50) + direction * 28, QPointF(50, 50) + direction * 41, 8, ink);
    }
}

enum class Frame { Know, Avoid, TakeCare, Seal };

// The fields' colours, dark enough for a white glyph.
const QColor mind(0x29, 0x5c, 0x99);
const QColor food(0x2f, 0x7d, 0x32);
const QColor family(0xb8, 0x3b, 0x73);
const QColor organs(0xb0, 0x3a, 0x2e);
const QColor checks(0x00, 0x79, 0x7a);
const QColor storage(0x54, 0x63, 0x74);
const QColor treatment(0x6a, 0x3d, 0x9a);
const QColor contents(0x8d, 0x5b, 0x1e);
const QColor light(0xc2, 0x6a, 0x00);

struct Pictogram {
    Glyph glyph;
    Frame frame;
    QColor color;
};

// One entry per id, from firstId on, with the warning it stands for in the demo database.
const std::array<Pictogram, WarningPictograms::lastId - WarningPictograms::firstId + 1>& pictograms()
{
    static const std::array<Pictogram, WarningPictograms::lastId - WarningPictograms::firstId + 1> list = {{
        {car, Frame::TakeCare, mind},                     // Prowadzenie pojazdów
        {wineGlass, Frame::Avoid, food},                  // Alkohol
        {alcoholAndLiver, Frame::TakeCare, food},         // Alkohol – uszkodzenie wątroby
        {grapefruit, Frame::Avoid, food},                 // Sok grejpfrutowy
        {milkCarton, Frame::Avoid, food},                 // Produkty mleczne
        {meal, Frame::Avoid, food},                       // Przyjmować na czczo
        {meal, Frame::Know, food},                        // Przyjmować z posiłkiem
        {coffee, Frame::TakeCare, food},                  // Kawa i herbata
        {leaf, Frame::TakeCare, food},                    // Pokarmy bogate w witaminę K
        {cheese, Frame::Avoid, food},                     // Pokarmy bogate w tyraminę
        {pregnancy, Frame::TakeCare, family},             // Ciąża
        {firstTrimester, Frame::Avoid, family},           // Ciąża – I trymestr
        {thirdTrimester, Frame::Avoid, family},           // Ciąża – III trymestr
        {breastfeeding, Frame::Avoid, family},            // Karmienie piersią
        {child, Frame::TakeCare, family},                 // Dzieci
        {elderly, Frame::TakeCare, family},               // Osoby starsze
        {kidney, Frame::TakeCare, organs},                // Niewydolność nerek
        {liver, Frame::Avoid, organs},                    // Niewydolność wątroby
        {sun, Frame::Avoid, light},                       // Nadwrażliwość na światło
        {runner, Frame::TakeCare, treatment},             // Doping w sporcie
        {lactose, Frame::Seal, contents},                 // Laktoza
        {sugar, Frame::Seal, contents},                   // Sacharoza
        {salt, Frame::Seal, contents},                    // Sód
        {drowsiness, Frame::TakeCare, mind},              // Senność
        {dizziness, Frame::TakeCare, mind},               // Zawroty głowy
        {crushedTablet, Frame::Avoid, treatment},         // Nie kruszyć
        {waterGlass, Frame::Know, treatment},             // Popić dużą ilością wody
        {addiction, Frame::TakeCare, mind},               // Ryzyko uzależnienia
        {taperingDose, Frame::Know, treatment},           // Odstawienie stopniowe
        {bloodDrop, Frame::TakeCare, organs},             // Krwawienia
        {anticoagulant, Frame::TakeCare, treatment},      // Leki przeciwzakrzepowe
        {tablets, Frame::Avoid, treatment},               // Inne leki z paracetamolem
        {capsules, Frame::Avoid, treatment},              // Inne NLPZ
        {heartRhythm, Frame::TakeCare, organs},           // Wydłużenie odstępu QT
        {lowSugar, Frame::TakeCare, checks},              // Hipoglikemia
        {potassium, Frame::TakeCare, checks},             // Hiperkaliemia
        {bloodPressure, Frame::Know, checks},             // Kontrola ciśnienia
        {testTube, Frame::Know, checks},                  // Kontrola morfologii
        {inr, Frame::Know, checks},                       // Kontrola INR
        {thermometer, Frame::Know, storage},              // Temperatura przechowywania
        {keepFromLight, Frame::Know, storage},            // Chronić przed światłem
        {fullCourse, Frame::Know, treatment},             // Pełna kuracja antybiotyku
        {bacteria, Frame::Know, treatment},               // Probiotyk
        {femaleSign, Frame::TakeCare, family},            // Antykoncepcja
        {juice, Frame::Avoid, food},                      // Soki owocowe
        {burger, Frame::TakeCare, food},                  // Posiłek bogatotłuszczowy
        {licorice, Frame::Avoid, food},                   // Lukrecja
        {timeApart, Frame::Know, food},                   // Wapń i żelazo w diecie
        {flower, Frame::Avoid, treatment},                // Dziurawiec
        {lungs, Frame::TakeCare, organs},                 // Astma
        {eye, Frame::TakeCare, organs},                   // Jaskra
        {maleSign, Frame::TakeCare, organs},              // Przerost prostaty
        {epilepsy, Frame::TakeCare, mind},                // Padaczka
        {mood, Frame::TakeCare, mind},                    // Myśli samobójcze
        {interaction, Frame::Avoid, treatment},           // Zespół serotoninowy
        {pressureDrop, Frame::TakeCare, checks},          // Spadki ciśnienia
        {hand, Frame::TakeCare, organs},                  // Reakcje skórne
        {muscle, Frame::TakeCare, organs},                // Bóle mięśni
        {cough, Frame::TakeCare, organs},                 // Kaszel
        {foot, Frame::TakeCare, organs},                  // Obrzęki
        {stomachBleeding, Frame::TakeCare, organs},       // Krwawienie z przewodu pokarmowego
        {glucometer, Frame::Know, checks},                // Kontrola glikemii
        {insomnia, Frame::Know, mind},                    // Bezsenność
        {urineColour, Frame::Know, organs},               // Zabarwienie moczu
        {syringe, Frame::Avoid, treatment},               // Szczepienia
        {glasses, Frame::TakeCare, mind},                 // Zaburzenia widzenia
        {lips, Frame::TakeCare, organs},                  // Suchość w ustach
    }};
    return list;
}

void drawGlyph(QPainter& painter, Glyph glyph, qreal scale, QPointF offset, const QColor& ink, const QColor& paper)
{
    part(painter, glyph, scale, QPointF(design / 2, design / 2) + offset, ink, paper);
}

// The badge at the lower right of a tile, on a white rim.
void drawBadge(QPainter& painter, Frame frame)
{
    if (frame == Frame::TakeCare) {
        const QPolygonF badge({QPointF(77, 54), QPointF(98, 94), QPointF(56, 94)});
        painter.setPen(roundPen(Qt::white, 10));
        painter.setBrush(Qt::white);
        painter.drawPolygon(badge);
        painter.setPen(roundPen(orange(), 4));
        painter.setBrush(orange());
        painter.drawPolygon(badge);
        line(painter, QPointF(77, 68), QPointF(77, 80), 6, Qt::white);
        disc(painter, QPointF(77, 88), 3.4, Qt::white);
    } else {
        const QPointF centre(77, 77);
        disc(painter, centre, 23, Qt::white);
        ring(painter, centre, 16, 7, orange());
        const qreal reach = 16 / qSqrt(2.0);
        line(painter, centre + QPointF(-reach, -reach), centre + QPointF(reach, reach), 7, orange());
    }
}

void drawFramed(QPainter& painter, const Pictogram& pictogram)
{
    switch (pictogram.frame) {
    case Frame::Know:
        painter.setPen(Qt::NoPen);
        painter.setBrush(pictogram.color);
        painter.drawRoundedRect(QRectF(2, 2, 96, 96), 18, 18);
        drawGlyph(painter, pictogram.glyph, 0.8, QPointF(), Qt::white, pictogram.color);
        break;
    case Frame::Avoid:
    case Frame::TakeCare:
        painter.setPen(Qt::NoPen);
        painter.setBrush(pictogram.color);
        painter.drawRoundedRect(QRectF(2, 2, 96, 96), 18, 18);
        drawGlyph(painter, pictogram.glyph, 0.72, QPointF(-8, -8), Qt::white, pictogram.color);
        drawBadge(painter, pictogram.frame);
        break;
    case Frame::Seal:
        disc(painter, QPointF(50, 50), 48, pictogram.color);
        ring(painter, QPointF(50, 50), 42, 3, QColor(255, 255, 255, 190));
        drawGlyph(painter, pictogram.glyph, 0.66, QPointF(), Qt::white, pictogram.color);
        break;
    }
}

} // namespace

namespace WarningPictograms {

QImage draw(int id)
{
    const int index = qBound(0, id - firstId, lastId - firstId);
    QImage image = canvas(pictogramSize, pictogramSize);
    QPainter painter;
    begin(painter, image, design);
    drawFramed(painter, pictograms()[static_cast<size_t>(index)]);
    return image;
}

} // namespace WarningPictograms
