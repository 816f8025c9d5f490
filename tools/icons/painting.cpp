#include "painting.h"

#include <QFontMetricsF>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPathStroker>
#include <QPolygonF>
#include <QTransform>

namespace Painting {

namespace {
int scaleFactor = 1;
} // namespace

void setScale(int factor)
{
    scaleFactor = factor;
}

QImage canvas(int width, int height)
{
    QImage image(width * scaleFactor, height * scaleFactor, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    return image;
}

void begin(QPainter& painter, QImage& image, qreal designWidth)
{
    painter.begin(&image);
    painter.setRenderHint(QPainter::Antialiasing, true);
    painter.setRenderHint(QPainter::SmoothPixmapTransform, true);
    const qreal scale = image.width() / designWidth;
    painter.scale(scale, scale);
}

QFont font(qreal pixelSize, bool bold)
{
    QFont result(QStringLiteral("DejaVu Sans"));
    result.setStyleHint(QFont::SansSerif);
    result.setPixelSize(qRound(pixelSize));
    result.setBold(bold);
    result.setHintingPreference(QFont::PreferNoHinting);
    return result;
}

QPainterPath textPath(const QString& text, const QFont& font)
{
    QPainterPath path;
    path.addText(0, 0, font, text);
    return path;
}

qreal textWidth(const QString& text, const QFont& font)
{
    return QFontMetricsF(font).horizontalAdvance(text);
}

void drawText(QPainter& painter, const QString& text, const QFont& font, qreal x, qreal baselineY,
              const QColor& color)
{
    painter.fillPath(textPath(text, font).translated(x, baselineY), color);
}

void drawCenteredText(QPainter& painter, const QString& text, const QFont& font, qreal centerX,
                      qreal baselineY, const QColor& color)
{
    drawText(painter, text, font, centerX - textWidth(text, font) / 2, baselineY, color);
}

namespace {

// The quill in its own frame: the feather starts at the origin and the nib
// points along +x, ending at x = 124.
QPainterPath quillVane()
{
    QPainterPath vane;
    vane.moveTo(0, 0);
    vane.cubicTo(20, -30, 62, -30, 96, -5);
    vane.lineTo(96, 5);
    vane.cubicTo(66, 20, 26, 18, 0, 0);
    vane.closeSubpath();
    // Two notches in the barbs make the leaf read as a feather.
    QPainterPath notches;
    notches.addPolygon(QPolygonF({QPointF(34, -40), QPointF(50, -12), QPointF(42, -40)}));
    notches.addPolygon(QPolygonF({QPointF(46, 34), QPointF(62, 8), QPointF(54, 34)}));
    return vane.subtracted(notches);
}

QPainterPath quillNib()
{
    QPainterPath nib;
    nib.moveTo(90, -7);
    nib.lineTo(124, 0);
    nib.lineTo(90, 7);
    nib.closeSubpath();
    return nib;
}

} // namespace

void drawMonogram(QPainter& painter, qreal size)
{
    painter.save();
    painter.scale(size / 256.0, size / 256.0);

    // The ring of the Q.
    QPainterPath ring;
    ring.addEllipse(QPointF(122, 120), 82, 82);
    ring.addEllipse(QPointF(122, 120), 51, 51);
    ring.setFillRule(Qt::OddEvenFill);

    QTransform toTail;
    toTail.translate(120, 118);
    toTail.rotate(42);
    toTail.scale(1.12, 1.12);
    const QPainterPath quill = toTail.map(quillVane().united(quillNib()));

    // A transparent gap around the quill where it crosses the ring.
    QPainterPathStroker gapStroker;
    gapStroker.setWidth(16);
    gapStroker.setJoinStyle(Qt::RoundJoin);
    const QPainterPath gap = gapStroker.createStroke(quill).united(quill);
    painter.fillPath(ring.subtracted(gap), Qt::white);

    painter.fillPath(quill, orange());
    // The shaft of the feather.
    QPen shaft(QColor(255, 255, 255, 200), 4, Qt::SolidLine, Qt::RoundCap);
    painter.setPen(shaft);
    painter.drawLine(toTail.map(QPointF(10, 0)), toTail.map(QPointF(96, 0)));
    // The slit of the nib.
    painter.setPen(QPen(QColor(255, 255, 255, 200), 2.5, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(toTail.map(QPointF(104, 0)), toTail.map(QPointF(116, 0)));
    painter.restore();
}

void drawLogoTile(QPainter& painter, qreal size)
{
    painter.save();
    QLinearGradient fill(0, 0, 0, size);
    fill.setColorAt(0, lightBlue());
    fill.setColorAt(1, blue());
    painter.setPen(Qt::NoPen);
    painter.setBrush(fill);
    painter.drawRoundedRect(QRectF(0, 0, size, size), size * 0.22, size * 0.22);
    painter.translate(size * 0.06, size * 0.06);
    drawMonogram(painter, size * 0.88);
    painter.restore();
}

} // namespace Painting
