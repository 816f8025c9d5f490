#include "appdir.h"
#include "buildconfig.h"
#include "db/drugdatabase.h"
#include "mainwindow.h"
#include "simulator.h"
#include "testsupport.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QRandomGenerator>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QStandardPaths>
#include <QStatusBar>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <memory>

#include <signal.h>
#include <sys/types.h>

// A database update cut off at any point, by the end of the process or by a
// full disk, leaves the old base or the new one, whole, and a program that
// tries again. The update runs in a child process (updatechild.cpp) against the
// simulator on the build's port.
class tst_UpdateCutOff : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup();

    void killedUpdate_data();
    void killedUpdate();
    void diskFullDuringUnpack();
    void diskFullInTheWindowThenNextCheck();

private:
    struct Run {
        QByteArray steps;
        int exitCode = -1;
    };
    // Runs the child to its end on `folder`.
    Run runChild(const QString& folder, const QStringList& extra = {});
    QString basePath(const QString& folder) const { return QDir(folder).filePath(DrugDatabase::drugDatabaseName); }

    Simulator simulator;
    QTemporaryDir dir;
    QByteArray oldBase;
    QByteArray newBase;
    qint64 unpackMs = 0;
    QString newVersion;
};

namespace {

const QString getKey = QStringLiteral("/files/check.php?a=get");

QByteArray readFile(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool writeFile(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly | QIODevice::Truncate) && file.write(bytes) == bytes.size();
}

// What the program's next start sees of the base: its data version, or empty
// when the file doesn't open as a drug database.
QString startVersion(const QString& path)
{
    QString version;
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("next-start"));
        db.setConnectOptions(QStringLiteral("QSQLITE_OPEN_READONLY"));
        db.setDatabaseName(path);
        if (db.open() && db.tables().contains(QStringLiteral("v"))) {
            QSqlQuery query(QStringLiteral("SELECT val FROM cfg WHERE key = 'data_version'"), db);
            if (query.next())
                version = query.value(0).toString();
        }
        db.close();
    }
    QSqlDatabase::removeDatabase(QStringLiteral("next-start"));
    return version;
}

} // namespace

void tst_UpdateCutOff::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
    QVERIFY(dir.isValid());
    QVERIFY(simulator.start(QUILLARD_SIMULATOR_PORT));
    oldBase = readFile(QStringLiteral(QUILLARD_BINARY_DIR "/bin/") + DrugDatabase::drugDatabaseName);
    QVERIFY(!oldBase.isEmpty());
    QVERIFY(writeFile(basePath(dir.path()), oldBase));
    newVersion = QString::number(startVersion(basePath(dir.path())).toLongLong() + 86400);
    QVERIFY(simulator.setValue(QStringLiteral("data_version"), newVersion));

    // One whole update gives the new base and the time its unpacking takes here.
    QElapsedTimer sinceStart;
    sinceStart.start();
    const Run whole = runChild(dir.path());
    QCOMPARE(whole.steps, QByteArray("download\nunpack\nreplaced\n"));
    unpackMs = qMax<qint64>(5, sinceStart.elapsed() / 4);
    newBase = readFile(basePath(dir.path()));
    QCOMPARE(startVersion(basePath(dir.path())), newVersion);
}

void tst_UpdateCutOff::cleanup()
{
    TestSupport::limitFileSize(-1);
    QVERIFY(simulator.reset());
    QVERIFY(simulator.setValue(QStringLiteral("data_version"), newVersion));
}

tst_UpdateCutOff::Run tst_UpdateCutOff::runChild(const QString& folder, const QStringList& extra)
{
    QProcess child;
    child.start(QStringLiteral(QUILLARD_UPDATE_CHILD), QStringList{folder} + extra);
    Run run;
    if (!child.waitForStarted() || !child.waitForFinished(60000))
        return run;
    run.steps = child.readAllStandardOutput();
    run.exitCode = child.exitCode();
    return run;
}

void tst_UpdateCutOff::killedUpdate_data()
{
    QTest::addColumn<QString>("step");
    QTest::addColumn<int>("trials");
#ifdef QUILLARD_SANITIZED_BUILD
    constexpr int trials = 10; // sanitized code is several times slower
#else
    constexpr int trials = 50;
#endif
    // The download is spread over a second, so that the kills fall all over it;
    // after "unpack" they fall over the writing of the archive, its unpacking,
    // the check of the new base and the rename.
    QTest::newRow("during the download") << "download" << trials;
    QTest::newRow("during unpack and rename") << "unpack" << trials;
}

