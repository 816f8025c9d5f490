#include "appdir.h"
#include "buildconfig.h"
#include "db/databaseconnection.h"
#include "db/drugdatabase.h"
#include "settings/appkey.h"
#include "simulator.h"
#include "utils/statisticssender.h"

#include <QDateTime>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRegularExpression>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

// Usage records over real HTTP to the simulator, and their queue in a real
// statistics.sqlite3 while the simulator is down.
class tst_StatisticsSender : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void recordBody_data();
    void recordBody();
    void offlineRecordsWaitAndGoOnceEach();
    void refusedAndUnreadableRowsStayQueued();
    void lockedStoreStillTakesTheRecord();
    void thousandOfflineRecordsAllArriveOnce();
    void unopenableStoreDoesNotEndTheProgram();
    void quitEndsWorkersInFlight();

private:
    QStringList storedRows(); // the queued records' JSON texts
    static int threadCount();
    QStringList bodies(const QString& path);
    void online(bool up) { QVERIFY(up ? simulator.start(QUILLARD_SIMULATOR_PORT) : (simulator.stop(), true)); }

    QTemporaryDir dir;
    Simulator simulator;
};

void tst_StatisticsSender::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
    setProgramDir(dir.path());
    DrugDatabase::createStatisticsTable();
    QVERIFY(simulator.start(QUILLARD_SIMULATOR_PORT));
}

void tst_StatisticsSender::init()
{
    QVERIFY(simulator.reset());
}

QStringList tst_StatisticsSender::storedRows()
{
    QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("test"));
    db.setDatabaseName(dir.filePath(QStringLiteral("statistics.sqlite3")));
    QStringList rows;
    if (db.open()) {
        QSqlQuery query(QStringLiteral("SELECT data FROM json"), db);
        while (query.next())
            rows << query.value(0).toString();
    }
    db = QSqlDatabase();
    QSqlDatabase::removeDatabase(QStringLiteral("test"));
    return rows;
}

int tst_StatisticsSender::threadCount()
{
    QFile status(QStringLiteral("/proc/self/status"));
    status.open(QIODevice::ReadOnly);
    return QRegularExpression(QStringLiteral("Threads:\\s*(\\d+)")).match(status.readAll()).captured(1).toInt();
}

QStringList tst_StatisticsSender::bodies(const QString& path)
{
    QStringList texts;
    for (const QJsonValue& record : simulator.records(QStringLiteral("/desktop/usage/") + path))
        texts << record[QStringLiteral("body")].toString();
    return texts;
}

void tst_StatisticsSender::recordBody_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("dateKey");
    QTest::addColumn<QString>("values"); // the record without app_key and date

    QTest::newRow("search") << "search.php" << "search_date" << R"({"phrase":"apap","type":"drug_list","window":" "})";
    QTest::newRow("scan") << "scanned_ean.php" << "scan_date" << R"({"ean":"5909990000000","vid":"12"})";
    QTest::newRow("click, no drug") << "click.php" << "click_date" << R"({"type":"click_big_window","vid":"-1","window":"Zamienniki"})";
    QTest::newRow("recipe group") << "recipe_group.php" << "click_date" << R"({"group_id":3})";
    QTest::newRow("recipe drug") << "recipe_drug.php" << "click_date" << R"({"drug_id":41})";
    QTest::newRow("substitute view") << "substitute_view.php" << "view_date" << R"({"source":"tab","vid":"12"})";
    QTest::newRow("substitute click") << "substitute_click.php" << "click_date" << R"({"vid":"12","vid_to":"14"})";
}

void tst_StatisticsSender::recordBody()
{
    QFETCH(QString, path);
    QFETCH(QString, dateKey);
    QFETCH(QString, values);

    const QString kind = QTest::currentDataTag();
    if (kind == "search") StatisticsSender::sendSearch("apap", " ", "drug_list");
    if (kind == "scan") StatisticsSender::sendScan("5909990000000", "12");
    if (kind == "click, no drug") StatisticsSender::sendClick("-1", "Zamienniki", "click_big_window");
    if (kind == "recipe group") StatisticsSender::sendRecipeGroup(3);
    if (kind == "recipe drug") StatisticsSender::sendRecipeDrug(41);
    if (kind == "substitute view") StatisticsSender::sendSubstituteView("tab", "12");
    if (kind == "substitute click") StatisticsSender::sendSubstituteClick("14", "12");

    QTRY_COMPARE(bodies(path).size(), 1);
    QJsonObject expected = QJsonDocument::fromJson(values.toUtf8()).object();
    expected.insert("app_key", ensureAppKey());
    const QJsonObject sent = QJsonDocument::fromJson(bodies(path).first().toUtf8()).object();
    const QDateTime date = QDateTime::fromString(sent[dateKey].toString(), "yyyy-MM-dd hh:mm:ss");
    QVERIFY(qAbs(date.secsTo(QDateTime::currentDateTime())) < 60);
    expected.insert(dateKey, sent[dateKey]);
    // Compact JSON in the object's key order, app_key with its braces.
    QCOMPARE(bodies(path).first(), QString(QJsonDocument(expected).toJson(QJsonDocument::Compact)));
    QVERIFY(ensureAppKey().startsWith('{'));
}

