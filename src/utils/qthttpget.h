#pragma once

#include <QByteArray>
#include <QNetworkReply>
#include <QObject>
#include <QString>

class QNetworkAccessManager;

// One GET or POST at a time to the program's services. A 302 is followed by
// hand as a GET; network failures go to the error client. The owner gets one
// `result` per request: for status 200 and for every failed reply, which any
// other status (a 301 too) is.
//
// The reply handed through `result` belongs to this object and stays valid until
// the next get/post or the object's end. Use the object from the thread that made it.
class QtHttpGet : public QObject {
    Q_OBJECT
    Q_DISABLE_COPY(QtHttpGet)

public:
    QtHttpGet();
    // Sends through `sharedManager`, which the caller keeps alive longer than
    // this object; many short-lived requesters then share its connections.
    explicit QtHttpGet(QNetworkAccessManager* sharedManager);
    ~QtHttpGet() override;

    void get(const QString& url);
    void post(const QString& url, const QByteArray& body);

    // The reply's body up to the first NUL byte, as UTF-8: how every consumer reads an answer.
    static QString replyText(QNetworkReply* reply);

signals:
    void result(QNetworkReply* reply);

public slots:
    void onError(QNetworkReply::NetworkError code);
    void onFinished();

private:
    void sendGet(const QString& url);
    void take(QNetworkReply* newReply);
    void dropReply();

    QNetworkAccessManager* manager = nullptr;
    bool ownsManager = true;
    QNetworkReply* reply = nullptr;
    int redirectHops = 0;
    bool answered = false;
};
