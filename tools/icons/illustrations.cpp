#include "painting.h"
#include "pictures.h"

#include <QPainter>
#include <QPainterPath>
#include <QPolygonF>
#include <QRadialGradient>

using namespace Painting;

namespace {

const QColor outline(0xc3, 0xcf, 0xdc);
const QColor backdrop(0xe4, 0xec, 0xf5);

// A capsule of two colours, centred on the origin and lying along x.
void drawCapsule(QPainter& painter, qreal length, qreal thickness, const QColor& left, const QColor& right)
{
    const QRectF whole(-length / 2, -thickness / 2, length, thickness);
    QPainterPath shape;
    shape.addRoundedRect(whole, thickness / 2, thickness / 2);
    QPainterPath leftHalf;
    leftHalf.addRect(QRectF(-length / 2, -thickness / 2, length / 2, thickness));
    painter.fillPath(shape.intersected(leftHalf), left);
    painter.fillPath(shape.subtracted(leftHalf), right);
    painter.setPen(QPen(outline.darker(115), 1));
    painter.setBrush(Qt::NoBrush);
    painter.drawPath(shape);
}

// A blister of eight pockets, centred on the origin; two pockets are empty.
void drawBlister(QPainter& painter)
{
    painter.save();
    painter.setPen(QPen(outline, 2));
    painter.setBrush(Qt::white);
    painter.drawRoundedRect(QRectF(-78, -46, 156, 92), 10, 10);
    // The perforation between the two rows.
    painter.setPen(QPen(outline, 1.2, Qt::DashLine));
    painter.drawLine(QPointF(-70, 0), QPointF(70, 0));

    for (int row = 0; row < 2; ++row) {
        for (int column = 0; column < 4; ++column) {
            const QPointF centre(-54 + column * 36, -22 + row * 44);
            painter.save();
            painter.translate(centre);
            painter.setPen(QPen(outline, 1.5));
            painter.setBrush(QColor(0xf2, 0xf6, 0xfa));
            painter.drawRoundedRect(QRectF(-15, -15, 30, 30), 9, 9);
            const int pocket = row * 4 + column;
            if (pocket == 2 || pocket == 5) {
                // A pressed-out pocket: torn foil.
                painter.setPen(QPen(outline, 1.2));
                painter.drawPolyline(QPolygonF({QPointF(-8, -6), QPointF(-3, -1), QPointF(2, -6), QPointF(7, 0)}));
            } else if (pocket % 2 == 0) {
                painter.rotate(-35);
                drawCapsule(painter, 24, 11, orange(), Qt::white);
            } else {
                painter.setPen(Qt::NoPen);
                painter.setBrush(blue());
                painter.drawEllipse(QPointF(0, 0), 9, 9);
                painter.setPen(QPen(QColor(255, 255, 255, 150), 1.4));
                painter.drawLine(QPointF(-5, 0), QPointF(5, 0));
            }
            painter.restore();
        }
    }
    painter.restore();
}

void drawBackdrop(QPainter& painter, const QPointF& centre, qreal rx, qreal ry)
{
    painter.setPen(Qt::NoPen);
    painter.setBrush(backdrop);
    painter.drawEllipse(centre, rx, ry);
}

} // namespace

