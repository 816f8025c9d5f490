#pragma once

#include <QObject>
#include <QString>

class QNetworkAccessManager;
class QNetworkReply;

// The reachability test for the GUI thread: the answer comes by signal, so the
// window stays responsive while a silent network takes up to the 30 s
// time-out. Asked again while a probe is under way, it lets that one answer.
class ConnectionProbe : public QObject {
    Q_OBJECT
    Q_DISABLE_COPY(ConnectionProbe)

public:
    explicit ConnectionProbe(const QString& url, QObject* parent = nullptr);

    void start();
    bool isRunning() const { return reply != nullptr; }

signals:
    void answered(bool online);

private:
    void onFinished();

    QString url;
    QNetworkAccessManager* manager = nullptr;
    QNetworkReply* reply = nullptr;
};
