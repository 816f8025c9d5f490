#pragma once

#include <QNetworkRequest>
#include <QString>

class QNetworkAccessManager;
class QNetworkReply;

// Whether the internet can be reached: a GET of the maker's web site,
// following redirects. Any answer with a body counts as online, whatever its
// status.
namespace Connectivity {

// The blocking test, for worker threads that have nothing else to serve: the
// calling thread runs a nested loop while it waits.
bool internetConnection();
// Through `manager` when given, which must live in the calling thread; else
// through a manager of its own.
bool internetConnection(const QString& url, QNetworkAccessManager* manager = nullptr);

// The request and the verdict shared by the blocking test and ConnectionProbe.
QNetworkRequest probeRequest(const QString& url);
bool isOnline(QNetworkReply* reply);

} // namespace Connectivity
