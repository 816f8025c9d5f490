#include "painting.h"
#include "pictures.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPolygonF>
#include <QRadialGradient>

using namespace Painting;

namespace {

// The largest font of the family that keeps the text within maxWidth.
QFont fittingFont(const QString& text, qreal pixelSize, bool bold, qreal maxWidth)
{
    QFont result = font(pixelSize, bold);
    while (pixelSize > 6 && textWidth(text, result) > maxWidth) {
        pixelSize -= 1;
        result = font(pixelSize, bold);
    }
    return result;
}

} // namespace

namespace Pictures {

QImage tray()
{
    QImage image = canvas(256, 256);
    QPainter painter;
    begin(painter, image, 256);
    painter.translate(8, 8);
    drawLogoTile(painter, 240);
    return image;
}

QImage splash()
{
    const qreal width = 600;
    const qreal height = 360;
    QImage image = canvas(600, 360);
    QPainter painter;
    begin(painter, image, width);

    QLinearGradient background(0, 0, width, height);
    background.setColorAt(0, lightBlue());
    background.setColorAt(0.55, blue());
    background.setColorAt(1, darkBlue());
    painter.fillRect(QRectF(0, 0, width, height), background);

    // A large, faint ring of the mark behind the text.
    painter.save();
    painter.translate(430, 60);
    painter.setOpacity(0.08);
    drawMonogram(painter, 330);
    painter.restore();

    // A soft light behind the logo.
    QRadialGradient glow(QPointF(110, 150), 140);
    glow.setColorAt(0, QColor(255, 255, 255, 40));
    glow.setColorAt(1, QColor(255, 255, 255, 0));
    painter.fillRect(QRectF(0, 0, width, height), glow);

    painter.save();
    painter.translate(48, 96);
    // The tile's shadow.
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0, 0, 0, 50));
    painter.drawRoundedRect(QRectF(3, 6, 120, 120), 26, 26);
    drawLogoTile(painter, 120);
    painter.restore();

    const qreal textLeft = 196;
    QFont maker = font(18, true);
    maker.setLetterSpacing(QFont::AbsoluteSpacing, 4);
    drawText(painter, QStringLiteral("CORVANE"), maker, textLeft + 2, 122, QColor(255, 255, 255, 200));
    drawText(painter, QStringLiteral("Quillard"), font(60, true), textLeft, 184, Qt::white);

    painter.setPen(QPen(orange(), 6, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(QPointF(textLeft + 4, 206), QPointF(textLeft + 124, 206));

    drawText(painter, QStringLiteral("Baza leków dla farmaceutów"), font(21, false), textLeft + 2, 242,
             paleBlue());

    // The orange edge at the bottom, with a thin light line above it.
    painter.fillRect(QRectF(0, height - 10, width, 10), orange());
    painter.fillRect(QRectF(0, height - 12, width, 2), QColor(255, 255, 255, 60));
    return image;
}

QImage bannerCorvane()
{
    const qreal width = 400;
    const qreal height = 120;
    QImage image = canvas(400, 120);
    QPainter painter;
    begin(painter, image, width);

    QLinearGradient background(0, 0, width, 0);
    background.setColorAt(0, blue());
    background.setColorAt(1, darkBlue());
    painter.fillRect(QRectF(0, 0, width, height), background);

    // The orange wedge at the right, with a lighter stripe before it.
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(255, 255, 255, 40));
    painter.drawPolygon(QPolygonF({QPointF(346, 0), QPointF(356, 0), QPointF(326, height), QPointF(316, height)}));
    painter.setBrush(orange());
    painter.drawPolygon(QPolygonF({QPointF(362, 0), QPointF(width, 0), QPointF(width, height), QPointF(332, height)}));

    painter.save();
    painter.translate(20, 22);
    drawLogoTile(painter, 76);
    painter.restore();

    const qreal textLeft = 112;
    const qreal textRight = 318;
    const QString maker = QStringLiteral("Corvane ");
    const QString product = QStringLiteral("Quillard");
    QFont makerFont = font(26, false);
    QFont productFont = font(26, true);
    while (textWidth(maker, makerFont) + textWidth(product, productFont) > textRight - textLeft) {
        makerFont.setPixelSize(makerFont.pixelSize() - 1);
        productFont.setPixelSize(productFont.pixelSize() - 1);
    }
    drawText(painter, maker, makerFont, textLeft, 60, paleBlue());
    drawText(painter, product, productFont, textLeft + textWidth(maker, makerFont), 60, Qt::white);

    painter.setPen(QPen(orange(), 3, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(QPointF(textLeft + 1, 72), QPointF(textLeft + 60, 72));

    const QString subtitle = QStringLiteral("Baza leków dla farmaceutów");
    drawText(painter, subtitle, fittingFont(subtitle, 14, false, textRight - textLeft), textLeft, 96,
             QColor(255, 255, 255, 220));
    return image;
}

} // namespace Pictures
