#include "advertbanner.h"

#include "db/drugdatabase.h"
#include "drugs/drugviewmodel.h"
#include "sharppixmap.h"

#include <QDebug>
#include <QDesktopServices>
#include <QLabel>
#include <QMouseEvent>
#include <QMovie>
#include <QUrl>

namespace AdvertBanner {

void show(QWidget* page, QLabel* label, AdvertType advertType)
{
    qDebug() << "Changing ad";
    label->clear();
    if (advertType == NoAdvert) {
        // The fixed banner keeps the last banner's targets; the arrow cursor makes it inert.
        label->setPixmap(sharpPixmap(QStringLiteral(":/icons/banner_corvane")));
        label->setCursor(Qt::ArrowCursor);
        return;
    }
    const AdvertProvider* provider = AdvertProvider::instance();
    if (advertType == StaticAdvert) {
        label->setPixmap(provider->currentPixmap());
    } else {
        label->setMovie(provider->currentMovie());
        label->movie()->start();
    }
    // Painted with the rest of the page on the next frame: a scan changes the
    // banner in the middle of refilling the page.
    page->update();
    const Advert advert = provider->currentAdvert();
    label->setCursor(advert.gid.isEmpty() && advert.url.isEmpty() ? Qt::ArrowCursor : Qt::PointingHandCursor);
    label->setProperty("gid", advert.gid);
    label->setProperty("url", advert.url);
}

bool handlePress(QLabel* label, QMouseEvent* event)
{
    // The cursor is the banner's state: the arrow means it leads nowhere.
    if (label->cursor().shape() == Qt::ArrowCursor)
        return false;
    if (event->button() != Qt::LeftButton)
        return true;
    const QString gid = label->property("gid").toString();
    const QString url = label->property("url").toString();
    if (!gid.isEmpty()) {
        // The drug joins the selection; the page that shows the banner stays.
        const Drug drug = DrugDatabase::firstDrugOfGroup(gid);
        if (!drug.gid.isEmpty())
            DrugViewModel::instance()->addDrug(drug);
        else
            qDebug().noquote() << gid + QStringLiteral(" not found");
    } else if (!url.isEmpty()) {
        QDesktopServices::openUrl(QUrl(url, QUrl::TolerantMode));
    }
    return true;
}

} // namespace AdvertBanner
