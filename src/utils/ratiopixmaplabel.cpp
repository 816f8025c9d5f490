#include "ratiopixmaplabel.h"

#include <QResizeEvent>

AspectRatioPixmapLabel::AspectRatioPixmapLabel(QWidget* parent)
    : QLabel(parent)
{
    // The shown copy would otherwise hold the label at the picture's size.
    setMinimumSize(1, 1);
    setScaledContents(false);
}

void AspectRatioPixmapLabel::setPixmap(const QPixmap& picture)
{
    pixmap = picture;
    QLabel::setPixmap(scaledPixmap());
}

void AspectRatioPixmapLabel::resizeEvent(QResizeEvent* event)
{
    QLabel::resizeEvent(event);
    if (!pixmap.isNull())
        QLabel::setPixmap(scaledPixmap());
}

int AspectRatioPixmapLabel::heightForWidth(int width) const
{
    if (pixmap.isNull())
        return height();
    return int(qint64(pixmap.height()) * width / pixmap.width());
}

QSize AspectRatioPixmapLabel::sizeHint() const
{
    const int w = width();
    return QSize(w, heightForWidth(w));
}

QPixmap AspectRatioPixmapLabel::scaledPixmap() const
{
    return pixmap.scaled(size(), Qt::KeepAspectRatio, Qt::SmoothTransformation);
}
