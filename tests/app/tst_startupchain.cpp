#include "appdir.h"
#include "buildconfig.h"
#include "db/drugdatabase.h"
#include "drugs/drugviewmodel.h"
#include "mainwindow.h"
#include "messageboxanswerer.h"
#include "simulator.h"
#include "utils/keyboardreader.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QFile>
#include <QMessageBox>
#include <QStandardPaths>
#include <QStatusBar>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <memory>

namespace {

const QString ean = QStringLiteral("5909990000012");

} // namespace

// The start-up chain against the simulator on the address the program is built
// with: the program's version, then the database's, and only then the scanner.
class tst_StartupChain : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void offlineLeavesTheScannerUnwired();
    void databaseTooSmall_data();
    void databaseTooSmall();
    void chainWiresTheScannerAfterBothChecks();
    void menuCheckNeverDownloadsAndWiresAgain();

private:
    int probes();
    int handledScans(int scans);

    QTemporaryDir dir;
    Simulator simulator;
    std::unique_ptr<MainWindow> window;
    QString localVersion;
};

void tst_StartupChain::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
    QCoreApplication::setApplicationVersion(QStringLiteral("1.6.5.0"));
    QVERIFY(dir.isValid());
    setProgramDir(dir.path());
}

void tst_StartupChain::init()
{
    DrugDatabase::closeDatabase();
    QFile::remove(dir.filePath(DrugDatabase::drugDatabaseName));
    QVERIFY(QFile::copy(QStringLiteral(QUILLARD_BINARY_DIR "/bin/") + DrugDatabase::drugDatabaseName,
                        dir.filePath(DrugDatabase::drugDatabaseName)));
    localVersion = DrugDatabase::dataVersion();
}

void tst_StartupChain::cleanup()
{
    window.reset();
    simulator.stop();
}

int tst_StartupChain::probes()
{
    return simulator.records(QStringLiteral("/")).size();
}

int tst_StartupChain::handledScans(int scans)
{
    const int before = DrugViewModel::instance()->drugCount();
    for (int scan = 0; scan < scans; ++scan)
        emit KeyboardReader::instance()->newReading(ean);
    QTest::qWait(100);
    return DrugViewModel::instance()->drugCount() - before;
}

void tst_StartupChain::offlineLeavesTheScannerUnwired()
{
    window = std::make_unique<MainWindow>(nullptr);
    QCOMPARE(window->statusBar()->currentMessage(), QStringLiteral("Brak połączenia z internetem"));
    QCOMPARE(handledScans(1), 0);
}

void tst_StartupChain::databaseTooSmall_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<bool>("pageEnabled");
    QTest::newRow("1024 bytes is no database") << 1024 << false;
    QTest::newRow("1025 bytes is one") << 1025 << true;
}

void tst_StartupChain::databaseTooSmall()
{
    QFETCH(int, size);
    QFETCH(bool, pageEnabled);
    DrugDatabase::closeDatabase();
    QFile file(dir.filePath(DrugDatabase::drugDatabaseName));
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    QVERIFY(file.resize(size));
    file.close();
    window = std::make_unique<MainWindow>(nullptr);
    QCOMPARE(window->centralWidget()->isEnabled(), pageEnabled);
}

void tst_StartupChain::chainWiresTheScannerAfterBothChecks()
{
    QVERIFY(simulator.start(QUILLARD_SIMULATOR_PORT));
    QVERIFY(simulator.setValue(QStringLiteral("data_version"), localVersion));
    QVERIFY(simulator.setValue(QStringLiteral("app_version"), QStringLiteral("1.7")));

    // A newer program is offered; whatever the answer, the chain goes on.
    MessageBoxAnswerer answerer(QStringLiteral("Anuluj"));
    window = std::make_unique<MainWindow>(nullptr);
    QTRY_COMPARE_WITH_TIMEOUT(probes(), 3, 20000);
    QCOMPARE(answerer.texts, QStringList{QStringLiteral("Dostępna nowa wersja programu!")});
    QCOMPARE(simulator.records(QStringLiteral("/files/check.php?a=get")).size(), 0);
    QTRY_COMPARE(handledScans(1), 1);
}

void tst_StartupChain::menuCheckNeverDownloadsAndWiresAgain()
{
    QVERIFY(simulator.start(QUILLARD_SIMULATOR_PORT));
    QVERIFY(simulator.setValue(QStringLiteral("data_version"), localVersion));
    window = std::make_unique<MainWindow>(nullptr);
    QTRY_COMPARE_WITH_TIMEOUT(probes(), 3, 20000);
    QTRY_COMPARE(handledScans(1), 1);

    // A newer base on offer: the menu's check asks, and never downloads.
    QVERIFY(simulator.setValue(QStringLiteral("data_version"), QString::number(localVersion.toLongLong() + 86400)));
    MessageBoxAnswerer answerer(QStringLiteral("Tak"));
    window->findChild<QAction*>(QStringLiteral("actionAktualizuj_baz_danych"))->trigger();
    QTRY_COMPARE_WITH_TIMEOUT(probes(), 4, 20000);
    QCOMPARE(answerer.texts, QStringList{QStringLiteral("Dostępna jest nowa wersja bazy danych.\nCzy chcesz ją teraz pobrać?")});
    QCOMPARE(simulator.records(QStringLiteral("/files/check.php?a=get")).size(), 0);
    // Each complete pass wires the scanner once more: one code is handled twice.
    QTRY_COMPARE(handledScans(1), 2);
}

QTEST_MAIN(tst_StartupChain)
#include "tst_startupchain.moc"
