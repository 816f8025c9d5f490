#include "advertwriter.h"

#include "bannerpainter.h"
#include "tablewriter.h"

#include <QVariant>

void AdvertWriter::write(TableWriter& writer, int drugGroup)
{
    const QString still = QStringLiteral("banner");
    const QString animated = QStringLiteral("animated_banner");

    writer.insert(QStringLiteral("o"),
                  {1, still, QString::fromLatin1(BannerPainter(QStringLiteral("Reklama demo")).staticPng().toBase64())});
    writer.insert(QStringLiteral("o_url"), {1, QStringLiteral("https://www.example.com/quillard-demo")});

    writer.insert(QStringLiteral("o"),
                  {2, animated,
                   QString::fromLatin1(BannerPainter(QStringLiteral("Reklama demo")).animatedGif().toBase64())});
    writer.insert(QStringLiteral("gb"), {2, drugGroup});

    writer.insert(QStringLiteral("o"),
                  {3, still, QString::fromLatin1(BannerPainter(QStringLiteral("Demo bez linku")).staticPng().toBase64())});
}
