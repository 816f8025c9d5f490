#pragma once

#include "utils/qthttpget.h"

#include <QByteArray>
#include <QDateTime>
#include <QFutureWatcher>
#include <QObject>
#include <QString>
#include <QTimer>

// Keeps the local drug database current: asks the file service for a newer
// refund list or data version, downloads the new base as a zip archive, unpacks
// it on a worker thread and puts it in place of the old one. It decides nothing
// about what the user sees; the main window starts each step.
class DatabaseUpdater : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY(DatabaseUpdater)

public:
    explicit DatabaseUpdater(QObject* parent = nullptr);
    ~DatabaseUpdater() override;

    void check();
    void download();
    bool isNewVersionAvailable() const;
    bool isNewRefundListAvailable() const;
    void setLocalVersion(const QString& version);
    // Unpacks the downloaded archive off the GUI thread and puts the base at
    // `path`: `replaced` when the new base stands, else `error` with the old one
    // left as it was.
    void replaceDatabase(const QString& path);

    // The date of the newest refund list in the file service's answer "<n>#yyyy-MM-dd";
    // invalid when the answer doesn't have that form.
    static QDateTime refundListDate(const QString& answer);

    // Milliseconds from `now` to the next 03:00 local time, the hour of the daily check.
    static qint64 msecsToNextCheck(const QDateTime& now);

signals:
    void checked();
    void downloaded();
    void replaced();
    void error();

private slots:
    void onCheckResult(QNetworkReply* reply);
    void onCheckRefundResult(QNetworkReply* reply);
    void onDbResult(QNetworkReply* reply);
    void unzipFinished();
    void updateTimerElapsed();

private:
    void fail();

    QFutureWatcher<bool>* unzipWatcher = nullptr;
    QtHttpGet refundCheckGet;
    QtHttpGet versionCheckGet;
    QtHttpGet databaseGet;
    bool newVersionAvailable = false;
    bool newRefundListAvailable = false;
    QByteArray archiveData;
    QString databasePath;
    QString localVersion = QStringLiteral("0");
    QTimer updateTimer;
};
