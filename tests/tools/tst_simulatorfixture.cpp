#include "simulator.h"

#include <QEventLoop>
#include <QJsonObject>
#include <QNetworkAccessManager>
#include <QNetworkProxy>
#include <QNetworkReply>
#include <QStandardPaths>
#include <QTest>
#include <QTimer>

// The fixture that other tests start the service simulator with.
class TestSimulatorFixture : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup();
    void recordsPostedBody();
    void faultKeys_data();
    void faultKeys();
    void faultsAsQtSeesThem_data();
    void faultsAsQtSeesThem();
    void stopReleasesPort();

private:
    struct Answer {
        int status = -1; // -1: no answer in time
        QNetworkReply::NetworkError error = QNetworkReply::NoError;
        QByteArray body;
    };
    Answer fetch(const QString& pathAndQuery, const QByteArray& postBody = QByteArray());

    Simulator simulator;
};

void TestSimulatorFixture::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
    QVERIFY(simulator.start(0, QStringLiteral("/nonexistent/demo.sqlite3")));
    QVERIFY(simulator.port() > 0);
}

void TestSimulatorFixture::cleanup()
{
    QVERIFY(simulator.reset());
}

TestSimulatorFixture::Answer TestSimulatorFixture::fetch(const QString& pathAndQuery, const QByteArray& postBody)
{
    QNetworkAccessManager manager;
    manager.setProxy(QNetworkProxy::NoProxy);
    QNetworkRequest request(QUrl(simulator.baseUrl() + pathAndQuery));
    request.setTransferTimeout(2000);
    request.setHeader(QNetworkRequest::ContentTypeHeader, QStringLiteral("application/json"));
    QNetworkReply* reply = postBody.isNull() ? manager.get(request) : manager.post(request, postBody);
    QEventLoop loop;
    connect(reply, &QNetworkReply::finished, &loop, &QEventLoop::quit);
    QTimer::singleShot(10000, &loop, &QEventLoop::quit);
    loop.exec();
    Answer answer;
    if (reply->isFinished()) {
        answer.status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
        answer.error = reply->error();
        if (reply->isOpen())
            answer.body = reply->readAll();
    }
    delete reply;
    return answer;
}

void TestSimulatorFixture::recordsPostedBody()
{
    const QByteArray body = R"({"app_key":"{6f9619ff-8b86-d011-b42d-00c04fc964ff}","phrase":"apap"})";
    const auto answer = fetch(QStringLiteral("/desktop/usage/search.php"), body);
    QCOMPARE(answer.status, 200);
    QCOMPARE(answer.body, QByteArray(R"({"status":"success","message":""})"));

    const QJsonArray records = simulator.records(QStringLiteral("/desktop/usage/search.php"));
    QCOMPARE(records.size(), 1);
    QCOMPARE(records.at(0).toObject().value(QStringLiteral("method")).toString(), QStringLiteral("POST"));
    QCOMPARE(records.at(0).toObject().value(QStringLiteral("body")).toString(), QString::fromUtf8(body));
    QVERIFY(simulator.records(QStringLiteral("/desktop/usage/click.php")).isEmpty());
}

void TestSimulatorFixture::faultKeys_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("request");
    QTest::addColumn<int>("status");

    // A key with a query names one action of a script and leaves the others alone.
    QTest::newRow("path hits every query") << "/desktop/app_version.php" << "/desktop/app_version.php?a=list" << 500;
    QTest::newRow("action key hits its action") << "/files/check.php?a=info" << "/files/check.php?a=info&db=1" << 500;
    QTest::newRow("action key spares another action") << "/files/check.php?a=info" << "/files/check.php?a=info_refund&db=1" << 200;
    QTest::newRow("other path untouched") << "/desktop/usage/click.php" << "/" << 200;
}

void TestSimulatorFixture::faultKeys()
{
    QFETCH(QString, key);
    QFETCH(QString, request);
    QFETCH(int, status);

    QVERIFY(simulator.setFault(key, QStringLiteral("500")));
    QCOMPARE(fetch(request).status, status);
    QVERIFY(simulator.reset());
    QCOMPARE(fetch(request).status, 200);
}

void TestSimulatorFixture::faultsAsQtSeesThem_data()
{
    QTest::addColumn<QString>("mode");
    QTest::addColumn<int>("error");
    QTest::addColumn<QByteArray>("body");

    const QByteArray version("1.6.5.0");
    QTest::newRow("404") << "404" << int(QNetworkReply::ContentNotFoundError) << QByteArray();
    QTest::newRow("500") << "500" << int(QNetworkReply::InternalServerError) << QByteArray();
    QTest::newRow("slow still delivers") << "slow" << int(QNetworkReply::NoError) << version;
    QTest::newRow("truncated") << "truncated" << int(QNetworkReply::RemoteHostClosedError) << QByteArray();
    // No answer at all: only the client's own time-out ends the request.
    QTest::newRow("noanswer") << "noanswer" << int(QNetworkReply::OperationCanceledError) << QByteArray();
    QTest::newRow("badjson") << "badjson" << int(QNetworkReply::NoError) << QByteArray("{not json");
}

void TestSimulatorFixture::faultsAsQtSeesThem()
{
    QFETCH(QString, mode);
    QFETCH(int, error);
    QFETCH(QByteArray, body);

    QVERIFY(simulator.setFault(QStringLiteral("/desktop/app_version.php?a=version"), mode));
    const Answer answer = fetch(QStringLiteral("/desktop/app_version.php?a=version"));
    QCOMPARE(int(answer.error), error);
    if (!body.isEmpty())
        QCOMPARE(answer.body, body);
}

void TestSimulatorFixture::stopReleasesPort()
{
    Simulator second;
    QVERIFY(second.start());
    const int port = second.port();
    QVERIFY(port > 0);
    QVERIFY(port != simulator.port());
    second.stop();
    QCOMPARE(second.port(), 0);
    QVERIFY(second.records(QStringLiteral("/")).isEmpty());
    // The port is free again: a new simulator can take it.
    QVERIFY(second.start(port));
    QCOMPARE(second.port(), port);
}

QTEST_GUILESS_MAIN(TestSimulatorFixture)
#include "tst_simulatorfixture.moc"
