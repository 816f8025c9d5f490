#include "sentrydsn.h"

#include <QUrl>

bool SentryDsn::parse(const QString& text, SentryDsn* dsn)
{
    const QUrl url(text, QUrl::TolerantMode);
    if (!url.isValid())
        return false;

    dsn->protocol = url.scheme();
    dsn->publicKey = url.userName(QUrl::FullyDecoded);
    dsn->secretKey = url.password(QUrl::FullyDecoded);
    dsn->host = url.host(QUrl::FullyDecoded);
    dsn->path = url.path(QUrl::FullyDecoded);
    dsn->projectId = url.fileName(QUrl::FullyDecoded);

    const int lastSlash = dsn->path.lastIndexOf(QLatin1Char('/'));
    if (lastSlash >= 0)
        dsn->path = dsn->path.left(lastSlash);

    // An https DSN without a port thus gets no port either.
    const int port = url.port(80);
    if (port != 80)
        dsn->host += QLatin1Char(':') + QString::number(port);
    return true;
}

QString SentryDsn::storeUrl() const
{
    return QStringLiteral("%1://%2%3/api/%4/store/").arg(protocol, host, path, projectId);
}

QString SentryDsn::authorization(const QString& clientId, qint64 timestamp) const
{
    return QStringLiteral("Sentry sentry_version=5,sentry_client=%1,sentry_timestamp=%2,"
                          "sentry_key=%3,sentry_secret=%4")
        .arg(clientId, QString::number(timestamp), publicKey, secretKey);
}
