#pragma once

#include "imageviewersource.h"

#include <QList>

// Pages held in memory, such as a description text laid out for printing.
class SimpleImageViewerSource : public ImageViewerSource
{
public:
    explicit SimpleImageViewerSource(const QPixmap& page);
    explicit SimpleImageViewerSource(const QList<QPixmap>& pages);

    QPixmap page(int index) const override;
    int pageCount() const override;

private:
    QList<QPixmap> pages;
    int count = 0;
};
