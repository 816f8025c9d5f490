#pragma once

#include <QNetworkReply>

// A reply that failed before anything went out, handed to an owner that tells
// success from failure by QNetworkReply::error() only.
class FailedReply : public QNetworkReply {
    Q_OBJECT
    Q_DISABLE_COPY(FailedReply)

public:
    FailedReply(const QUrl& url, NetworkError code, const QString& errorText, QObject* parent = nullptr);

    void abort() override;

protected:
    qint64 readData(char* data, qint64 maxSize) override;
};
