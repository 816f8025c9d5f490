#include "sentrydsn.h"

#include <QUrl>

bool SentryDsn::parse(const QString& text, SentryDsn* dsn)
{
    const QUrl url(text, QUrl::TolerantMode);
    if (!url.isValid())
        return false;

    SentryDsn parsed;
    parsed.protocol = url.scheme();
    parsed.publicKey = url.userName(QUrl::FullyDecoded);
    parsed.secretKey = url.password(QUrl::FullyDecoded);
    parsed.host = url.host(QUrl::FullyDecoded);
    parsed.path = url.path(QUrl::FullyDecoded);
    parsed.projectId = url.fileName(QUrl::FullyDecoded);

    const int lastSlash = parsed.path.lastIndexOf(QLatin1Char('/'));
    if (lastSlash >= 0)
        parsed.path = parsed.path.left(lastSlash);

    // An https DSN without a port thus gets no port either.
    const int port = url.port(80);
    if (port != 80)
        parsed.host += QLatin1Char(':') + QString::number(port);

    // The events go to the address made of these parts: a DSN that gives no
    // well-formed http(s) address of a project's store counts as invalid.
    const QUrl store(parsed.storeUrl(), QUrl::StrictMode);
    const bool web = parsed.protocol == QLatin1String("http") || parsed.protocol == QLatin1String("https");
    if (!web || parsed.projectId.isEmpty() || !store.isValid() || store.host().isEmpty()
        || !store.userInfo().isEmpty() || store.hasQuery() || store.hasFragment()
        || !store.path().endsWith(QStringLiteral("/api/") + parsed.projectId + QStringLiteral("/store/")))
        return false;
    *dsn = parsed;
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
