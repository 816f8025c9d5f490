#include "appdir.h"
#include "db/drugdatabase.h"
#include "drugs/drugviewmodel.h"
#include "mainwindow.h"
#include "messageboxanswerer.h"
#include "simulator.h"
#include "testsupport.h"
#include "utils/keyboardreader.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QJsonValue>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QStatusBar>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <memory>

// The start-up chain against the simulator on the address the program is built
// with: the program's version, then the database's, and only then the scanner.
class tst_StartupChain : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QStandardPaths::setTestModeEnabled(true);
        QVERIFY(dir.isValid());
        setProgramDir(dir.path());
    }

    void init()
    {
        QVERIFY(TestSupport::useDemoDatabase(dir.path()));
        localVersion = DrugDatabase::dataVersion();
    }

    void cleanup()
    {
        window.reset();
        simulator.stop();
    }

    // The local base is what a look-up needs: started offline, the scanner works.
    void offlineStartWiresTheScanner()
    {
        window = std::make_unique<MainWindow>(nullptr);
        QTRY_COMPARE(window->statusBar()->currentMessage(), QStringLiteral("Brak połączenia z internetem"));
        QCOMPARE(handledScan(), 1);
    }

    void databaseTooSmall_data()
    {
        QTest::addColumn<int>("size");
        QTest::addColumn<bool>("pageEnabled");
        QTest::newRow("1024 bytes is no database") << 1024 << false;
        QTest::newRow("1025 bytes is one") << 1025 << true;
    }

    void databaseTooSmall()
    {
        QFETCH(int, size);
        DrugDatabase::closeDatabase();
        QFile file(dir.filePath(DrugDatabase::drugDatabaseName));
        QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        QVERIFY(file.resize(size));
        file.close();
        window = std::make_unique<MainWindow>(nullptr);
        QTRY_COMPARE(window->statusBar()->currentMessage(), QStringLiteral("Brak połączenia z internetem"));
        QTEST(window->centralWidget()->isEnabled(), "pageEnabled");
    }

    void menuCheckAsks_data()
    {
        QTest::addColumn<QString>("answer");
        QTest::addColumn<bool>("downloads");
        QTest::newRow("Tak downloads") << QStringLiteral("Tak") << true;
        QTest::newRow("Nie leaves the base") << QStringLiteral("Nie") << false;
    }

    // Fault pinned: "Tak" downloaded nothing. Each pass also wired the scanner once more.
    void menuCheckAsks()
    {
        QFETCH(QString, answer);
        QVERIFY(simulator.startOfferingCurrent(localVersion));
        QVERIFY(simulator.setValue(QStringLiteral("app_version"), QStringLiteral("1.7")));
        {
            // A newer program is offered at the start; whatever the answer, the chain goes on.
            MessageBoxAnswerer answerer(QStringLiteral("Anuluj"));
            window = std::make_unique<MainWindow>(nullptr);
            QVERIFY(simulator.waitForStartupChecks());
            QCOMPARE(answerer.texts, QStringList{QStringLiteral("Dostępna nowa wersja programu!")});
        }

        const QString newerVersion = QString::number(localVersion.toLongLong() + 86400);
        QVERIFY(simulator.setValue(QStringLiteral("data_version"), newerVersion));
        MessageBoxAnswerer answerer(answer);
        window->findChild<QAction*>(QStringLiteral("actionAktualizuj_baz_danych"))->trigger();
        QVERIFY(simulator.waitForStartupChecks());
        QCOMPARE(answerer.texts, QStringList{QStringLiteral("Dostępna jest nowa wersja bazy danych.\n"
                                                            "Czy chcesz ją teraz pobrać?")});
        QFETCH(bool, downloads);
        QCOMPARE(simulator.records(QStringLiteral("/files/check.php?a=get")).size(), downloads ? 1 : 0);
        QCOMPARE(DrugDatabase::dataVersion(), downloads ? newerVersion : localVersion);
        QCOMPARE(handledScan(), 1);
    }

    // Weeks at the counter: the four-hour and daily checks, menu checks and a
    // replaced base make pass after pass. Faults pinned: each pass wired the
    // scanner once more, and a replaced base left the updater asking with the
    // old version, so every later check downloaded it again.
    void aWeekAtTheCounter()
    {
        QVERIFY(simulator.startOfferingCurrent(localVersion));
        window = std::make_unique<MainWindow>(nullptr);
        QVERIFY(simulator.waitForStartupChecks());
        auto* dailyCheck = window->findChild<QTimer*>(QStringLiteral("dailyCheckTimer"));
        QVERIFY(dailyCheck);
        const QString newerVersion = QString::number(localVersion.toLongLong() + 86400);
        // A code of its own: records of the other tests' scans may still come in late.
        const QString weekCode = QStringLiteral("5909990000142");
        MessageBoxAnswerer answerer(QStringLiteral("Nie"));
        const auto runPasses = [&](int first, int last) {
            for (int pass = first; pass <= last; ++pass) {
                if (pass == 10)
                    QVERIFY(simulator.setValue(QStringLiteral("data_version"), newerVersion));
                if (pass % 5 == 0)
                    window->findChild<QAction*>(QStringLiteral("actionAktualizuj_baz_danych"))->trigger();
                else if (pass % 5 == 1)
                    window->findChild<QAction*>(QStringLiteral("actionAktualizuj_program"))->trigger();
                else
                    QVERIFY(QMetaObject::invokeMethod(dailyCheck, "timeout"));
                QVERIFY2(simulator.waitForStartupChecks(), qPrintable(QString::number(pass)));
            }
        };

        // Half the passes and a scan: every connection and cache that is
        // meant to stay has been made.
        runPasses(1, 25);
        QCOMPARE(handledScan(weekCode), 1);
        QTRY_COMPARE(scanRecords(weekCode), 1);
        const Resources settled = resources();

        runPasses(26, 50);
        QCOMPARE(answerer.texts.size(), 1); // the menu's check of pass 10 found the newer base
        // The base was replaced once, on the daily check of pass 12; every later
        // check asked with its version.
        QCOMPARE(DrugDatabase::dataVersion(), newerVersion);
        QCOMPARE(simulator.records(QStringLiteral("/files/check.php?a=get")).size(), 1);
        QVERIFY(simulator.records(QStringLiteral("/files/check.php?a=info")).last()[QStringLiteral("query")]
                    .toString().endsWith(QStringLiteral("&db=") + newerVersion));

        QCOMPARE(handledScan(weekCode), 1);
        QTRY_COMPARE(scanRecords(weekCode), 2);
        // Nothing piles up from pass to pass: worker threads of the records and
        // Qt's look-up threads end when idle, message boxes go when answered.
        const bool same = TestSupport::waitWhileProgressing([&] { return resources().within(settled); },
                                                            [&] { return resources().threads; }, 45000);
        const Resources now = resources();
        QVERIFY2(same, qPrintable(QStringLiteral("threads %1/%2, files %3/%4, windows %5/%6")
                                      .arg(now.threads).arg(settled.threads).arg(now.files)
                                      .arg(settled.files).arg(now.windows).arg(settled.windows)));
    }

