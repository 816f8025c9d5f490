#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QMap>
#include <QNetworkAccessManager>
#include <QObject>
#include <QSslError>
#include <QString>

class QEventLoop;
struct SentryDsn;
class QNetworkReply;

// Client of the Sentry store API (protocol version 5): one process-wide object
// to which the program reports errors with a level, a culprit and a message.
// Each event is posted once; a failure to deliver costs one line in the log.
class Raven : public QObject {
    Q_OBJECT
    Q_DISABLE_COPY(Raven)

public:
    ~Raven() override;

    static Raven* instance();

    // The start-up's set-up: init with `dsn` and the program's global tags.
    static bool setUpForProgram(const QString& dsn);

    // An empty DSN switches the client off and still returns true.
    bool init(const QString& dsn);
    void setTag(const QString& key, const QString& value);
    void setUserData(const QString& key, const QString& value);

    // Levels: 0 "debug", 1 "info", 2 "warning", 3 "error", 4 "fatal".
    // Callable from any thread.
    static void capture(int level, const QString& culprit, const QString& message,
                        const QJsonObject& extra, const QJsonObject& tags);
    static QString locationString(const char* file, const char* function, int line);
    static QString levelName(int level);

    // Blocks, serving events, until every request has ended or 2 s have passed.
    // Main thread only.
    void waitForIdle();

public slots:
    void slotFinished();
    void slotSslError(const QList<QSslError>& errors);

private:
    Raven();

    QJsonObject buildEvent(int level, const QString& culprit, const QString& message,
                           const QJsonObject& extra, QJsonObject tags) const;
    QJsonObject userObject() const;
    SentryDsn address() const;
    void send(const QJsonObject& event);
    void watch(QNetworkReply* reply);

    bool initialized = false;
    QString protocol;
    QString publicKey;
    QString secretKey;
    QString host;
    QString path;
    QString projectId;
    QString userId;
    QString userName;
    QString userEmail;
    QJsonObject userData;
    QJsonObject tags;
    QMap<int, QByteArray> pending;
    QNetworkAccessManager networkManager;
    QEventLoop* eventLoop = nullptr;
};
