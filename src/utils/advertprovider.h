#pragma once

#include "db/records.h"

#include <QByteArray>
#include <QMetaType>
#include <QObject>
#include <QPixmap>

class QBuffer;
class QMovie;
class QTimer;

enum AdvertType { StaticAdvert = 0, AnimatedAdvert = 1, NoAdvert = 2 };
Q_DECLARE_METATYPE(AdvertType)

// Picks a banner from the drug database every five minutes and at the moments
// the program asks for one, decodes it and tells the pages that show banners.
class AdvertProvider : public QObject {
    Q_OBJECT
    Q_DISABLE_COPY(AdvertProvider)

public:
    static AdvertProvider* instance();
    ~AdvertProvider() override;

    Advert currentAdvert() const { return advert; }
    QPixmap currentPixmap() const { return pixmap; }
    // Still owned by the provider; the next animated banner replaces it.
    QMovie* currentMovie() const { return movie; }
    // What the last newAdd() told, for a page made after it; false before the first.
    bool hasAnnounced() const { return announced; }
    AdvertType lastAnnounced() const { return lastType; }

signals:
    void newAdd(AdvertType advertType);

public slots:
    void changeAd();

private:
    AdvertProvider();
    void announce(AdvertType type);

    QTimer* timer = nullptr;
    Advert advert;
    QByteArray* movieData = nullptr;
    QBuffer* movieBuffer = nullptr;
    QMovie* movie = nullptr;
    QPixmap pixmap;
    bool announced = false;
    AdvertType lastType = NoAdvert;
};
