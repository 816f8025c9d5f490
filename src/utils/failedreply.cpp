#include "failedreply.h"

FailedReply::FailedReply(const QUrl& url, NetworkError code, const QString& errorText, QObject* parent)
    : QNetworkReply(parent)
{
    setUrl(url);
    setOperation(QNetworkAccessManager::GetOperation);
    setError(code, errorText);
    open(QIODevice::ReadOnly);
    setFinished(true);
}

void FailedReply::abort()
{
}

qint64 FailedReply::readData(char*, qint64)
{
    return -1;
}
