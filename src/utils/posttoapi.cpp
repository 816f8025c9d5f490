#include "posttoapi.h"

#include "db/drugdatabase.h"
#include "utils/connectivity.h"
#include "utils/qthttpget.h"
#include "utils/responseenvelope.h"

#include <QDebug>
#include <QEventLoop>
#include <QJsonDocument>
#include <QNetworkReply>

PostToAPI::PostToAPI(const QString& url, const QJsonObject& record, QObject* parent)
    : QObject(parent)
    , url(url)
    , record(record)
{
}

void PostToAPI::post()
{
    data = QJsonDocument(record).toJson(QJsonDocument::Compact);

    QtHttpGet http;
    connect(&http, &QtHttpGet::result, this, &PostToAPI::onStatsSendResult);

    if (!Connectivity::internetConnection()) {
        store();
        qDebug().noquote() << "Data" << QString::fromUtf8(data);
        finish();
        return;
    }

    http.post(url, data);
    // This runs on the record's own worker thread: its loop holds up nothing else.
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
