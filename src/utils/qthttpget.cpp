#include "qthttpget.h"

#include "utils/failedreply.h"
#include "utils/networklimits.h"
#include "utils/raven.h"

#include <QDebug>
#include <QJsonObject>
#include <QMetaEnum>
#include <QNetworkAccessManager>
#include <QNetworkRequest>
#include <QUrl>

namespace {

QNetworkRequest makeRequest(const QString& url)
{
    QNetworkRequest request(QUrl(url, QUrl::TolerantMode));
    // A server that stops answering ends the request instead of leaving the owner waiting.
    request.setTransferTimeout(NetworkLimits::transferTimeout());
    return request;
}

} // namespace

QtHttpGet::QtHttpGet()
    : manager(new QNetworkAccessManager)
{
}

QtHttpGet::QtHttpGet(QNetworkAccessManager* sharedManager)
    : manager(sharedManager)
    , ownsManager(false)
{
}

QtHttpGet::~QtHttpGet()
{
    // The owner may end this object from a slot of `result`, inside the reply's
    // own signal; the reply goes first, then the manager, and nothing reaches us.
    if (reply) {
        reply->disconnect(this);
        reply->deleteLater();
    }
    if (ownsManager)
        manager->deleteLater();
}

void QtHttpGet::get(const QString& url)
{
    redirectHops = 0;
    sendGet(url);
}

void QtHttpGet::post(const QString& url, const QByteArray& body)
{
    qDebug().noquote() << url;
    redirectHops = 0;
    dropReply();
    take(manager->post(makeRequest(url), body));
}

QString QtHttpGet::replyText(QNetworkReply* reply)
{
    if (!reply->isSequential())
        reply->seek(0);
    QByteArray bytes = reply->readAll();
    const int nul = bytes.indexOf('\0');
    if (nul >= 0)
        bytes.truncate(nul);
    return QString::fromUtf8(bytes);
}

void QtHttpGet::onError(QNetworkReply::NetworkError code)
{
    if (answered)
        return;
    const QMetaEnum errors = QMetaEnum::fromType<QNetworkReply::NetworkError>();
    const QString name = QString::fromLatin1(errors.valueToKey(code));
    Raven::capture(3, Raven::locationString("../QuillardDesktop/utils/qthttpget", "onError", __LINE__),
                   QStringLiteral("Http error: ") + name, QJsonObject(), QJsonObject());
    answered = true;
    emit result(reply);
}

void QtHttpGet::onFinished()
{
    // A failed reply finishes after its error, which gave the owner its result.
    if (answered)
        return;

    const int status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    if (status == 302) {
        qDebug().noquote() << "Redirect";
        const QString target
            = reply->attribute(QNetworkRequest::RedirectionTargetAttribute).toUrl().toString();
        if (redirectHops >= NetworkLimits::maxRedirects) {
            // A redirect loop ends after ten hops with a failed reply, so that
            // the owner is told instead of waiting for ever.
            const QUrl url = reply->url();
            dropReply();
            take(new FailedReply(url, QNetworkReply::TooManyRedirectsError,
                                 QStringLiteral("Too many redirects"), manager));
            onError(QNetworkReply::TooManyRedirectsError);
            return;
        }
        ++redirectHops;
        sendGet(target);
        return;
    }
    if (status == 200) {
        answered = true;
        emit result(reply);
        return;
    }
    // Any other status that Qt doesn't count as an error (a 301, a 204, a 303)
    // is no answer the owner can use: it is told as a failure instead of
    // waiting for ever, a statistics worker with it.
    const QUrl url = reply->url();
    dropReply();
    take(new FailedReply(url, QNetworkReply::ProtocolUnknownError,
                         QStringLiteral("Unexpected status %1").arg(status), manager));
    onError(QNetworkReply::ProtocolUnknownError);
}

void QtHttpGet::sendGet(const QString& url)
{
    qDebug().noquote() << url;
    dropReply();
    take(manager->get(makeRequest(url)));
}

void QtHttpGet::take(QNetworkReply* newReply)
{
    reply = newReply;
    answered = false;
    connect(reply, &QNetworkReply::finished, this, &QtHttpGet::onFinished);
    connect(reply, &QNetworkReply::errorOccurred, this, &QtHttpGet::onError);
    // An oversized body ends as a failed reply (OperationCanceledError) instead of filling the memory.
    QNetworkReply* current = reply;
    connect(reply, &QNetworkReply::downloadProgress, this, [current](qint64 received, qint64 total) {
        if (received > NetworkLimits::maxBodySize || total > NetworkLimits::maxBodySize)
            current->abort();
    });
}

void QtHttpGet::dropReply()
{
    if (!reply)
        return;
    // The reply may be the one whose signal is being served, so it goes later;
    // cut off first, an unfinished request ends without a word to the owner.
    reply->disconnect(this);
    reply->deleteLater();
    reply = nullptr;
}
