#include "appdir.h"
#include "db/drugdatabase.h"
#include "drugs/drugviewmodel.h"
#include "mainwindow.h"
#include "messageboxanswerer.h"
#include "simulator.h"
#include "testsupport.h"
#include "utils/keyboardreader.h"

#include <QAction>
#include <QFile>
#include <QStandardPaths>
#include <QStatusBar>
#include <QTemporaryDir>
#include <QTest>

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

    void offlineLeavesTheScannerUnwired()
    {
        window = std::make_unique<MainWindow>(nullptr);
        QCOMPARE(window->statusBar()->currentMessage(), QStringLiteral("Brak połączenia z internetem"));
        QCOMPARE(handledScan(), 0);
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
        QTEST(window->centralWidget()->isEnabled(), "pageEnabled");
    }

    void menuCheckNeverDownloadsAndWiresAgain()
    {
        QVERIFY(simulator.startOfferingCurrent(localVersion));
        QVERIFY(simulator.setValue(QStringLiteral("app_version"), QStringLiteral("1.7")));
        {
            // A newer program is offered at the start; whatever the answer, the chain goes on.
            MessageBoxAnswerer answerer(QStringLiteral("Anuluj"));
            window = std::make_unique<MainWindow>(nullptr);
            QVERIFY(simulator.waitForStartupChecks());
            QCOMPARE(answerer.texts, QStringList{QStringLiteral("Dostępna nowa wersja programu!")});
        }
        QTRY_COMPARE(handledScan(), 1);

        // A newer base on offer: the menu's check asks, and never downloads.
        const QString newerVersion = QString::number(localVersion.toLongLong() + 86400);
        QVERIFY(simulator.setValue(QStringLiteral("data_version"), newerVersion));
        MessageBoxAnswerer answerer(QStringLiteral("Tak"));
        window->findChild<QAction*>(QStringLiteral("actionAktualizuj_baz_danych"))->trigger();
        QTRY_COMPARE_WITH_TIMEOUT(simulator.records(QStringLiteral("/files/check.php?a=info")).size(), 2, 20000);
        QCOMPARE(answerer.texts, QStringList{QStringLiteral("Dostępna jest nowa wersja bazy danych.\n"
                                                            "Czy chcesz ją teraz pobrać?")});
        QCOMPARE(simulator.records(QStringLiteral("/files/check.php?a=get")).size(), 0);
        // Each complete pass wires the scanner once more: one code is handled twice.
        QTRY_COMPARE(handledScan(), 2);
    }

private:
    // How many drugs one scan of a demo code adds: 0 while the scanner is unwired.
    int handledScan()
    {
        const int before = DrugViewModel::instance()->drugCount();
        emit KeyboardReader::instance()->newReading(QStringLiteral("5909990000012"));
        QTest::qWait(100);
        return DrugViewModel::instance()->drugCount() - before;
    }

    QTemporaryDir dir;
    Simulator simulator;
    std::unique_ptr<MainWindow> window;
    QString localVersion;
};

QTEST_MAIN(tst_StartupChain)
#include "tst_startupchain.moc"
