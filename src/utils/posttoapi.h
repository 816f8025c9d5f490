#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QObject>
#include <QString>

class QNetworkAccessManager;
class QNetworkReply;

// Posts usage records, one at a time, on the worker thread it lives in. It
// keeps one network manager for all its records, so their connections are
// reused. A record that can't be delivered, or that the service refuses, goes
// into the statistics store, or comes back through `notStored` when the store
// can't take it. `finished` comes exactly once per record, whatever happened.
class PostToAPI : public QObject {
    Q_OBJECT
    Q_DISABLE_COPY(PostToAPI)

public:
    explicit PostToAPI(QObject* parent = nullptr);

signals:
    void postingSucceed();
    void notStored(const QString& url, const QJsonObject& record);
    void finished();

public slots:
    void post(const QString& url, const QJsonObject& record);

private:
    void onStatsSendResult(QNetworkReply* reply);
    void store();
    void finish();

    QNetworkAccessManager* manager = nullptr;
    QString url;
    QJsonObject record;
    QByteArray data;
    bool answered = false;
};
