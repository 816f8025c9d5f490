#include "appdir.h"
#include "db/databaseupdater.h"
#include "db/drugdatabase.h"
#include "simulator.h"
#include "urls.h"
#include "utils/networklimits.h"
#include "utils/raven.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSignalSpy>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

// The updater over real HTTP to the simulator, with a copy of the demo database
// beside the program in a folder of the test's own.
class TestDatabaseUpdater : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void firstCheckAtThree_data();
    void firstCheckAtThree();
    void refundAnswer_data();
    void refundAnswer();
    void versionAnswer_data();
    void versionAnswer();
    void silentServiceEndsCheckWithError();
    void downloadUnpackAndReplace();
    void failedUpdateKeepsOldBase_data();
    void failedUpdateKeepsOldBase();

private:
    QString basePath() const { return programFolder->filePath(DrugDatabase::drugDatabaseName); }
    QStringList programFiles() const { return QDir(programFolder->path()).entryList(QDir::Files); }
    int requests(const QString& key) { return simulator.records(key).size(); }
    QString firstQuery(const QString& key)
    {
        return simulator.records(key).first()[QStringLiteral("query")].toString();
    }
    QString reports();

    Simulator simulator;
    QTemporaryDir workingFolder;
    std::unique_ptr<QTemporaryDir> programFolder;
};

namespace {

const QString localVersion = QStringLiteral("1764547200");
const QString localListDate = QStringLiteral("2020-03-01");
const QString refundKey = QStringLiteral("/files/check.php?a=info_refund");
const QString versionKey = QStringLiteral("/files/check.php?a=info");
const QString getKey = QStringLiteral("/files/check.php?a=get");

QByteArray readFile(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool setListDate(const QString& path, const QString& date)
{
    bool done = false;
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("fixture"));
        db.setDatabaseName(path);
        if (db.open()) {
            QSqlQuery query(db);
            query.prepare(QStringLiteral("UPDATE cfg SET val = ? WHERE key = 'list_date'"));
            query.addBindValue(date);
            done = query.exec() && query.numRowsAffected() == 1;
            db.close();
        }
    }
    QSqlDatabase::removeDatabase(QStringLiteral("fixture"));
    return done;
}

} // namespace

QString TestDatabaseUpdater::reports()
{
    Raven::instance()->waitForIdle();
    // "|first|second|", so that a row can match a whole message or its start.
    QString messages = QStringLiteral("|");
    for (const QJsonValue& event : simulator.records(QStringLiteral("/api/16/store/"))) {
        const QJsonDocument body = QJsonDocument::fromJson(event[QStringLiteral("body")].toString().toUtf8());
        messages += body[QStringLiteral("message")].toString() + QStringLiteral("|");
    }
    return messages;
}

void TestDatabaseUpdater::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
    // The service addresses are compiled in, so the simulator takes that port.
    QVERIFY(simulator.start(QUILLARD_SIMULATOR_PORT));
    QVERIFY(Raven::instance()->init(sentryDsn));
    // An update must write nothing into the folder that the program was started from.
    QVERIFY(QDir::setCurrent(workingFolder.path()));
}

void TestDatabaseUpdater::init()
{
    QVERIFY(simulator.reset());
    programFolder = std::make_unique<QTemporaryDir>();
    const QString demoBase = QStringLiteral(QUILLARD_BINARY_DIR "/bin/") + DrugDatabase::drugDatabaseName;
    QVERIFY(QFile::copy(demoBase, basePath()));
    QVERIFY(setListDate(basePath(), localListDate));
    setProgramDir(programFolder->path());
    QCOMPARE(DrugDatabase::dataVersion(), localVersion);
}

void TestDatabaseUpdater::cleanup()
{
    DrugDatabase::closeDatabase();
    NetworkLimits::setTransferTimeout(30000);
    Raven::instance()->waitForIdle();
    QVERIFY(QDir(workingFolder.path()).isEmpty());
    programFolder.reset();
}

void TestDatabaseUpdater::firstCheckAtThree_data()
{
    QTest::addColumn<QTime>("now");
    QTest::addColumn<qint64>("delay");
    QTest::newRow("a second before") << QTime(2, 59, 59) << qint64(1000);
    QTest::newRow("at 03:00, the next day's") << QTime(3, 0) << qint64(86400000);
    QTest::newRow("late evening") << QTime(23, 0) << qint64(4 * 3600000);
}

void TestDatabaseUpdater::firstCheckAtThree()
{
    QFETCH(QTime, now);
    QFETCH(qint64, delay);
    QCOMPARE(DatabaseUpdater::msecsToNextCheck(QDateTime(QDate(2026, 11, 23), now)), delay);
}

void TestDatabaseUpdater::refundAnswer_data()
{
    QTest::addColumn<QString>("answer");
    QTest::addColumn<bool>("newerList");

    QTest::newRow("newer list, line feed") << "x#2020-04-01\n" << true;
    QTest::newRow("same date as the local one") << "x#2020-03-01" << false;
    QTest::newRow("no #") << "2020-04-01" << false;
    QTest::newRow("two #") << "x#2020-04-01#" << false;
    QTest::newRow("empty") << "" << false;
    QTest::newRow("no date") << "x#jutro" << false;
}

