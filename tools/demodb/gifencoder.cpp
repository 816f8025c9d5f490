#include "gifencoder.h"

#include <QColor>

namespace {

const int minimumCodeSize = 8;
const int clearCode = 256;
const int endCode = 257;
// After a clear code a decoder widens its codes to 10 bits once 255 more codes
// have come; restarting well before that keeps every code at 9 bits.
const int literalsPerClear = 250;

void appendWord(QByteArray& out, int value)
{
    out.append(static_cast<char>(value & 0xFF));
    out.append(static_cast<char>((value >> 8) & 0xFF));
}

// Packs 9-bit codes least significant bit first, as GIF wants.
class BitWriter {
public:
    void write(int code)
    {
        accumulator |= static_cast<quint32>(code) << bitCount;
        bitCount += 9;
        while (bitCount >= 8) {
            bytes.append(static_cast<char>(accumulator & 0xFF));
            accumulator >>= 8;
            bitCount -= 8;
        }
    }
    QByteArray finish()
    {
        if (bitCount > 0)
            bytes.append(static_cast<char>(accumulator & 0xFF));
        accumulator = 0;
        bitCount = 0;
        return bytes;
    }

private:
    QByteArray bytes;
    quint32 accumulator = 0;
    int bitCount = 0;
};

} // namespace

QVector<QRgb> GifEncoder::palette()
{
    QVector<QRgb> colours;
    // The program's colours first, with the blends that antialiased text gives.
    const QList<QColor> own = {QColor(0x29, 0x5c, 0x99), QColor(0xe3, 0x50, 0x2a), QColor(0x08, 0x2e, 0x56),
                               QColor(0xff, 0xff, 0xff)};
    for (const QColor& from : own) {
        for (const QColor& to : own) {
            if (from == to)
                continue;
            for (int step = 1; step < 4; ++step) {
                const int r = from.red() + (to.red() - from.red()) * step / 4;
                const int g = from.green() + (to.green() - from.green()) * step / 4;
                const int b = from.blue() + (to.blue() - from.blue()) * step / 4;
                colours.append(qRgb(r, g, b));
            }
        }
        colours.append(from.rgb());
    }
    // Then a 6x6x6 colour cube for everything else, as far as room is left.
    for (int r = 0; r < 6 && colours.size() < 256; ++r) {
        for (int g = 0; g < 6 && colours.size() < 256; ++g) {
            for (int b = 0; b < 6 && colours.size() < 256; ++b)
                colours.append(qRgb(r * 51, g * 51, b * 51));
        }
    }
    while (colours.size() < 256)
        colours.append(qRgb(0, 0, 0));
    return colours;
}

QByteArray GifEncoder::imageData(const QImage& indexed)
{
    BitWriter bits;
    bits.write(clearCode);
    int sinceClear = 0;
    for (int y = 0; y < indexed.height(); ++y) {
        const uchar* line = indexed.constScanLine(y);
        for (int x = 0; x < indexed.width(); ++x) {
            if (sinceClear == literalsPerClear) {
                bits.write(clearCode);
                sinceClear = 0;
            }
            bits.write(line[x]);
            ++sinceClear;
        }
    }
    bits.write(endCode);
    const QByteArray codes = bits.finish();

    QByteArray out;
    out.append(static_cast<char>(minimumCodeSize));
    for (int offset = 0; offset < codes.size(); offset += 255) {
        const QByteArray block = codes.mid(offset, 255);
        out.append(static_cast<char>(block.size()));
        out.append(block);
    }
    out.append('\0');
    return out;
}

QByteArray GifEncoder::encode(const QList<QImage>& frames, int delayCentiseconds)
{
    if (frames.isEmpty())
        return {};
    const QSize size = frames.first().size();
    const QVector<QRgb> colours = palette();

    QByteArray out("GIF89a");
    appendWord(out, size.width());
    appendWord(out, size.height());
    out.append(static_cast<char>(0xF7)); // global table of 256 colours, 8 bits each
    out.append('\0');                     // background colour index
    out.append('\0');                     // no aspect ratio
    for (QRgb colour : colours) {
        out.append(static_cast<char>(qRed(colour)));
        out.append(static_cast<char>(qGreen(colour)));
        out.append(static_cast<char>(qBlue(colour)));
    }
    // Loop for ever.
    out.append("\x21\xFF\x0BNETSCAPE2.0\x03\x01", 16);
    appendWord(out, 0);
    out.append('\0');

    for (const QImage& frame : frames) {
        const QImage indexed = frame.convertToFormat(QImage::Format_RGB32)
                                   .scaled(size)
                                   .convertToFormat(QImage::Format_Indexed8, colours, Qt::ThresholdDither);
        out.append("\x21\xF9\x04", 3);
        out.append(static_cast<char>(0x04)); // disposal: leave the frame in place
        appendWord(out, delayCentiseconds);
        out.append('\0'); // no transparent colour
        out.append('\0');
        out.append(static_cast<char>(0x2C));
        appendWord(out, 0);
        appendWord(out, 0);
        appendWord(out, size.width());
        appendWord(out, size.height());
        out.append('\0'); // no local colour table, not interlaced
        out.append(imageData(indexed));
    }
    out.append(static_cast<char>(0x3B));
    return out;
}
