#pragma once

#include <QByteArray>
#include <QImage>
#include <QList>
#include <QVector>

// Writes an endlessly looping animated GIF89a. Qt reads GIF but doesn't write
// it, so the frames are mapped to one 256-colour palette and stored as
// LZW codes that are all literals: valid for every decoder, only not small.
class GifEncoder {
public:
    // All frames have the size of the first; delay in hundredths of a second.
    static QByteArray encode(const QList<QImage>& frames, int delayCentiseconds);

private:
    static QVector<QRgb> palette();
    static QByteArray imageData(const QImage& indexed);
};