namespace Pictures {

QImage findDrug()
{
    QImage image = canvas(300, 200);
    QPainter painter;
    begin(painter, image, 300);
    drawBackdrop(painter, QPointF(150, 86), 118, 78);

    const QPointF blisterCentre(130, 82);
    const qreal blisterAngle = -8;
    painter.save();
    painter.translate(blisterCentre);
    painter.rotate(blisterAngle);
    drawBlister(painter);
    painter.restore();

    const QPointF lens(186, 100);
    const qreal lensRadius = 38;
    // The blister seen through the glass, enlarged.
    painter.save();
    QPainterPath glass;
    glass.addEllipse(lens, lensRadius, lensRadius);
    painter.setClipPath(glass);
    painter.fillPath(glass, Qt::white);
    painter.translate(lens);
    painter.scale(1.4, 1.4);
    painter.translate(-lens);
    painter.translate(blisterCentre);
    painter.rotate(blisterAngle);
    drawBlister(painter);
    painter.restore();

    QRadialGradient shine(lens - QPointF(14, 14), lensRadius);
    shine.setColorAt(0, QColor(255, 255, 255, 110));
    shine.setColorAt(1, QColor(0xcf, 0xe0, 0xf2, 60));
    painter.setPen(Qt::NoPen);
    painter.setBrush(shine);
    painter.drawEllipse(lens, lensRadius, lensRadius);

    // The handle, then the rim over its end.
    painter.setPen(QPen(orange(), 16, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(lens + QPointF(40, 40), lens + QPointF(70, 70));
    painter.setPen(QPen(darkBlue(), 12, Qt::SolidLine, Qt::FlatCap));
    painter.drawLine(lens + QPointF(29, 29), lens + QPointF(41, 41));
    painter.setPen(QPen(blue(), 9));
    painter.setBrush(Qt::NoBrush);
    painter.drawEllipse(lens, lensRadius, lensRadius);
    painter.setPen(QPen(QColor(255, 255, 255, 190), 3.5, Qt::SolidLine, Qt::RoundCap));
    painter.drawArc(QRectF(lens.x() - 27, lens.y() - 27, 54, 54), 100 * 16, 60 * 16);

    drawCenteredText(painter, QStringLiteral("Znajdź lek"), font(18, true), 150, 190, blue());
    return image;
}

QImage noRecipe()
{
    QImage image = canvas(300, 200);
    QPainter painter;
    begin(painter, image, 300);
    drawBackdrop(painter, QPointF(150, 96), 104, 78);

    // The pestle, leaning in the mortar.
    painter.setPen(QPen(orange(), 15, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(QPointF(186, 34), QPointF(158, 104));
    painter.setPen(QPen(orange().darker(115), 21, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(QPointF(162, 96), QPointF(157, 108));

    QPainterPath bowl;
    bowl.moveTo(92, 92);
    bowl.lineTo(208, 92);
    bowl.cubicTo(208, 130, 184, 152, 150, 152);
    bowl.cubicTo(116, 152, 92, 130, 92, 92);
    bowl.closeSubpath();
    painter.setPen(Qt::NoPen);
    painter.fillPath(bowl, blue());
    painter.setBrush(darkBlue());
    painter.drawRoundedRect(QRectF(122, 148, 56, 12), 4, 4);
    painter.setBrush(lightBlue());
    painter.drawRoundedRect(QRectF(86, 86, 128, 10), 5, 5);
    // A highlight on the bowl.
    painter.setPen(QPen(QColor(255, 255, 255, 90), 4, Qt::SolidLine, Qt::RoundCap));
    painter.setBrush(Qt::NoBrush);
    painter.drawArc(QRectF(104, 70, 92, 70), 200 * 16, 40 * 16);

    drawCenteredText(painter, QStringLiteral("Brak receptur"), font(17, true), 150, 188, blue());
    return image;
}

QImage placeholderDrugImage()
{
    QImage image = canvas(218, 169);
    QPainter painter;
    begin(painter, image, 218);
    painter.setPen(Qt::NoPen);
    painter.setBrush(paleBlue());
    painter.drawRect(QRectF(0, 0, 218, 169));

    const QColor line = grey();
    const QColor faceFront(0xff, 0xff, 0xff);
    const QColor faceTop(0xe9, 0xee, 0xf3);
    const QColor faceSide(0xdc, 0xe3, 0xea);

    // A medicine box seen from above and to the right.
    const QPolygonF front({QPointF(58, 56), QPointF(136, 56), QPointF(136, 120), QPointF(58, 120)});
    const QPolygonF top({QPointF(58, 56), QPointF(84, 36), QPointF(162, 36), QPointF(136, 56)});
    const QPolygonF side({QPointF(136, 56), QPointF(162, 36), QPointF(162, 100), QPointF(136, 120)});
    painter.setPen(QPen(line, 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(faceTop);
    painter.drawPolygon(top);
    painter.setBrush(faceSide);
    painter.drawPolygon(side);
    painter.setBrush(faceFront);
    painter.drawPolygon(front);

    // The label on the front: a cross and two lines of text.
    painter.setPen(Qt::NoPen);
    painter.setBrush(faceSide);
    painter.drawRoundedRect(QRectF(66, 66, 22, 22), 4, 4);
    painter.setBrush(Qt::white);
    painter.drawRect(QRectF(74.5, 70, 5, 14));
    painter.drawRect(QRectF(70, 74.5, 14, 5));
    painter.setPen(QPen(faceSide, 4, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(QPointF(96, 71), QPointF(126, 71));
    painter.drawLine(QPointF(96, 82), QPointF(118, 82));
    painter.drawLine(QPointF(68, 104), QPointF(126, 104));

    drawCenteredText(painter, QStringLiteral("Brak zdjęcia"), font(15, false), 109, 150, QColor(0x7b, 0x8a, 0x99));
    return image;
}

} // namespace Pictures
