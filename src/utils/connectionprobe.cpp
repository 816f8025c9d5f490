#include "connectionprobe.h"

#include "utils/connectivity.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>

ConnectionProbe::ConnectionProbe(const QString& url, QObject* parent)
    : QObject(parent)
    , url(url)
    , manager(new QNetworkAccessManager(this))
{
}

void ConnectionProbe::start()
{
    if (reply)
        return;
    reply = manager->get(Connectivity::probeRequest(url));
    connect(reply, &QNetworkReply::finished, this, &ConnectionProbe::onFinished);
}

void ConnectionProbe::onFinished()
{
    QNetworkReply* finished = reply;
    reply = nullptr;
    const bool online = Connectivity::isOnline(finished);
    finished->deleteLater();
    emit answered(online);
}
