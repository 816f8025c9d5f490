#include "painting.h"
#include "pictures.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
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

// The glyphs of the contact card, white, drawn in a 24 by 24 box centred on the origin.
void drawPinGlyph(QPainter& painter)
{
    QPainterPath pin;
    pin.moveTo(0, 11);
    pin.cubicTo(-4, 5, -8, 0, -8, -4);
    pin.arcTo(QRectF(-8, -12, 16, 16), 180, -180);
    pin.cubicTo(8, 0, 4, 5, 0, 11);
    pin.closeSubpath();
    QPainterPath hole;
    hole.addEllipse(QPointF(0, -4), 3.2, 3.2);
    painter.fillPath(pin.subtracted(hole), Qt::white);
}

void drawPhoneGlyph(QPainter& painter)
{
    painter.setPen(QPen(Qt::white, 2.2));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(QRectF(-6.5, -11, 13, 22), 2.5, 2.5);
    painter.setPen(QPen(Qt::white, 2, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(QPointF(-1.8, 7), QPointF(1.8, 7));
    painter.drawLine(QPointF(-6.5, -6.5), QPointF(6.5, -6.5));
}

void drawEnvelopeGlyph(QPainter& painter)
{
    painter.setPen(QPen(Qt::white, 2.2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(QRectF(-10, -7, 20, 14), 2, 2);
    painter.drawPolyline(QPolygonF({QPointF(-9, -5.5), QPointF(0, 1.5), QPointF(9, -5.5)}));
}

void drawGlobeGlyph(QPainter& painter)
{
    painter.setPen(QPen(Qt::white, 2));
    painter.setBrush(Qt::NoBrush);
    painter.drawEllipse(QPointF(0, 0), 10, 10);
    painter.drawEllipse(QPointF(0, 0), 4.5, 10);
    painter.drawLine(QPointF(-10, 0), QPointF(10, 0));
    painter.setPen(QPen(Qt::white, 1.6));
    painter.drawLine(QPointF(-8.6, -5), QPointF(8.6, -5));
    painter.drawLine(QPointF(-8.6, 5), QPointF(8.6, 5));
}

// One entry of the contact card: a round blue badge with its glyph, a small
// grey caption and up to two lines of text beside it.
void drawContactEntry(QPainter& painter, qreal x, qreal y, void (*glyph)(QPainter&), const QString& caption,
                      const QString& line1, const QString& line2)
{
    painter.save();
    painter.translate(x + 20, y + 20);
    painter.setPen(Qt::NoPen);
    painter.setBrush(blue());
    painter.drawEllipse(QPointF(0, 0), 20, 20);
    glyph(painter);
    painter.restore();

    const qreal textLeft = x + 52;
    const qreal maxWidth = 160;
    QFont captionFont = font(10.5, true);
    captionFont.setLetterSpacing(QFont::AbsoluteSpacing, 1.5);
    drawText(painter, caption, captionFont, textLeft, y + 9, grey());
    drawText(painter, line1, fittingFont(line1, 16, true, maxWidth), textLeft, y + 29, navy());
    if (!line2.isEmpty())
        drawText(painter, line2, fittingFont(line2, 13.5, false, maxWidth), textLeft, y + 48, navy());
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

QImage contact()
{
    const qreal width = 500;
    const qreal height = 350;
    QImage image = canvas(500, 350);
    QPainter painter;
    begin(painter, image, width);
    painter.fillRect(QRectF(0, 0, width, height), Qt::white);

    // The blue head of the card, as on the splash screen.
    const qreal headHeight = 132;
    QLinearGradient head(0, 0, width, headHeight);
    head.setColorAt(0, lightBlue());
    head.setColorAt(0.6, blue());
    head.setColorAt(1, darkBlue());
    painter.fillRect(QRectF(0, 0, width, headHeight), head);

    painter.save();
    painter.setClipRect(QRectF(0, 0, width, headHeight));
    painter.translate(372, -28);
    painter.setOpacity(0.07);
    drawMonogram(painter, 190);
    painter.restore();

    painter.save();
    painter.translate(32, 28);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0, 0, 0, 50));
    painter.drawRoundedRect(QRectF(2, 4, 76, 76), 17, 17);
    drawLogoTile(painter, 76);
    painter.restore();

    const qreal textLeft = 130;
    QFont kicker = font(12, true);
    kicker.setLetterSpacing(QFont::AbsoluteSpacing, 3);
    drawText(painter, QStringLiteral("KONTAKT"), kicker, textLeft + 1, 48, QColor(255, 255, 255, 200));
    drawText(painter, QStringLiteral("Corvane sp. z o.o."), font(30, true), textLeft, 84, Qt::white);
    painter.setPen(QPen(orange(), 4, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(QPointF(textLeft + 2, 98), QPointF(textLeft + 72, 98));
    drawText(painter, QStringLiteral("Twórca programu Quillard"), font(14, false), textLeft + 1, 118,
             paleBlue());

    // Two columns of contact entries on the white body. The address and the
    // number are made up: Polish subscriber numbers never begin with 0.
    const qreal top = headHeight + 36;
    const qreal rowStep = 84;
    const qreal left = 28;
    const qreal right = 268;
    drawContactEntry(painter, left, top, drawPinGlyph, QStringLiteral("ADRES"),
                     QStringLiteral("ul. Gęsiego Pióra 7"), QStringLiteral("31-999 Kraków"));
    drawContactEntry(painter, right, top, drawPhoneGlyph, QStringLiteral("TELEFON"),
                     QStringLiteral("+48 12 000 45 67"), QStringLiteral("pon.–pt. 8:00–16:00"));
    drawContactEntry(painter, left, top + rowStep, drawEnvelopeGlyph, QStringLiteral("E-MAIL"),
                     QStringLiteral("pomoc@corvane.pl"), QStringLiteral("RODO: dane@corvane.pl"));
    drawContactEntry(painter, right, top + rowStep, drawGlobeGlyph, QStringLiteral("WWW"),
                     QStringLiteral("www.corvane.pl"), QString());

    // The orange edge at the bottom.
    painter.fillRect(QRectF(0, height - 8, width, 8), orange());
    return image;
}

} // namespace Pictures
