#pragma once

#include "utils/qthttpget.h"

#include <QObject>
#include <QString>

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

    void checkVersion();
    void downloadUpdate();

signals:
    void oldVersion(const QString& current, const QString& online);
    void actVersion();
    void error();

private slots:
    void onVersionDownload(QNetworkReply* reply);
    void onUpdaterDownload(QNetworkReply* reply);
    void onFileDownload(QNetworkReply* reply);
};
