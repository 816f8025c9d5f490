#include "appdir.h"
#include "buildconfig.h"
#include "db/databaseconnection.h"
#include "db/drugdatabase.h"
#include "simulator.h"
#include "testsupport.h"
#include "utils/appkey.h"
#include "utils/statisticssender.h"

#include <QJsonDocument>
#include <QProcess>
#include <QRegularExpression>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QTest>

#include <unistd.h>

// Usage records over real HTTP to the simulator, and their queue in a real
// statistics.sqlite3 while the simulator is down or refuses them.
class tst_StatisticsSender : public QObject {
    Q_OBJECT

private slots:
    void initTestCase()
    {
        setProgramDir(dir.path());
        DrugDatabase::createStatisticsTable();
        QVERIFY(simulator.start(QUILLARD_SIMULATOR_PORT));
    }

    void offlineAndRefusedRecordsWaitAndGoOnceEach()
    {
        setOnline(false);
        StatisticsSender::sendSearch("l'eau", " ", "drug_list");
        StatisticsSender::sendRecipeGroup(3);
        QTRY_COMPARE(stored().size(), 2);
        const QStringList queued = stored();
        setOnline(true);
        StatisticsSender::instance()->postOverdueStats(); // the minute's tick; each success takes the next
        QCOMPARE(bodies("recipe_group.php", 1) + bodies("search.php", 1), queued); // with their own dates
        QVERIFY(queued.first().startsWith("{\"app_key\":\"{") && queued.first().endsWith("\"group_id\":3}"));
        QTRY_COMPARE(stored().size(), 0);

        // A row that isn't JSON goes out as an empty object, which the service refuses: it waits again.
        DrugDatabase::storeStatistics(simulator.baseUrl() + "/desktop/usage/click.php", "{not json");
        StatisticsSender::instance()->postOverdueStats();
        QCOMPARE(bodies("click.php", 1), QStringList("{}"));
        QTRY_COMPARE(stored(), QStringList("{}"));
        DrugDatabase::takeOverdueRecord();
    }

    void thousandOfflineRecordsAllArriveOnceThroughALock()
    {
        const int threadsBefore = threads();
        QProcess locker; // another program holds the store for a second
        locker.start("python3", { "-c", "import sqlite3,sys,time; c=sqlite3.connect(sys.argv[1]); c.execute('BEGIN EXCLUSIVE');"
                                        "print(flush=True); time.sleep(1); c.commit()", dir.filePath("statistics.sqlite3") });
        QVERIFY(locker.waitForReadyRead());
        setOnline(false);
#ifdef QUILLARD_SANITIZED_BUILD
        constexpr int count = 300; // sanitized code is several times slower
#else
        constexpr int count = 1000;
#endif
        for (int i = 0; i < count; ++i)
            StatisticsSender::sendSearch(QString::number(i), " ", "drug_list");
        QVERIFY(TestSupport::waitWhileProgressing([&] { return stored().size() == count; },
                                                  [&] { return stored().size(); }));
        const QStringList queued = stored();
        setOnline(true);
        for (int tick = 0; tick < StatisticsSender::maxWorkers; ++tick) // a chain per worker
            StatisticsSender::instance()->postOverdueStats();
        QCOMPARE(bodies("search.php", count), queued);
        QTRY_COMPARE(stored().size(), 0);
        // The workers stay, and nothing more: Qt's own pool threads of the host
        // look-ups end after 30 s of rest.
        QVERIFY(TestSupport::waitWhileProgressing(
            [&] { return threads() <= threadsBefore + StatisticsSender::maxWorkers; }, threads, 45000));
    }

    void unwritableStoreKeepsRecordsInMemory_data()
    {
        QTest::addColumn<bool>("fullDisk");
        QTest::newRow("full disk") << true;
        QTest::newRow("read-only store") << false;
    }

