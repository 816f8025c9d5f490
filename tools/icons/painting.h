#pragma once

#include <QColor>
#include <QFont>
#include <QImage>
#include <QPainterPath>
#include <QString>

class QPainter;

// Colours and small drawing helpers shared by every picture.
namespace Painting {

inline QColor blue() { return QColor(0x29, 0x5c, 0x99); }
inline QColor darkBlue() { return QColor(0x1d, 0x43, 0x72); }
inline QColor lightBlue() { return QColor(0x3b, 0x78, 0xc0); }
inline QColor orange() { return QColor(0xe3, 0x50, 0x2a); }
inline QColor paleBlue() { return QColor(0xf4, 0xf8, 0xfb); }
inline QColor navy() { return QColor(0x22, 0x3e, 0x59); }
inline QColor grey() { return QColor(0x9a, 0xa7, 0xb4); }

// A transparent ARGB image of the given size, times the scale: the same
// drawing is saved once for ordinary screens and once at twice the size for
// screens scaled above 100 %.
QImage canvas(int width, int height);
void setScale(int factor);

// Antialiased painting with a coordinate system of designWidth units across the
// image, so that a picture is drawn once and saved at any size.
void begin(QPainter& painter, QImage& image, qreal designWidth);

// Text as a path, so that the outline does not depend on the screen's hinting.
// The font is DejaVu Sans, which every Debian desktop has.
QFont font(qreal pixelSize, bool bold);
QPainterPath textPath(const QString& text, const QFont& font);
// Fills text centred horizontally on centerX with its baseline at baselineY.
void drawCenteredText(QPainter& painter, const QString& text, const QFont& font, qreal centerX,
                      qreal baselineY, const QColor& color);
void drawText(QPainter& painter, const QString& text, const QFont& font, qreal x, qreal baselineY,
              const QColor& color);
qreal textWidth(const QString& text, const QFont& font);

// The Quillard mark: a white "Q" ring whose tail is an orange quill.
// Drawn into the square (0, 0, size, size) without a background.
void drawMonogram(QPainter& painter, qreal size);
// The mark on its rounded blue tile, as on the tray.
void drawLogoTile(QPainter& painter, qreal size);

} // namespace Painting