private:
    struct Resources {
        int threads = 0;
        int files = 0;
        int windows = 0;
        bool within(const Resources& limit) const
        {
            return threads <= limit.threads && files <= limit.files && windows <= limit.windows;
        }
    };
    // What a long run could pile up: threads, open files and top-level widgets.
    static Resources resources()
    {
        QFile status(QStringLiteral("/proc/self/status"));
        status.open(QIODevice::ReadOnly);
        const QRegularExpression threads(QStringLiteral("Threads:\\s*(\\d+)"));
        return { threads.match(QString::fromLatin1(status.readAll())).captured(1).toInt(),
                 int(QDir(QStringLiteral("/proc/self/fd")).count()), int(QApplication::topLevelWidgets().size()) };
    }

    // How many drugs one scan of a demo code adds: 0 while the scanner is unwired.
    int handledScan(const QString& ean = QStringLiteral("5909990000012"))
    {
        const int before = DrugViewModel::instance()->drugCount();
        emit KeyboardReader::instance()->newReading(ean);
        QTest::qWait(100);
        if (window && !TestSupport::waitForHiddenTabs(window.get()))
            return -1;
        return DrugViewModel::instance()->drugCount() - before;
    }

    int scanRecords(const QString& ean)
    {
        int count = 0;
        for (const QJsonValue& record : simulator.records(QStringLiteral("/desktop/usage/scanned_ean.php")))
            count += record[QStringLiteral("body")].toString().contains(QStringLiteral("\"ean\":\"") + ean + '"');
        return count;
    }

    QTemporaryDir dir;
    Simulator simulator;
    std::unique_ptr<MainWindow> window;
    QString localVersion;
};

QTEST_MAIN(tst_StartupChain)
#include "tst_startupchain.moc"