    // Fault pinned: a record the store could not take was dropped.
    void unwritableStoreKeepsRecordsInMemory()
    {
        QFETCH(bool, fullDisk);
        if (!fullDisk && geteuid() == 0)
            QSKIP("root writes to read-only files");
        const QString store = dir.filePath("statistics.sqlite3");
        setOnline(false);
        if (fullDisk) {
            QVERIFY(TestSupport::limitFileSize(0));
        } else {
            // The folder too, where SQLite writes its journal.
            QVERIFY(QFile::setPermissions(store, QFile::ReadOwner));
            QVERIFY(QFile::setPermissions(dir.path(), QFile::ReadOwner | QFile::ExeOwner));
        }
        for (int i = 0; i < 3; ++i)
            StatisticsSender::sendSearch(QStringLiteral("unwritable %1").arg(i), " ", "drug_list");
        StatisticsSender* sender = StatisticsSender::instance();
        QTRY_COMPARE(sender->recordsInMemory(), 3);
        sender->postOverdueStats(); // a tick while there is still no room
        QCOMPARE(sender->recordsInMemory(), 3);

        QVERIFY(TestSupport::limitFileSize(-1));
        QVERIFY(QFile::setPermissions(dir.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
        QVERIFY(QFile::setPermissions(store, QFile::ReadOwner | QFile::WriteOwner));
        sender->postOverdueStats(); // the first tick with room; offline, the record taken goes back
        QTRY_COMPARE(stored().filter("unwritable").size(), 3);
        QCOMPARE(sender->recordsInMemory(), 0);
        for (int i = 0; i < 3; ++i)
            DrugDatabase::takeOverdueRecord();
        QCOMPARE(stored().size(), 0);
    }

    // Fault pinned: at quit, a worker waiting on a store that another program
    // held outlived the wait and wrote after the program's statics had gone.
    // Ends the sender's run, so it comes last of the sender's tests.
    void quitWaitsForAWorkerOnABusyStore()
    {
        setOnline(false);
        const QString released = dir.filePath("released");
        QProcess locker; // holds the store for four seconds, longer than the quit used to wait
        locker.start("python3", { "-c", "import sqlite3,sys,time; c=sqlite3.connect(sys.argv[1]); c.execute('BEGIN EXCLUSIVE');"
                                        "print(flush=True); time.sleep(4); c.commit(); open(sys.argv[2], 'w').close()",
                                  dir.filePath("statistics.sqlite3"), released });
        QVERIFY(locker.waitForReadyRead());
        StatisticsSender::sendSearch("at quit", " ", "drug_list");
        QVERIFY(QMetaObject::invokeMethod(QCoreApplication::instance(), "aboutToQuit"));
        // The worker could store its record only once the lock was gone.
        QVERIFY(QFile::exists(released));
        QVERIFY(locker.waitForFinished());
        QVERIFY(stored().filter("at quit").size() == 1);
    }

    void unopenableStoreDoesNotEndTheProgram()
    {
        DatabaseConnection::of("statistics.sqlite3").close();
        QVERIFY(QFile::remove(dir.filePath("statistics.sqlite3")) && QDir(dir.path()).mkdir("statistics.sqlite3"));
        DrugDatabase::storeStatistics("http://127.0.0.1/", "{}");
        QVERIFY(!DrugDatabase::isStatisticsEmpty()); // a closed store never reads as empty
        QCOMPARE(DrugDatabase::takeOverdueRecord(), (QPair<QString, QByteArray>()));
    }

private:
    // the queued records, sorted
    QStringList stored()
    {
        QStringList rows;
        for (QSqlQuery query("SELECT data FROM json", DrugDatabase::databaseHandle("statistics.sqlite3")); query.next();)
            rows << query.value(0).toString();
        rows.sort();
        return rows;
    }

    // The bodies of this program's records, sorted, once `count` have come. Another
    // test program that reaches the same port sends records with its own key.
    QStringList bodies(const QString& path, int count)
    {
        QStringList texts;
        const auto collect = [&] {
            texts.clear();
            for (const QJsonValue& record : simulator.records("/desktop/usage/" + path)) {
                const QString body = record["body"].toString();
                const QJsonValue key = QJsonDocument::fromJson(body.toUtf8())["app_key"];
                if (key.isUndefined() || key.toString() == ensureAppKey())
                    texts << body;
            }
            return texts.size();
        };
        (void)TestSupport::waitWhileProgressing([&] { return collect() >= count; }, [&] { return texts.size(); });
        texts.sort();
        return texts;
    }

    static int threads()
    {
        QFile status("/proc/self/status");
        status.open(QIODevice::ReadOnly);
        return QRegularExpression("Threads:\\s*(\\d+)").match(status.readAll()).captured(1).toInt();
    }
    void setOnline(bool up) { QVERIFY(up ? simulator.start(QUILLARD_SIMULATOR_PORT) : (simulator.stop(), true)); }

    QTemporaryDir dir;
    Simulator simulator;
};

QTEST_MAIN(tst_StatisticsSender)
#include "tst_statisticssender.moc"
