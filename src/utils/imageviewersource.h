#pragma once

#include <QPixmap>

// Where the image viewer takes its pages from: page images of a document,
// counted from 0, at their full size.
class ImageViewerSource
{
public:
    virtual ~ImageViewerSource() = default;
    // A null pixmap when the page can't be read.
    virtual QPixmap page(int index) const = 0;
    virtual int pageCount() const = 0;

protected:
    ImageViewerSource() = default;
    ImageViewerSource(const ImageViewerSource&) = default;
    ImageViewerSource& operator=(const ImageViewerSource&) = default;
};
