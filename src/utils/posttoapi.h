#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QObject>
#include <QString>

class QNetworkReply;

// Posts one usage record from a worker thread of its own. A record that can't
// be delivered, or that the service refuses, goes into the statistics store, or
// comes back through `notStored` when the store can't take it.
// `finished` comes exactly once per record, whatever happened.
class PostToAPI : public QObject {
    Q_OBJECT
    Q_DISABLE_COPY(PostToAPI)

public:
    PostToAPI(const QString& url, const QJsonObject& record, QObject* parent = nullptr);

signals:
    void postingSucceed();
    void notStored(const QString& url, const QJsonObject& record);
    void finished();

public slots:
    void post();
    void onStatsSendResult(QNetworkReply* reply);

private:
    void store();
    void finish();

    QString url;
    QJsonObject record;
    QByteArray data;
    bool answered = false;
};
