#include "connectivity.h"

#include "urls.h"
#include "utils/networklimits.h"

#include <QDebug>
#include <QEventLoop>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QUrl>

namespace Connectivity {

bool internetConnection()
{
    return internetConnection(websiteUrl);
}

bool internetConnection(const QString& url)
{
    QNetworkAccessManager manager;
    QNetworkReply* reply = manager.get(probeRequest(url));
    QEventLoop loop;
    QObject::connect(reply, &QNetworkReply::finished, &loop, &QEventLoop::quit);
    if (!reply->isFinished())
        loop.exec();
    return isOnline(reply);
}

QNetworkRequest probeRequest(const QString& url)
{
    QNetworkRequest request { QUrl(url) };
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::NoLessSafeRedirectPolicy);
    // A redirect loop or a silent server ends the probe as offline instead of blocking for ever.
    request.setMaximumRedirectsAllowed(NetworkLimits::maxRedirects);
    request.setTransferTimeout(NetworkLimits::transferTimeout());
    return request;
}

bool isOnline(QNetworkReply* reply)
{
    const bool online = reply->bytesAvailable() != 0;
    qDebug().noquote() << (online ? "true" : "false");
    return online;
}

} // namespace Connectivity