void TestDatabaseUpdater::refundAnswer()
{
    QFETCH(QString, answer);
    QFETCH(bool, newerList);
    QVERIFY(simulator.setValue(QStringLiteral("refund_answer"), answer));
    // A fall-through meets an equal version, which is no update.
    QVERIFY(simulator.setValue(QStringLiteral("data_version"), localVersion));

    DatabaseUpdater updater;
    updater.setLocalVersion(localVersion);
    QSignalSpy checked(&updater, &DatabaseUpdater::checked);
    updater.check();
    QTRY_COMPARE(checked.count(), 1);
    // A version request that followed the refund verdict would arrive now.
    QTest::qWait(200);
    QCOMPARE(checked.count(), 1);

    QCOMPARE(updater.isNewRefundListAvailable(), newerList);
    QCOMPARE(updater.isNewVersionAvailable(), newerList);
    QCOMPARE(requests(versionKey), newerList ? 0 : 1);
    QVERIFY(firstQuery(refundKey).endsWith(QStringLiteral("&db=") + localVersion));
}

void TestDatabaseUpdater::versionAnswer_data()
{
    QTest::addColumn<QString>("local");
    QTest::addColumn<QString>("online");
    QTest::addColumn<bool>("newer");

    QTest::newRow("blanks and line feed") << "122" << " 123\n" << true;
    QTest::newRow("equal to the local one") << "123" << " 123\n" << false;
    QTest::newRow("not a number") << "0" << "abc" << false;
}

void TestDatabaseUpdater::versionAnswer()
{
    QFETCH(QString, local);
    QFETCH(QString, online);
    QFETCH(bool, newer);
    QVERIFY(simulator.setValue(QStringLiteral("refund_answer"), QString()));
    QVERIFY(simulator.setValue(QStringLiteral("data_version"), online));

    DatabaseUpdater updater;
    updater.setLocalVersion(local);
    QSignalSpy checked(&updater, &DatabaseUpdater::checked);
    updater.check();
    QTRY_COMPARE(checked.count(), 1);
    QCOMPARE(updater.isNewVersionAvailable(), newer);
    QCOMPARE(updater.isNewRefundListAvailable(), false);
}

void TestDatabaseUpdater::silentServiceEndsCheckWithError()
{
    // The refund step's time-out is no failure: the version step still asks, and its time-out is one.
    NetworkLimits::setTransferTimeout(500);
    QVERIFY(simulator.setFault(QStringLiteral("/files/check.php"), QStringLiteral("noanswer")));

    DatabaseUpdater updater;
    QSignalSpy checked(&updater, &DatabaseUpdater::checked);
    QSignalSpy failed(&updater, &DatabaseUpdater::error);
    updater.check();
    QTRY_COMPARE_WITH_TIMEOUT(failed.count(), 1, 10000);
    QCOMPARE(checked.count(), 0);
    QCOMPARE(requests(versionKey), 1);
}

void TestDatabaseUpdater::downloadUnpackAndReplace()
{
    QVERIFY(simulator.setValue(QStringLiteral("data_version"), QStringLiteral("1800000000")));
    QVERIFY(simulator.setValue(QStringLiteral("list_date"), QStringLiteral("2027-01-01")));

    DatabaseUpdater updater;
    QSignalSpy checked(&updater, &DatabaseUpdater::checked);
    QSignalSpy downloaded(&updater, &DatabaseUpdater::downloaded);
    QSignalSpy replaced(&updater, &DatabaseUpdater::replaced);
    QSignalSpy failed(&updater, &DatabaseUpdater::error);
    updater.setLocalVersion(DrugDatabase::dataVersion());
    updater.check();
    QTRY_COMPARE(checked.count(), 1);
    QVERIFY(updater.isNewVersionAvailable());
    QVERIFY(updater.isNewRefundListAvailable());

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
    QVERIFY(!updater.isNewVersionAvailable());
}

void TestDatabaseUpdater::failedUpdateKeepsOldBase_data()
{
    QTest::addColumn<QString>("fault");
    QTest::addColumn<QString>("archive");
    QTest::addColumn<QString>("report");

    QTest::newRow("truncated download") << "truncated" << "database" << "|Error:";
    QTest::newRow("service never answers") << "noanswer" << "database" << "";
    QTest::newRow("member not a database") << "none" << "notdatabase" << "|Unzip error|";
    QTest::newRow("member with a bad CRC") << "none" << "badcrc" << "|Unzip error|";
}

void TestDatabaseUpdater::failedUpdateKeepsOldBase()
{
    QFETCH(QString, fault);
    QFETCH(QString, archive);
    QFETCH(QString, report);
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
    const QString messages = reports();
    QVERIFY2(messages.contains(report), qPrintable(messages));
}

QTEST_GUILESS_MAIN(TestDatabaseUpdater)
#include "tst_databaseupdater.moc"
