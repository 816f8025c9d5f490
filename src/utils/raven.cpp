#include "raven.h"

#include "urls.h"

#include "utils/networklimits.h"
#include "utils/sentrydsn.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDebug>
#include <QEventLoop>
#include <QHostAddress>
#include <QHostInfo>
#include <QJsonDocument>
#include <QMetaEnum>
#include <QMutex>
#include <QMutexLocker>
#include <QNetworkInterface>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QSysInfo>
#include <QThread>
#include <QTimer>
#include <QUuid>

#include <ctime>

namespace {

const char requestIdProperty[] = "RequestIdProperty";
const char redirectCountProperty[] = "RedirectCountProperty";
const QString clientId = QStringLiteral("%1/%2").arg(QStringLiteral("Raven-Qt"), QStringLiteral("0.2"));

Raven* singleton = nullptr;
QBasicMutex singletonMutex;

// Request ids are given and read on the main thread only.
int lastRequestId = 0;

QString networkErrorName(QNetworkReply::NetworkError error)
{
    return QString::fromLatin1(QMetaEnum::fromType<QNetworkReply::NetworkError>().valueToKey(error));
}

constexpr qint64 maxAnswerSize = 64 * 1024;

} // namespace

Raven::Raven()
    : networkManager(this)
{
}

Raven::~Raven()
{
    // The client goes only with the ending program: the last reports get their
    // two seconds when no window is served any more.
    waitForIdle();
    QMutexLocker locker(&singletonMutex);
    singleton = nullptr;
}

Raven* Raven::instance()
{
    QMutexLocker locker(&singletonMutex);
    if (!singleton) {
        singleton = new Raven;
        // A first report may come from a worker thread; the client and its
        // network manager still belong to the main thread.
        QCoreApplication* app = QCoreApplication::instance();
        if (app && singleton->thread() != app->thread())
            singleton->moveToThread(app->thread());
    }
    return singleton;
}

bool Raven::setUpForProgram(const QString& dsn)
{
    Raven* raven = instance();
    const bool ok = raven->init(dsn);
    raven->setTag(QStringLiteral("Version"), programVersion);
    raven->setTag(QStringLiteral("Type"), QStringLiteral("QuillardDesktop"));
    raven->setTag(QStringLiteral("OS"),
                  QSysInfo::productType() + QLatin1Char(' ') + QSysInfo::productVersion());
    raven->setTag(QStringLiteral("ENV"), QStringLiteral("Produkcja"));
    return ok;
}

bool Raven::init(const QString& dsn)
{
    eventLoop = nullptr;
    if (dsn.isEmpty()) {
        qDebug().noquote() << "Raven client is disabled.";
        return true;
    }
    SentryDsn parsed;
    if (!SentryDsn::parse(dsn, &parsed))
        return false;
    protocol = parsed.protocol;
    publicKey = parsed.publicKey;
    secretKey = parsed.secretKey;
    host = parsed.host;
    path = parsed.path;
    projectId = parsed.projectId;
    qDebug().noquote() << "Raven client is ready.";
    initialized = true;
    return true;
}

void Raven::setTag(const QString& key, const QString& value)
{
    if (key.isEmpty() || value.isEmpty())
        return;
    tags[key] = value;
}

void Raven::setUserData(const QString& key, const QString& value)
{
    if (key.isEmpty() || value.isEmpty())
        return;
    userData[key] = value;
}

void Raven::capture(int level, const QString& culprit, const QString& message, const QJsonObject& extra,
                    const QJsonObject& tags)
{
    Raven* raven = instance();
    if (!raven->initialized) {
        qDebug().noquote() << "Sentry has not been initialized succefully. Failed to send message.";
        return;
    }
    const QJsonObject event = raven->buildEvent(level, culprit, message, extra, tags);
    if (QThread::currentThread() == raven->thread()) {
        raven->send(event);
        return;
    }
    // Reports come from statistics workers too; the network manager and the
    // pending map are touched on the main thread only.
    QMetaObject::invokeMethod(raven, [raven, event] { raven->send(event); }, Qt::QueuedConnection);
}

QString Raven::locationString(const char* file, const char* function, int line)
{
    return QStringLiteral("%1 in %2 at %3")
        .arg(QString::fromUtf8(file), QString::fromUtf8(function), QString::number(line));
}

QString Raven::levelName(int level)
{
    switch (level) {
    case 0:
        return QStringLiteral("debug");
    case 1:
        return QStringLiteral("info");
    case 2:
        return QStringLiteral("warning");
    case 3:
        return QStringLiteral("error");
    case 4:
        return QStringLiteral("fatal");
    default:
        qDebug().noquote() << "Wrong sentry log level, default to error.";
        return QStringLiteral("error");
    }
}

QJsonObject Raven::buildEvent(int level, const QString& culprit, const QString& message,
                              const QJsonObject& extra, QJsonObject eventTags) const
{
    QJsonObject event;
    event[QStringLiteral("event_id")] = QUuid::createUuid().toString();
    event[QStringLiteral("timestamp")] = QDateTime::currentDateTime().toString(Qt::ISODate);
    event[QStringLiteral("server_name")] = QHostInfo::localHostName();
    event[QStringLiteral("user")] = userObject();
    event[QStringLiteral("level")] = levelName(level);
    event[QStringLiteral("culprit")] = culprit;
    event[QStringLiteral("message")] = message;
    event[QStringLiteral("logger")] = QStringLiteral("Raven-Qt");
    event[QStringLiteral("platform")] = QStringLiteral("C++/Qt");

    for (auto it = tags.constBegin(); it != tags.constEnd(); ++it)
        eventTags[it.key()] = it.value();
    if (!eventTags.isEmpty())
        event[QStringLiteral("tags")] = eventTags;
    if (!extra.isEmpty())
        event[QStringLiteral("extra")] = extra;
    return event;
}

