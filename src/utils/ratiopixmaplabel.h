#pragma once

#include <QLabel>
#include <QPixmap>

// A label that keeps its own copy of a picture and shows it scaled to the
// label's size, keeping the picture's proportions.
class AspectRatioPixmapLabel : public QLabel
{
    Q_OBJECT
    Q_DISABLE_COPY(AspectRatioPixmapLabel)

public:
    explicit AspectRatioPixmapLabel(QWidget* parent = nullptr);

    int heightForWidth(int width) const override;
    QSize sizeHint() const override;

public slots:
    // Hides QLabel::setPixmap: forms and callers reach this one through the
    // label's own type.
    void setPixmap(const QPixmap& picture);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    QPixmap scaledPixmap() const;

    QPixmap pixmap;
};
