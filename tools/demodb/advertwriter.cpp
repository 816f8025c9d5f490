#include "advertwriter.h"

#include "bannerpainter.h"
#include "showcasedrugs.h"
#include "tablewriter.h"

#include <QVariant>

namespace {

QString still(const QString& caption)
{
    return QString::fromLatin1(BannerPainter(caption).staticPng().toBase64());
}

} // namespace

void AdvertWriter::write(TableWriter& writer)
{
    const QString banner = QStringLiteral("banner");
    const auto add = [&writer](int id, const QString& type, const QVariant& picture) {
        writer.insert(QStringLiteral("o"), {id, type, picture});
    };
    const auto url = [&writer](int id, const QString& address) {
        writer.insert(QStringLiteral("o_url"), {id, address});
    };
    const auto group = [&writer](int id, int gid) { writer.insert(QStringLiteral("gb"), {id, gid}); };

    add(1, banner, still(QStringLiteral("Reklama demo")));
    url(1, QStringLiteral("https://www.example.com/quillard-demo"));
    add(2, QStringLiteral("animated_banner"),
        QString::fromLatin1(BannerPainter(QStringLiteral("Reklama demo")).animatedGif().toBase64()));
    group(2, ShowcaseDrugs::paracetamolGroup);
    add(3, banner, still(QStringLiteral("Demo bez linku")));

    add(unknownTypeBanner, QStringLiteral("video_banner"), still(QStringLiteral("Nieznany typ")));
    add(emptyBanner, banner, QString());
    add(nullBanner, banner, QVariant());
    // Both targets: the drug wins over the web address.
    add(7, banner, still(QStringLiteral("Tikagrelor demo")));
    url(7, QStringLiteral("https://www.example.com/quillard-demo/tikagrelor"));
    group(7, ShowcaseDrugs::noFullPriceGroup);
    add(missingGroupBanner, banner, still(QStringLiteral("Demo bez grupy")));
    group(missingGroupBanner, ShowcaseDrugs::missingGroup);
}
