#pragma once

#include <QByteArray>
#include <QImage>
#include <QString>

// Draws the demo banners in the program's colours: a still PNG and an
// animated GIF, both about the size of the banner label of the pages.
class BannerPainter {
public:
    explicit BannerPainter(const QString& caption);

    QByteArray staticPng() const;
    QByteArray animatedGif() const;

    static const int width = 300;
    static const int height = 90;

private:
    QImage frame(int index, int count) const;

    QString caption;
};
