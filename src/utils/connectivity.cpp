#include "connectivity.h"

#include "urls.h"
#include "utils/networklimits.h"

#include <QDebug>
#include <QEventLoop>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QUrl>

#include <memory>

namespace Connectivity {

bool internetConnection()
{
    return internetConnection(websiteUrl);
}

bool internetConnection(const QString& url, QNetworkAccessManager* manager)
{
    std::unique_ptr<QNetworkAccessManager> own;
    if (!manager) {
        own = std::make_unique<QNetworkAccessManager>();
        manager = own.get();
    }
    // A shared manager keeps its replies: this one goes once read.
    const std::unique_ptr<QNetworkReply> reply(manager->get(probeRequest(url)));
    QEventLoop loop;
    QObject::connect(reply.get(), &QNetworkReply::finished, &loop, &QEventLoop::quit);
    if (!reply->isFinished())
        loop.exec();
    return isOnline(reply.get());
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
