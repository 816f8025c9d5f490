#include "painting.h"
#include "pictures.h"

#include <QPainter>
#include <QPainterPath>
#include <QPolygonF>

using namespace Painting;

namespace {

// Button pictograms are drawn on a 24-unit grid and saved at twice that size
// for sharp edges on high-density screens.
constexpr qreal grid = 24;
constexpr int buttonSize = 48;

QImage magnifier(bool plus)
{
    QImage image = canvas(buttonSize, buttonSize);
    QPainter painter;
    begin(painter, image, grid);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(blue(), 2.2));
    painter.drawEllipse(QPointF(10, 10), 6.6, 6.6);
    painter.setPen(QPen(blue(), 3.4, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(QPointF(15.2, 15.2), QPointF(20.6, 20.6));
    painter.setPen(QPen(orange(), 2, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(QPointF(7, 10), QPointF(13, 10));
    if (plus)
        painter.drawLine(QPointF(10, 7), QPointF(10, 13));
    return image;
}

} // namespace

namespace Pictures {

QImage trash()
{
    QImage image = canvas(buttonSize, buttonSize);
    QPainter painter;
    begin(painter, image, grid);

    // The handle on the lid.
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(Qt::white, 1.6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPolyline(QPolygonF({QPointF(9.6, 5.4), QPointF(9.6, 3.4), QPointF(14.4, 3.4), QPointF(14.4, 5.4)}));

    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::white);
    painter.drawRoundedRect(QRectF(4, 5.2, 16, 2.2), 1, 1);

    QPainterPath body;
    body.moveTo(5.6, 8.6);
    body.lineTo(18.4, 8.6);
    body.lineTo(17.4, 19.4);
    body.quadTo(17.2, 21, 15.6, 21);
    body.lineTo(8.4, 21);
    body.quadTo(6.8, 21, 6.6, 19.4);
    body.closeSubpath();
    QPainterPath openings;
    for (qreal x : {8.9, 11.5, 14.1})
        openings.addRoundedRect(QRectF(x, 11, 1.4, 7.4), 0.7, 0.7);
    painter.drawPath(body.subtracted(openings));
    return image;
}

QImage notificationIcon()
{
    QImage image = canvas(76, 76);
    QPainter painter;
    begin(painter, image, 76);
    painter.setPen(Qt::NoPen);
    painter.setBrush(blue());
    painter.drawEllipse(QPointF(38, 38), 34, 34);

    painter.setBrush(Qt::white);
    painter.drawEllipse(QPointF(38, 19), 3.4, 3.4);
    QPainterPath bell;
    bell.moveTo(23, 50);
    bell.cubicTo(26.5, 46, 26.5, 41, 26.5, 35);
    bell.cubicTo(26.5, 27, 31, 21.5, 38, 21.5);
    bell.cubicTo(45, 21.5, 49.5, 27, 49.5, 35);
    bell.cubicTo(49.5, 41, 49.5, 46, 53, 50);
    bell.closeSubpath();
    painter.drawPath(bell);
    painter.drawRoundedRect(QRectF(21, 48.5, 34, 4.5), 2.25, 2.25);
    painter.drawEllipse(QPointF(38, 57.5), 4.2, 4.2);

    // The badge: a light ring of the circle's colour separates it from the bell.
    painter.setBrush(orange());
    painter.setPen(QPen(blue(), 3));
    painter.drawEllipse(QPointF(53, 23), 8.5, 8.5);
    return image;
}

QImage print()
{
    QImage image = canvas(buttonSize, buttonSize);
    QPainter painter;
    begin(painter, image, grid);

    // The sheet going in at the top.
    painter.setPen(QPen(blue(), 1.6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::white);
    painter.drawRect(QRectF(7, 2.8, 10, 6));

    painter.setPen(Qt::NoPen);
    painter.setBrush(blue());
    painter.drawRoundedRect(QRectF(2.5, 8, 19, 9.5), 2, 2);
    painter.setBrush(orange());
    painter.drawEllipse(QPointF(18.3, 11), 1.1, 1.1);

    // The printed sheet coming out.
    painter.setPen(QPen(blue(), 1.6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::white);
    painter.drawRect(QRectF(7, 13.5, 10, 8));
    painter.setPen(QPen(blue(), 1.1, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(QPointF(9.2, 16.4), QPointF(14.8, 16.4));
    painter.drawLine(QPointF(9.2, 19), QPointF(13.2, 19));
    return image;
}

QImage image()
{
    QImage result = canvas(buttonSize, buttonSize);
    QPainter painter;
    begin(painter, result, grid);

    const QRectF frame(2.8, 4.8, 18.4, 14.4);
    QPainterPath inside;
    inside.addRoundedRect(frame.adjusted(0.8, 0.8, -0.8, -0.8), 1.4, 1.4);
    QPainterPath hills;
    hills.moveTo(3, 19);
    hills.lineTo(9.5, 11.5);
    hills.lineTo(13.5, 15.8);
    hills.lineTo(16, 13.2);
    hills.lineTo(21, 19);
    hills.closeSubpath();
    painter.setPen(Qt::NoPen);
    painter.fillPath(hills.intersected(inside), blue());
    painter.setBrush(orange());
    painter.drawEllipse(QPointF(16.2, 9.2), 1.9, 1.9);

    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(blue(), 1.8, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawRoundedRect(frame, 2, 2);
    return result;
}

QImage pdfIcon()
{
    QImage image = canvas(40, 40);
    QPainter painter;
    begin(painter, image, 40);

    QPainterPath page;
    page.moveTo(8.5, 2.5);
    page.lineTo(25, 2.5);
    page.lineTo(33.5, 11);
    page.lineTo(33.5, 37.5);
    page.lineTo(8.5, 37.5);
    page.closeSubpath();
    painter.setPen(QPen(QColor(0x8a, 0x97, 0xa5), 1.2, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
    painter.setBrush(Qt::white);
    painter.drawPath(page);
    painter.setBrush(QColor(0xdd, 0xe3, 0xea));
    painter.drawPolygon(QPolygonF({QPointF(25, 2.5), QPointF(25, 11), QPointF(33.5, 11)}));

    // Text lines on the page.
    painter.setPen(QPen(QColor(0xc4, 0xcd, 0xd6), 1.4, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(QPointF(12, 8), QPointF(21, 8));
    painter.drawLine(QPointF(12, 12), QPointF(22, 12));
    painter.drawLine(QPointF(12, 32), QPointF(30, 32));

    painter.setPen(Qt::NoPen);
    painter.setBrush(orange());
    painter.drawRoundedRect(QRectF(4, 16, 27, 12), 2, 2);
    drawCenteredText(painter, QStringLiteral("PDF"), font(10, true), 17.5, 25.8, Qt::white);
    return image;
}

QImage zoomIn()
{
    return magnifier(true);
}

QImage zoomOut()
{
    return magnifier(false);
}

} // namespace Pictures