void tst_StatisticsSender::offlineRecordsWaitAndGoOnceEach()
{
    online(false);
    StatisticsSender::sendSearch("l'eau", " ", "drug_list");
    StatisticsSender::sendClick("7", "Opis", "click_big_window");
    QTRY_COMPARE(storedRows().size(), 2);
    QStringList queued = storedRows();
    online(true);

    StatisticsSender::instance()->postOverdueStats(); // the minute's tick; successes go on
    QTRY_COMPARE((bodies("search.php") + bodies("click.php")).size(), 2);
    QStringList delivered = bodies("search.php") + bodies("click.php");
    delivered.sort();
    queued.sort();
    QCOMPARE(delivered, queued); // each as it was made, with its own date
    QCOMPARE(storedRows().size(), 0);
}

void tst_StatisticsSender::refusedAndUnreadableRowsStayQueued()
{
    QVERIFY(simulator.setFault("/desktop/usage/search.php", "reject"));
    StatisticsSender::sendSearch("ibuprom", " ", "drug_list");
    QTRY_COMPARE(storedRows().size(), 1);
    QCOMPARE(storedRows(), bodies("search.php"));

    // A row that isn't JSON goes out as an empty object; the service refuses that too.
    QVERIFY(simulator.setFault("/desktop/usage/search.php", "none"));
    DrugDatabase::takeOverdueRecord();
    DrugDatabase::storeStatistics(simulator.baseUrl() + "/desktop/usage/click.php", "{not json");
    StatisticsSender::instance()->postOverdueStats();
    QTRY_COMPARE(storedRows(), QStringList("{}"));
    QCOMPARE(bodies("click.php"), QStringList("{}"));
    DrugDatabase::takeOverdueRecord();
}

void tst_StatisticsSender::lockedStoreStillTakesTheRecord()
{
    QProcess locker;
    locker.start("python3", {"-c", "import sqlite3,sys,time; c=sqlite3.connect(sys.argv[1]);"
                                   "c.execute('BEGIN EXCLUSIVE'); print(flush=True); time.sleep(1.5); c.commit()",
                             dir.filePath("statistics.sqlite3")});
    QVERIFY(locker.waitForReadyRead(10000));
    online(false);
    StatisticsSender::sendScan("5909990000001", "3");
    QVERIFY(locker.waitForFinished());
    QTRY_COMPARE(storedRows().size(), 1);
    online(true);
    DrugDatabase::takeOverdueRecord();
}

void tst_StatisticsSender::thousandOfflineRecordsAllArriveOnce()
{
    const int threadsBefore = threadCount();
    online(false);
    for (int i = 0; i < 1000; ++i)
        StatisticsSender::sendSearch(QString::number(i), " ", "drug_list");
    QTRY_COMPARE_WITH_TIMEOUT(storedRows().size(), 1000, 120000);
    QStringList queued = storedRows();
    online(true);

    for (int tick = 0; tick < 4; ++tick)
        StatisticsSender::instance()->postOverdueStats();
    QTRY_COMPARE_WITH_TIMEOUT(bodies("search.php").size(), 1000, 120000);
    QStringList delivered = bodies("search.php");
    delivered.sort();
    queued.sort();
    QCOMPARE(delivered, queued);
    QCOMPARE(storedRows().size(), 0);
    QTRY_VERIFY(threadCount() <= threadsBefore);
}

void tst_StatisticsSender::unopenableStoreDoesNotEndTheProgram()
{
    const QString stored = dir.filePath("statistics.sqlite3");
    DatabaseConnection::of("statistics.sqlite3").close();
    QVERIFY(QFile::rename(stored, stored + ".away") && QDir(dir.path()).mkdir("statistics.sqlite3"));
    DrugDatabase::storeStatistics("http://127.0.0.1/", "{}");
    QVERIFY(!DrugDatabase::isStatisticsEmpty()); // a closed store never reads as empty
    QCOMPARE(DrugDatabase::takeOverdueRecord(), (QPair<QString, QByteArray>()));
    DatabaseConnection::of("statistics.sqlite3").close();
    QVERIFY(QDir(stored).removeRecursively() && QFile::rename(stored + ".away", stored));
}

void tst_StatisticsSender::quitEndsWorkersInFlight()
{
    const int threadsBefore = threadCount();
    QVERIFY(simulator.setFault("/desktop/usage/click.php", "noanswer"));
    for (int i = 0; i < 12; ++i)
        StatisticsSender::sendClick(QString::number(i), "Opis", "click_big_window");
    QTRY_COMPARE(bodies("click.php").size(), 8); // the rest wait for a free worker

    QMetaObject::invokeMethod(qApp, "aboutToQuit");
    QTRY_VERIFY(threadCount() <= threadsBefore);
    QCOMPARE(storedRows().size(), 4);
}

QTEST_MAIN(tst_StatisticsSender)
#include "tst_statisticssender.moc"