void tst_UpdateCutOff::killedUpdate()
{
    QFETCH(QString, step);
    QFETCH(int, trials);
    const bool downloading = step == QLatin1String("download");
    if (downloading)
        QVERIFY(simulator.setFault(getKey, QStringLiteral("slow")));
    const qint64 span = downloading ? 3500 : qMax<qint64>(2 * unpackMs, 10);

    QTemporaryDir folder;
    QVERIFY(folder.isValid());
    const QString base = basePath(folder.path());
    int keptOld = 0;
    int gotNew = 0;
    for (int trial = 0; trial < trials; ++trial) {
        // Leftovers of the trials before stay, as they would between real starts.
        QVERIFY(writeFile(base, oldBase));
        QProcess child;
        child.start(QStringLiteral(QUILLARD_UPDATE_CHILD), {folder.path()});
        QVERIFY(child.waitForStarted());
        QByteArray steps;
        while (!steps.contains(step.toLatin1() + '\n') && child.state() == QProcess::Running) {
            child.waitForReadyRead(100);
            steps += child.readAllStandardOutput();
        }
        // The random point of the cut is what is under test here, not a wait.
        const QDeadlineTimer cut(qint64(QRandomGenerator::global()->bounded(quint32(span))));
        while (!cut.hasExpired() && child.state() == QProcess::Running)
            child.waitForFinished(int(qMax<qint64>(1, cut.remainingTime())));
        if (child.state() == QProcess::Running) {
            ::kill(pid_t(child.processId()), SIGKILL);
            QVERIFY(child.waitForFinished());
        }

        const QByteArray after = readFile(base);
        const QString version = startVersion(base);
        if (after == oldBase) {
            ++keptOld;
            QVERIFY(version != newVersion && !version.isEmpty());
        } else {
            QVERIFY2(after == newBase, qPrintable(QStringLiteral("trial %1: neither base").arg(trial)));
            QCOMPARE(version, newVersion);
            ++gotNew;
        }
        // What a cut leaves beside the base is overwritten by the next update,
        // never added to: no file there is ever larger than the new base.
        for (const QFileInfo& file : QDir(folder.path()).entryInfoList(QDir::Files)) {
            QVERIFY2(QStringList({DrugDatabase::drugDatabaseName, DrugDatabase::drugDatabaseName + QStringLiteral(".part"),
                                  QStringLiteral("temp.zip")})
                         .contains(file.fileName()),
                     qPrintable(file.fileName()));
            QVERIFY2(file.size() <= newBase.size(), qPrintable(file.fileName()));
        }
    }
    qInfo("%s: %d trials, old base kept %d, new base %d", qPrintable(step), trials, keptOld, gotNew);

    // The next start updates as if nothing had happened, and tidies up.
    QVERIFY(simulator.setFault(getKey, QStringLiteral("none")));
    QVERIFY(writeFile(base, oldBase));
    QCOMPARE(runChild(folder.path()).steps, QByteArray("download\nunpack\nreplaced\n"));
    QVERIFY(readFile(base) == newBase);
    QCOMPARE(QDir(folder.path()).entryList(QDir::Files), QStringList{DrugDatabase::drugDatabaseName});
}

void tst_UpdateCutOff::diskFullDuringUnpack()
{
    QTemporaryDir folder;
    QVERIFY(folder.isValid());
    const QString base = basePath(folder.path());
    QVERIFY(writeFile(base, oldBase));
    // Room for the archive, none for the unpacked base.
    const Run run = runChild(folder.path(), {QString::number(newBase.size() / 2)});
    QCOMPARE(run.steps, QByteArray("download\nunpack\nfailed\n"));
    QCOMPARE(run.exitCode, 1);
    QVERIFY(readFile(base) == oldBase);
    QCOMPARE(QDir(folder.path()).entryList(QDir::Files), QStringList{DrugDatabase::drugDatabaseName});
}

// The window of a program whose disk is full: the status bar tells, the base
// stays, and the next check, with room again, brings the new base.
void tst_UpdateCutOff::diskFullInTheWindowThenNextCheck()
{
    QTemporaryDir folder;
    QVERIFY(folder.isValid());
    QVERIFY(TestSupport::useDemoDatabase(folder.path()));
    QVERIFY(TestSupport::limitFileSize(newBase.size() / 2));
    auto window = std::make_unique<MainWindow>(nullptr);
    QTRY_COMPARE_WITH_TIMEOUT(window->statusBar()->currentMessage(),
                              QStringLiteral("Aktualizacja bazy danych nie powiodła sie. Spróbuj ponownie później!"),
                              20000);
    QVERIFY(readFile(basePath(folder.path())) == oldBase);
    QCOMPARE(simulator.records(getKey).size(), 1);

    QVERIFY(TestSupport::limitFileSize(-1));
    auto* dailyCheck = window->findChild<QTimer*>(QStringLiteral("dailyCheckTimer"));
    QVERIFY(dailyCheck);
    QVERIFY(QMetaObject::invokeMethod(dailyCheck, "timeout"));
    QTRY_COMPARE_WITH_TIMEOUT(window->statusBar()->currentMessage(),
                              QStringLiteral("Baza danych została zaktualizowana!"), 20000);
    QCOMPARE(simulator.records(getKey).size(), 2);
    QCOMPARE(DrugDatabase::dataVersion(), newVersion);
    window.reset();
    DrugDatabase::closeDatabase();
}

QTEST_MAIN(tst_UpdateCutOff)
#include "tst_updatecutoff.moc"
