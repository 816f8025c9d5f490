#include "posttoapi.h"

#include "db/drugdatabase.h"
#include "urls.h"
#include "utils/connectivity.h"
#include "utils/qthttpget.h"
#include "utils/responseenvelope.h"

#include <QDebug>
#include <QEventLoop>
#include <QJsonDocument>
#include <QNetworkAccessManager>
#include <QNetworkReply>

PostToAPI::PostToAPI(QObject* parent)
    : QObject(parent)
{
}

void PostToAPI::post(const QString& recordUrl, const QJsonObject& recordData)
{
    url = recordUrl;
    record = recordData;
    answered = false;
    data = QJsonDocument(record).toJson(QJsonDocument::Compact);
    // Made here, in the worker's thread, where its sockets are served.
    if (!manager)
        manager = new QNetworkAccessManager(this);

    if (!Connectivity::internetConnection(websiteUrl, manager)) {
        store();
        qDebug().noquote() << "Data" << QString::fromUtf8(data);
        finish();
        return;
    }

    QtHttpGet http(manager);
    connect(&http, &QtHttpGet::result, this, &PostToAPI::onStatsSendResult);
    http.post(url, data);
    // This runs on a worker thread: its loop holds up nothing else.
    QEventLoop loop;
    connect(&http, &QtHttpGet::result, &loop, &QEventLoop::quit);
    loop.exec();
    // The loop also ends without an answer when the program quits and asks the
    // thread to stop; the record in flight is then lost.
    if (!answered)
        finish();
}

void PostToAPI::onStatsSendResult(QNetworkReply* reply)
{
    answered = true;
    if (reply->error() != QNetworkReply::NoError) {
        store();
        qWarning() << "Result not ok";
        qWarning().noquote() << "Data" << QString::fromUtf8(data);
        finish();
        return;
    }

    const QString text = QtHttpGet::replyText(reply);
    qDebug().noquote() << "Response" << text;
    const ResponseEnvelope envelope = ResponseEnvelope::parse(text);
    if (envelope.success) {
        emit postingSucceed();
    } else {
        store();
        qDebug().noquote() << "Result" << envelope.message;
        qDebug().noquote() << "Data" << QString::fromUtf8(data);
    }
    finish();
}

void PostToAPI::store()
{
    if (!DrugDatabase::storeStatistics(url, QString::fromUtf8(data)))
        emit notStored(url, record);
}

void PostToAPI::finish()
{
    answered = true;
    emit finished();
}
