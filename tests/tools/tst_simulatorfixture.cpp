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
    void stopReleasesPort();

private:
    // Status code and body of one request, or -1 when no answer came in time.
    QPair<int, QByteArray> fetch(const QString& pathAndQuery, const QByteArray& postBody = QByteArray());

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

QPair<int, QByteArray> TestSimulatorFixture::fetch(const QString& pathAndQuery, const QByteArray& postBody)
{
    QNetworkAccessManager manager;
    manager.setProxy(QNetworkProxy::NoProxy);
    QNetworkRequest request(QUrl(simulator.baseUrl() + pathAndQuery));
    QNetworkReply* reply = postBody.isNull() ? manager.get(request) : manager.post(request, postBody);
    QEventLoop loop;
    connect(reply, &QNetworkReply::finished, &loop, &QEventLoop::quit);
    QTimer::singleShot(10000, &loop, &QEventLoop::quit);
    loop.exec();
    QPair<int, QByteArray> result(-1, QByteArray());
    if (reply->isFinished())
        result = { reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt(), reply->readAll() };
    delete reply;
    return result;
}

void TestSimulatorFixture::recordsPostedBody()
{
    const QByteArray body = R"({"app_key":"{6f9619ff-8b86-d011-b42d-00c04fc964ff}","phrase":"apap"})";
    const auto answer = fetch(QStringLiteral("/desktop/usage/search.php"), body);
    QCOMPARE(answer.first, 200);
    QCOMPARE(answer.second, QByteArray(R"({"status":"success","message":""})"));

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
    QCOMPARE(fetch(request).first, status);
    QVERIFY(simulator.reset());
    QCOMPARE(fetch(request).first, 200);
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
