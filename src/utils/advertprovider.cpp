#include "advertprovider.h"

#include "db/drugdatabase.h"

#include <QBuffer>
#include <QDebug>
#include <QMovie>
#include <QTimer>

#include <utility>

namespace {

constexpr int changeInterval = 300000;
// The pages connect to the provider after it is made; the first banner waits for them.
constexpr int firstChangeDelay = 5000;

const QString staticType = QStringLiteral("banner");
const QString animatedType = QStringLiteral("animated_banner");

} // namespace

AdvertProvider* AdvertProvider::instance()
{
    static AdvertProvider* provider = [] {
        qRegisterMetaType<AdvertType>("AdvertType");
        return new AdvertProvider;
    }();
    return provider;
}

AdvertProvider::AdvertProvider()
    : timer(new QTimer(this))
{
    timer->setInterval(changeInterval);
    timer->start();
    connect(timer, &QTimer::timeout, this, &AdvertProvider::changeAd);
    QTimer::singleShot(firstChangeDelay, this, &AdvertProvider::changeAd);
}

AdvertProvider::~AdvertProvider()
{
    delete movie;
    delete movieBuffer;
    delete movieData;
}

void AdvertProvider::announce(AdvertType type)
{
    announced = true;
    lastType = type;
    emit newAdd(type);
}

void AdvertProvider::changeAd()
{
    Advert next = DrugDatabase::randomAdvert();
    std::swap(advert, next);

    // An empty result is told here and again below, as no type matches it.
    if (advert.data.isEmpty())
        announce(NoAdvert);

    if (advert.type == staticType) {
        // A picture that doesn't load leaves a null pixmap: the page shows an empty label.
        if (!pixmap.loadFromData(QByteArray::fromBase64(advert.data)))
            qDebug() << "D/AdvertProvider::changeAd | the banner is no picture";
        announce(StaticAdvert);
        return;
    }
    if (advert.type != animatedType) {
        announce(NoAdvert);
        return;
    }

    // The movie goes before the buffer it reads and the bytes under that, so
    // that nothing is left pointing at freed memory.
    delete movie;
    delete movieBuffer;
    delete movieData;
    movieData = new QByteArray(QByteArray::fromBase64(advert.data));
    movieBuffer = new QBuffer(movieData);
    movie = new QMovie(movieBuffer, QByteArray());
    if (!movie->isValid())
        qDebug() << "D/AdvertProvider::changeAd | the animated banner is no animation";
    movie->start();
    announce(AnimatedAdvert);
}