QJsonObject Raven::userObject() const
{
    QJsonObject user;
    if (!userId.isEmpty())
        user[QStringLiteral("id")] = userId;
    if (!userName.isEmpty())
        user[QStringLiteral("username")] = userName;
    if (!userEmail.isEmpty())
        user[QStringLiteral("email")] = userEmail;
    for (auto it = userData.constBegin(); it != userData.constEnd(); ++it)
        user[it.key()] = it.value();

    QString address = QStringLiteral("0.0.0.0");
    const QList<QHostAddress> addresses = QNetworkInterface::allAddresses();
    for (const QHostAddress& candidate : addresses) {
        if (!candidate.isLoopback() && candidate.protocol() == QAbstractSocket::IPv4Protocol) {
            address = candidate.toString();
            break;
        }
    }
    user[QStringLiteral("ip_address")] = address;
    return user;
}

SentryDsn Raven::address() const
{
    return SentryDsn { protocol, publicKey, secretKey, host, path, projectId };
}

void Raven::send(const QJsonObject& event)
{
    const SentryDsn dsn = address();
    QNetworkRequest request(QUrl(dsn.storeUrl()));
    request.setHeader(QNetworkRequest::ContentTypeHeader, QStringLiteral("application/json"));
    request.setHeader(QNetworkRequest::UserAgentHeader, clientId);
    request.setRawHeader("X-Sentry-Auth", dsn.authorization(clientId, std::time(nullptr)).toUtf8());
    // A silent server must not keep a report pending for ever.
    request.setTransferTimeout(NetworkLimits::transferTimeout());

    const QByteArray body = QJsonDocument(event).toJson(QJsonDocument::Indented);
    QNetworkReply* reply = networkManager.post(request, body);
    const int id = ++lastRequestId;
    reply->setProperty(requestIdProperty, id);
    pending[id] = body;
    watch(reply);
}

void Raven::watch(QNetworkReply* reply)
{
    connect(reply, &QNetworkReply::finished, this, &Raven::slotFinished);
    connect(reply, &QNetworkReply::sslErrors, this, &Raven::slotSslError);
    // The store answers with an event id; a body larger than any answer of
    // its kind is cut off instead of being taken into memory.
    connect(reply, &QNetworkReply::downloadProgress, reply, [reply](qint64 received, qint64 total) {
        if (received > maxAnswerSize || total > maxAnswerSize)
            reply->abort();
    });
}

void Raven::slotFinished()
{
    auto* reply = qobject_cast<QNetworkReply*>(sender());
    if (!reply)
        return;
    bool isInteger = false;
    int id = reply->property(requestIdProperty).toInt(&isInteger);
    if (!isInteger)
        id = -1;

    if (!pending.contains(id)) {
        reply->deleteLater();
        if (pending.isEmpty() && eventLoop)
            eventLoop->exit(0);
        return;
    }

    const QUrl target = reply->attribute(QNetworkRequest::RedirectionTargetAttribute).toUrl();
    const QUrl resolved = reply->url().resolved(target);
    const int hops = reply->property(redirectCountProperty).toInt();
    if (!target.isEmpty() && resolved != reply->url() && hops < NetworkLimits::maxRedirects) {
        // The report goes again as a POST with its body to where the server sends it.
        QNetworkRequest request = reply->request();
        request.setUrl(resolved);
        QNetworkReply* next = networkManager.post(request, pending[id]);
        next->setProperty(requestIdProperty, id);
        next->setProperty(redirectCountProperty, hops + 1);
        watch(next);
    } else {
        const QByteArray answer = reply->readAll();
        if (!target.isEmpty() && resolved != reply->url()) {
            // A redirect loop ends after ten hops, as a failure.
            qDebug().noquote() << QStringLiteral("Failed to send log to sentry: [")
                    + networkErrorName(QNetworkReply::TooManyRedirectsError) + QStringLiteral("]:")
                    + QString::fromUtf8(answer);
        } else if (reply->error() == QNetworkReply::NoError) {
            qDebug().noquote() << QStringLiteral("Sentry log ID ") + QString::fromUtf8(answer);
        } else {
            qDebug().noquote() << QStringLiteral("Failed to send log to sentry: [")
                    + networkErrorName(reply->error()) + QStringLiteral("]:") + QString::fromUtf8(answer);
        }
        pending.remove(id);
    }

    if (pending.isEmpty() && eventLoop)
        eventLoop->exit(0);
    reply->deleteLater();
}

void Raven::slotSslError(const QList<QSslError>& errors)
{
    // Certificate errors are never ignored: the reply then fails and its
    // failure is logged like any other.
    for (const QSslError& error : errors)
        qDebug().noquote() << QStringLiteral("D/Raven::slotSslError | ") + error.errorString();
}

void Raven::waitForIdle()
{
    if (eventLoop) {
        qCritical().noquote() << "Recursive call Raven::waitForIdle";
        return;
    }
    if (pending.isEmpty())
        return;

    QEventLoop loop;
    QTimer timer;
    timer.setSingleShot(true);
    // A coarse timer may run up to 5 % long, which would make the logged time negative.
    timer.setTimerType(Qt::PreciseTimer);
    connect(&timer, &QTimer::timeout, &loop, &QEventLoop::quit);
    eventLoop = &loop;
    timer.start(2000);
    loop.exec(QEventLoop::ExcludeUserInputEvents);
    if (!timer.isActive())
        qDebug().noquote() << "Raven loop ended on timeout.";
    else
        qDebug().noquote() << QStringLiteral("Raven client finished, took ")
                + QString::number(2000 - timer.remainingTime()) + QStringLiteral(" ms");
    eventLoop = nullptr;
}
