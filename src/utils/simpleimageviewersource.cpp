#include "simpleimageviewersource.h"

SimpleImageViewerSource::SimpleImageViewerSource(const QPixmap& page)
    : SimpleImageViewerSource(QList<QPixmap>{page})
{
}

SimpleImageViewerSource::SimpleImageViewerSource(const QList<QPixmap>& pages)
    : pages(pages)
    , count(pages.size())
{
}

QPixmap SimpleImageViewerSource::page(int index) const
{
    return pages.value(index);
}

int SimpleImageViewerSource::pageCount() const
{
    return count;
}
