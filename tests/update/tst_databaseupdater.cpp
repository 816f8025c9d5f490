#include "appdir.h"
#include "buildconfig.h"
#include "db/drugdatabase.h"
#include "simulator.h"
#include "update/databaseupdater.h"
#include "utils/networklimits.h"

#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <memory>

// The updater over real HTTP to the simulator, with a copy of the demo database
// beside the program in a folder of the test's own.
class TestDatabaseUpdater : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void checkAnswer_data();
    void checkAnswer();
    void downloadUnpackAndReplace();
    void failedUpdateKeepsOldBase_data();
    void failedUpdateKeepsOldBase();
    void nextDailyCheck_data();
    void nextDailyCheck();
    void dailyCheckComesEveryDay();

private:
    QString basePath() const { return programFolder->filePath(DrugDatabase::drugDatabaseName); }
    QStringList programFiles() const { return QDir(programFolder->path()).entryList(QDir::Files); }
    int requests(const QString& key) { return simulator.records(key).size(); }
    QString firstQuery(const QString& key)
    {
        return simulator.records(key).first()[QStringLiteral("query")].toString();
    }

    Simulator simulator;
    QTemporaryDir workingFolder;
    std::unique_ptr<QTemporaryDir> programFolder;
};

namespace {

const QString localVersion = QStringLiteral("1764547200");
const QString refundKey = QStringLiteral("/files/check.php?a=info_refund");
const QString versionKey = QStringLiteral("/files/check.php?a=info");
const QString getKey = QStringLiteral("/files/check.php?a=get");

QByteArray readFile(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

void TestDatabaseUpdater::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
    // The service addresses are compiled in, so the simulator takes that port.
    QVERIFY(simulator.start(QUILLARD_SIMULATOR_PORT));
    // An update must write nothing into the folder that the program was started from.
    QVERIFY(QDir::setCurrent(workingFolder.path()));
}

void TestDatabaseUpdater::init()
{
    QVERIFY(simulator.reset());
    programFolder = std::make_unique<QTemporaryDir>();
    const QString demoBase = QStringLiteral(QUILLARD_BINARY_DIR "/bin/") + DrugDatabase::drugDatabaseName;
    QVERIFY(QFile::copy(demoBase, basePath()));
    setProgramDir(programFolder->path());
    QCOMPARE(DrugDatabase::dataVersion(), localVersion);
}

void TestDatabaseUpdater::cleanup()
{
    DrugDatabase::closeDatabase();
    NetworkLimits::setTransferTimeout(30000);
    QVERIFY(QDir(workingFolder.path()).isEmpty());
    programFolder.reset();
}

void TestDatabaseUpdater::checkAnswer_data()
{
    QTest::addColumn<QString>("refund");
    QTest::addColumn<QString>("local");
    QTest::addColumn<QString>("online");
    QTest::addColumn<bool>("newerList");
    QTest::addColumn<bool>("newer");

    // A refund answer that offers nothing falls through to the version, here equal to the local one.
    QTest::newRow("newer list, LF") << "x#2026-01-01\n" << localVersion << localVersion << true << true;
    QTest::newRow("list of that date") << "x#2025-12-01" << localVersion << localVersion << false << false;
    QTest::newRow("list without #") << "2026-01-01" << localVersion << localVersion << false << false;
    QTest::newRow("list with two #") << "x#2026-01-01#" << localVersion << localVersion << false << false;
    QTest::newRow("list without a date") << "x#jutro" << localVersion << localVersion << false << false;
    QTest::newRow("version with blanks and line feed") << "" << "122" << " 123\n" << false << true;
    QTest::newRow("version equal to the local one") << "" << "123" << " 123\n" << false << false;
    QTest::newRow("version not a number") << "" << "0" << "abc" << false << false;
}

void TestDatabaseUpdater::checkAnswer()
{
    QFETCH(QString, refund);
    QFETCH(QString, local);
    QFETCH(QString, online);
    QFETCH(bool, newerList);
    QVERIFY(simulator.setValue(QStringLiteral("refund_answer"), refund));
    QVERIFY(simulator.setValue(QStringLiteral("data_version"), online));

    DatabaseUpdater updater;
    updater.setLocalVersion(local);
    QSignalSpy checked(&updater, &DatabaseUpdater::checked);
    updater.check();
    QTRY_COMPARE(checked.count(), 1);
    // A version request that followed the refund verdict would arrive now.
    QTest::qWait(200);
    QCOMPARE(checked.count(), 1);

    QCOMPARE(updater.isNewRefundListAvailable(), newerList);
    QTEST(updater.isNewVersionAvailable(), "newer");
    QCOMPARE(requests(versionKey), newerList ? 0 : 1);
    QVERIFY(firstQuery(refundKey).endsWith(QStringLiteral("&db=") + local));
}

void TestDatabaseUpdater::downloadUnpackAndReplace()
{
    QVERIFY(simulator.setValue(QStringLiteral("data_version"), QStringLiteral("1800000000")));
    QVERIFY(simulator.setValue(QStringLiteral("list_date"), QStringLiteral("2027-01-01")));

    DatabaseUpdater updater;
    QSignalSpy downloaded(&updater, &DatabaseUpdater::downloaded);
    QSignalSpy replaced(&updater, &DatabaseUpdater::replaced);
    QSignalSpy failed(&updater, &DatabaseUpdater::error);
    updater.setLocalVersion(DrugDatabase::dataVersion());
    updater.download();
    QTRY_COMPARE(downloaded.count(), 1);
    QVERIFY(firstQuery(getKey).endsWith(QStringLiteral("&db=") + localVersion));

    DrugDatabase::closeDatabase();
    updater.replaceDatabase(basePath());
    // The unpacking runs off the GUI thread: the call returns before it ends.
    QCOMPARE(replaced.count(), 0);
    QTRY_COMPARE(replaced.count(), 1);
    QCOMPARE(failed.count(), 0);

    QCOMPARE(DrugDatabase::dataVersion(), QStringLiteral("1800000000"));
    QCOMPARE(DrugDatabase::listDate(), QStringLiteral("2027-01-01"));
    QCOMPARE(programFiles(), QStringList{DrugDatabase::drugDatabaseName});

    // The next check asks with the new base's version and finds nothing newer,
    // instead of downloading the same base again.
    QVERIFY(simulator.reset());
    QVERIFY(simulator.setValue(QStringLiteral("data_version"), QStringLiteral("1800000000")));
    QVERIFY(simulator.setValue(QStringLiteral("list_date"), QStringLiteral("2027-01-01")));
    QSignalSpy checked(&updater, &DatabaseUpdater::checked);
    updater.check();
    QTRY_COMPARE(checked.count(), 1);
    QVERIFY(firstQuery(versionKey).endsWith(QStringLiteral("&db=1800000000")));
    QVERIFY(!updater.isNewVersionAvailable());
}

void TestDatabaseUpdater::failedUpdateKeepsOldBase_data()
{
    QTest::addColumn<QString>("fault");
    QTest::addColumn<QString>("archive");

    QTest::newRow("truncated download") << "truncated" << "database";
    QTest::newRow("service never answers") << "noanswer" << "database";
    QTest::newRow("member not a database") << "none" << "notdatabase";
    QTest::newRow("member with a bad CRC") << "none" << "badcrc";
}

void TestDatabaseUpdater::failedUpdateKeepsOldBase()
{
    QFETCH(QString, fault);
    QFETCH(QString, archive);
    NetworkLimits::setTransferTimeout(500);
    QVERIFY(simulator.setFault(getKey, fault));
    QVERIFY(simulator.setValue(QStringLiteral("archive"), archive));
    const QByteArray oldBase = readFile(basePath());

    DatabaseUpdater updater;
    QSignalSpy downloaded(&updater, &DatabaseUpdater::downloaded);
    QSignalSpy replaced(&updater, &DatabaseUpdater::replaced);
    QSignalSpy failed(&updater, &DatabaseUpdater::error);
    updater.setLocalVersion(localVersion);
    updater.download();
    QTRY_COMPARE_WITH_TIMEOUT(downloaded.count() + failed.count(), 1, 10000);
    if (downloaded.count() == 1) {
        DrugDatabase::closeDatabase();
        updater.replaceDatabase(basePath());
        QTRY_COMPARE(failed.count(), 1);
    }
    QCOMPARE(replaced.count(), 0);

    QVERIFY(readFile(basePath()) == oldBase);
    QCOMPARE(programFiles(), QStringList{DrugDatabase::drugDatabaseName});
    QCOMPARE(DrugDatabase::dataVersion(), localVersion);
}

void TestDatabaseUpdater::nextDailyCheck_data()
{
    QTest::addColumn<QDateTime>("now");
    QTest::addColumn<qint64>("wait");

    constexpr qint64 hour = 3600000;
    QTest::newRow("a second before three") << QDateTime({2026, 11, 24}, {2, 59, 59}) << qint64(1000);
    QTest::newRow("at three: the next day") << QDateTime({2026, 11, 24}, {3, 0}) << 24 * hour;
    QTest::newRow("evening before the new year") << QDateTime({2026, 12, 31}, {23, 30}) << 3 * hour + hour / 2;
    QTest::newRow("day before summer time: 23 hours") << QDateTime({2026, 3, 28}, {3, 0}) << 23 * hour;
    QTest::newRow("the night the clock jumps") << QDateTime({2026, 3, 29}, {1, 30}) << hour / 2;
    QTest::newRow("day before winter time: 25 hours") << QDateTime({2026, 10, 24}, {3, 0}) << 25 * hour;
}

void TestDatabaseUpdater::nextDailyCheck()
{
    QFETCH(QDateTime, now);
    QTEST(DatabaseUpdater::msecsToNextCheck(now), "wait");
}

// Fault pinned: the timer was not armed again after the first 03:00 check.
void TestDatabaseUpdater::dailyCheckComesEveryDay()
{
    DatabaseUpdater updater;
    updater.setLocalVersion(localVersion);
    auto* timer = updater.findChild<QTimer*>(QStringLiteral("dailyCheckTimer"));
    QVERIFY(timer);
    QSignalSpy checked(&updater, &DatabaseUpdater::checked);
    for (int day = 1; day <= 3; ++day) {
        QVERIFY(timer->isActive());
        timer->stop();
        QVERIFY(QMetaObject::invokeMethod(timer, "timeout"));
        QTRY_COMPARE(checked.count(), day);
        QVERIFY(timer->isActive());
        const qint64 expected = DatabaseUpdater::msecsToNextCheck(QDateTime::currentDateTime());
        QVERIFY(qAbs(timer->remainingTime() - expected) < 60000);
    }
}

int main(int argc, char* argv[])
{
    // The daily check keeps to 03:00 of Polish time, also across the changes to
    // and from summer time.
    qputenv("TZ", "Europe/Warsaw");
    QCoreApplication app(argc, argv);
    TestDatabaseUpdater test;
    QTEST_SET_MAIN_SOURCE_PATH
    return QTest::qExec(&test, argc, argv);
}
#include "tst_databaseupdater.moc"
