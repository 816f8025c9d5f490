#include "appdir.h"
#include "db/drugdatabase.h"
#include "drugs/drugbasewidget.h"
#include "guithreadwatchdog.h"
#include "mainwindow.h"
#include "simulator.h"
#include "testsupport.h"
#include "utils/keyboardreader.h"

#include <QDir>
#include <QElapsedTimer>
#include <QLabel>
#include <QPushButton>
#include <QStandardPaths>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

// The GUI thread never waits for the network: whatever a service does (never
// answers, answers slowly, breaks off, redirects for ever, fails), the window
// comes up at once and keeps serving its events.
class tst_Responsiveness : public QObject {
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QStandardPaths::setTestModeEnabled(true);
        QVERIFY(dir.isValid());
        // The first window of a process loads fonts and styles once; the
        // windows under test come after it.
        QVERIFY(TestSupport::useDemoDatabase(dir.path()));
        MainWindow first(nullptr);
        first.show();
        QVERIFY(QTest::qWaitForWindowExposed(&first));
    }

    void cleanup()
    {
        window.reset();
        simulator.stop();
    }

    void startUnderFault_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("fault");

        const QStringList endpoints = {
            QStringLiteral("/"), // the reachability probe
            QStringLiteral("/desktop/app_version.php?a=version"),
            QStringLiteral("/files/check.php?a=info_refund"),
            QStringLiteral("/files/check.php?a=info"),
            QStringLiteral("/files/check.php?a=get"),
        };
        // The faults that keep a request out: every fault of every endpoint,
        // the pharmacy form's among them, is in the endpoint tests; these rows
        // keep the window's own paths to them.
        const QStringList faults = { QStringLiteral("noanswer"), QStringLiteral("slow"), QStringLiteral("302loop") };
        for (const QString& key : endpoints) {
            for (const QString& fault : faults)
                QTest::addRow("%s %s", qPrintable(fault), qPrintable(key)) << key << fault;
        }
    }

    // Fault pinned: the window came up only after the reachability probe, 30 s
    // on a network that never answers.
    void startUnderFault()
    {
        QFETCH(QString, key);
        QFETCH(QString, fault);
        QVERIFY(TestSupport::useDemoDatabase(dir.path()));
        // A newer base on offer, so that the chain goes as far as its download.
        QVERIFY(simulator.startOfferingCurrent(QString::number(DrugDatabase::dataVersion().toLongLong() + 86400)));
        QVERIFY(simulator.setFault(key, fault));

        QElapsedTimer sinceStart;
        sinceStart.start();
        window = std::make_unique<MainWindow>(nullptr);
        window->show();
        QVERIFY(QTest::qWaitForWindowExposed(window.get()));
        QVERIFY2(sinceStart.elapsed() < mappedWithinMs, qPrintable(QString::number(sinceStart.elapsed())));
        // The recipes page is built once the window is on screen; that is work
        // of the window's own, not a wait.
        QTRY_VERIFY(window->findChild<QWidget*>(QStringLiteral("recipes")));

        // From then on, through the start-up chain until the faulty endpoint
        // has been asked and well beyond.
        GuiThreadWatchdog watchdog;
        QVERIFY(TestSupport::waitWhileProgressing([&] { return !simulator.records(key).isEmpty(); },
                                                  [&] { return simulator.records(QStringLiteral("*")).size(); }));
        QTest::qWait(observeMs);
        QVERIFY2(watchdog.longestGapMs() <= longestGapMs, qPrintable(QString::number(watchdog.longestGapMs())));
    }

    void flowUnderFault_data()
    {
        QTest::addColumn<QString>("flow");
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("fault");

        const QList<QPair<QString, QString>> flows = {
            { QStringLiteral("picture"), QStringLiteral("/files/check.php?a=getImage") },
            { QStringLiteral("leaflet"), QStringLiteral("/leaflets/*") },
            { QStringLiteral("GIF decision"), QStringLiteral("/images/*") },
        };
        // The faults that keep a request out: every fault of every endpoint,
        // the pharmacy form's among them, is in the endpoint tests; these rows
        // keep the window's own paths to them.
        const QStringList faults = { QStringLiteral("noanswer"), QStringLiteral("slow"), QStringLiteral("302loop") };
        for (const auto& flow : flows) {
            for (const QString& fault : faults)
                QTest::addRow("%s %s", qPrintable(fault), qPrintable(flow.first)) << flow.first << flow.second << fault;
        }
    }

    // The flows a pharmacist starts at the counter: whatever their service does,
    // the window goes on serving its events and the base stays as it was.
    void flowUnderFault()
    {
        QFETCH(QString, flow);
        QFETCH(QString, key);
        QFETCH(QString, fault);
        QVERIFY(window = TestSupport::demoWindow(dir.path(), simulator));
        // Nothing of an earlier row on disk: every document is asked for anew.
        QDir(programDir() + QStringLiteral("/cache")).removeRecursively();
        QDir(programDir() + QStringLiteral("/temp")).removeRecursively();
        QVERIFY(simulator.setFault(key, fault));

        // Paracetamol: its picture, its leaflet and two GIF decisions.
        emit KeyboardReader::instance()->newReading(QStringLiteral("5909990000012"));
        // The information tab shows the scanned drug: its buttons act on it.
        QTRY_COMPARE(window->findChild<QLabel*>(QStringLiteral("Name"))->text(),
                     DrugDatabase::drugByEan(QStringLiteral("5909990000012")).name);
        if (flow == QLatin1String("leaflet")) {
            auto* print = window->findChild<QPushButton*>(QStringLiteral("printButton"));
            QTRY_VERIFY(print->isEnabled());
            print->click();
        } else if (flow == QLatin1String("GIF decision")) {
            window->findChild<DrugBaseWidget*>()->onGifClicked(QStringLiteral("gif/2024/decyzja_88.pdf"));
        }
        QVERIFY(TestSupport::waitWhileProgressing([&] { return !simulator.records(key).isEmpty(); },
                                                  [&] { return simulator.records(QStringLiteral("*")).size(); }));
        // Measured while the request is out: the scan's own page fill before
        // it is work of the window, not a wait for the service.
        GuiThreadWatchdog watchdog;
        QTest::qWait(observeMs);
        QVERIFY2(watchdog.longestGapMs() <= longestGapMs, qPrintable(QString::number(watchdog.longestGapMs())));
        // The base is untouched and still answers.
        QCOMPARE(DrugDatabase::drugByEan(QStringLiteral("5909990000012")).vid, QStringLiteral("100001"));
    }

private:
#ifdef QUILLARD_SANITIZED_BUILD
    // Sanitized code builds the window, and shows a document's pages when they
    // come, several times slower; a wait for the network would still show as
    // seconds.
    static constexpr int mappedWithinMs = 3000;
    static constexpr int longestGapMs = 1000;
#else
    static constexpr int mappedWithinMs = 1000;
    static constexpr int longestGapMs = 250;
#endif
    static constexpr int observeMs = 1000;

    QTemporaryDir dir;
    Simulator simulator;
    std::unique_ptr<MainWindow> window;
};

QTEST_MAIN(tst_Responsiveness)
#include "tst_responsiveness.moc"
