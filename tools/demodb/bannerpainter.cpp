#include "bannerpainter.h"

#include "gifencoder.h"

#include <QBuffer>
#include <QFont>
#include <QLinearGradient>
#include <QPainter>

namespace {

const QColor blue(0x29, 0x5c, 0x99);
const QColor orange(0xe3, 0x50, 0x2a);
const QColor darkBlue(0x08, 0x2e, 0x56);
const int frameCount = 8;
const int frameDelay = 25; // hundredths of a second

} // namespace

BannerPainter::BannerPainter(const QString& caption)
    : caption(caption)
{
}

// Frame `index` of `count`: an orange bar sweeps under the caption; frame 0 of
// 1 is the still picture.
QImage BannerPainter::frame(int index, int count) const
{
    QImage image(width, height, QImage::Format_RGB32);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::TextAntialiasing);

    QLinearGradient background(0, 0, width, height);
    background.setColorAt(0, blue);
    background.setColorAt(1, darkBlue);
    painter.fillRect(image.rect(), background);

    const int barWidth = count > 1 ? width * (index + 1) / count : width;
    painter.fillRect(QRect(0, height - 12, barWidth, 12), orange);
    painter.setPen(QPen(Qt::white, 2));
    painter.drawRoundedRect(QRectF(4, 4, width - 8, height - 20), 8, 8);

    QFont title(QStringLiteral("DejaVu Sans"));
    title.setPixelSize(24);
    title.setBold(true);
    painter.setFont(title);
    painter.setPen(Qt::white);
    painter.drawText(QRect(10, 8, width - 20, 44), Qt::AlignCenter, caption);

    QFont small(QStringLiteral("DejaVu Sans"));
    small.setPixelSize(12);
    painter.setFont(small);
    painter.setPen(count > 1 && index % 2 ? orange : Qt::white);
    painter.drawText(QRect(10, 48, width - 20, 22), Qt::AlignCenter,
                     QStringLiteral("Quillard · dane przykładowe"));
    painter.end();
    return image;
}

QByteArray BannerPainter::staticPng() const
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    frame(0, 1).save(&buffer, "PNG");
    return bytes;
}

QByteArray BannerPainter::animatedGif() const
{
    QList<QImage> frames;
    for (int i = 0; i < frameCount; ++i)
        frames.append(frame(i, frameCount));
    return GifEncoder::encode(frames, frameDelay);
}
