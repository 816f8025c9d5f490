#pragma once

#include "utils/qthttpget.h"

#include <QObject>
#include <QString>

#include <memory>

class QFile;
class QUrl;

// Compares the program's version with the one the desktop API announces and,
// on the user's word, fetches the installer named by the service's file list,
// starts it and quits.
class ProgramUpdater : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY(ProgramUpdater)

public:
    explicit ProgramUpdater(QObject* parent = nullptr);
    ~ProgramUpdater() override;

    // False in a build whose updates come from the package manager: the version
    // is still checked and told, but no installer is ever fetched or started.
    static bool isSelfUpdating();

    void checkVersion();
    void downloadUpdate();

    // The installer's name in the service's file list: the string at [1][0][1][1][1],
    // empty when any step is missing.
    static QString fileNameFromList(const QByteArray& list);

    // What a downloaded installer must pass before it is written and started.
    static bool isPlainFileName(const QString& name);
    static bool isTrustedSource(const QUrl& url);

signals:
    void oldVersion(const QString& current, const QString& online);
    void actVersion();
    void error();

private slots:
    void onVersionDownload(QNetworkReply* reply);
    void onUpdaterDownload(QNetworkReply* reply);
    void onFileDownload(QNetworkReply* reply);

private:
    // A file in the updater's folder below the application's local data.
    std::unique_ptr<QFile> updaterFile(const QString& name);
    void downloadUpdaterFile();
    void failUpdaterDownload(int line, const QString& reason);

    const QString updaterDirName = QStringLiteral("updater");
    const QString updateLogName = QStringLiteral("update.log");
    const QString updateTaskName = QStringLiteral("update.task");
    QString fileName;
    QtHttpGet versionGet;
    QtHttpGet updaterGet;
    QtHttpGet listGet;
};
