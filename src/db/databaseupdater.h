#pragma once

#include "utils/qthttpget.h"

#include <QByteArray>
#include <QFutureWatcher>
#include <QObject>
#include <QString>

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
    // Unpacks the downloaded archive and puts the base at `path`.
    void replaceDatabase(const QString& path);

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
};
