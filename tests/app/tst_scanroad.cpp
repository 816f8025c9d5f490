#include "db/drugdatabase.h"
#include "drugs/drugviewmodel.h"
#include "drugs/searchlistitem.h"
#include "mainwindow.h"
#include "simulator.h"
#include "testsupport.h"
#include "utils/keyboardreader.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QProcess>
#include <QStandardPaths>
#include <QStatusBar>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <cstdio>
#include <memory>

namespace {
// Paracetamol of the demo database, a package of a group.
const QString ean = QStringLiteral("5909990000012");
const QString vid = QStringLiteral("100001");
} // namespace

// A scan from anywhere on the desktop, end to end: xdotool types on the X
// server while another program has the focus, and the drug must come up in our
// main window, hidden in the tray or not. Needs an X server with RECORD (Xvfb).
class tst_ScanRoad : public QObject {
    Q_OBJECT

private slots:
    void initTestCase()
    {
        if (qgetenv("DISPLAY").isEmpty() || QGuiApplication::platformName() != QLatin1String("xcb"))
            QSKIP("Needs an X server (run under xvfb-run).");
        if (QStandardPaths::findExecutable(QStringLiteral("xdotool")).isEmpty())
            QSKIP("Needs xdotool.");
        QVERIFY(window = TestSupport::demoWindow(dir.path(), simulator));

        // Another program with a line edit that has the focus.
        foreign.start(QCoreApplication::applicationFilePath(), { QStringLiteral("--foreign-window") });
        QVERIFY(foreign.waitForStarted());
        QTRY_VERIFY_WITH_TIMEOUT((foreignOutput += foreign.readAllStandardOutput()).contains("READY "), 20000);
        const QByteArray ready = foreignOutput.mid(foreignOutput.indexOf("READY ") + 6).split('\n').first();
        QVERIFY(xdotool({"windowfocus", "--sync", QString::fromLatin1(ready)}));
    }

    void scanWhileAnotherProgramHasTheFocus()
    {
        // The main window is hidden in the tray.
        QVERIFY(window->isHidden());
        auto* tabs = window->findChild<QTabWidget*>(QStringLiteral("tabWidget"));
        tabs->setCurrentIndex(1);

        QVERIFY(scan(ean));

        QTRY_COMPARE_WITH_TIMEOUT(selectedCount(), 1, 10000);
        QCOMPARE(DrugViewModel::instance()->selectedDrug()->vid, vid);
        QTRY_COMPARE(tabs->currentWidget()->objectName(), QStringLiteral("Informacje_tab"));
        // The reader only listens: the digits went on to the program with the focus.
        QTRY_COMPARE(foreignText(), ean);
        // The window stays in the tray until the user asks for it.
        QVERIFY(window->isHidden());
    }

    void shortOrUnknownCodeChangesNothing()
    {
        const int before = selectedCount();
        QVERIFY(scan(ean.left(12)));
        QVERIFY(xdotool({"key", "Return"}));
        // The demo's codes of a package whose group is missing from g, and of no package at all.
        for (const QString& code : {QStringLiteral("5909990001101"), QStringLiteral("5909990001118")})
            QVERIFY(scan(code));
        QTRY_VERIFY(foreignText().endsWith(QLatin1String("5909990001118")));
        QTest::qWait(300);
        QCOMPARE(selectedCount(), before);
    }

    void scanIntoOurSearchLineIsTakenOut()
    {
        window->showNormal();
        QVERIFY(QTest::qWaitForWindowExposed(window.get()));
        QVERIFY(xdotool({"windowfocus", "--sync", QString::number(window->winId())}));
        auto* search = window->findChild<QLineEdit*>(QStringLiteral("searchLineEdit"));
        search->setFocus(Qt::OtherFocusReason);
        QTRY_COMPARE(QApplication::focusWidget(), search);
        const int before = selectedCount();

        QVERIFY(scan(ean));

        QTRY_COMPARE_WITH_TIMEOUT(selectedCount(), before + 1, 10000);
        QTRY_COMPARE(search->text(), QString());
    }

    void twoReadingsInOneTurn()
    {
        // Regression: one batch of recorded keys can hold two whole scans; both
        // drugs must come, newest on top, with each row showing its model's drug.
        // The last scan's page is drawn: a row waits made for the next scan.
        QVERIFY(TestSupport::waitForHiddenTabs(window.get()));
        const int before = selectedCount();
        emit KeyboardReader::instance()->newReading(QStringLiteral("5909990000142"));
        emit KeyboardReader::instance()->newReading(QStringLiteral("5909990000203"));

        auto* list = window->findChild<QListWidget*>(QStringLiteral("selectedDrugs"));
        QTRY_COMPARE(selectedCount(), before + 2);
        DrugViewModel* model = DrugViewModel::instance();
        QCOMPARE(model->drugAt(0)->vid, QStringLiteral("100010"));
        QCOMPARE(model->drugAt(1)->vid, QStringLiteral("100005"));
        for (int row = 0; row < list->count(); ++row) {
            auto* item = qobject_cast<SearchListItem*>(list->itemWidget(list->item(row)));
            QCOMPARE(item->getDrug().vid, model->drugAt(row)->vid);
            // One of the rows was made ahead of the scan: it shows its own drug.
            QCOMPARE(item->labelName()->text(), model->drugAt(row)->name);
        }
    }

    // The local base is the whole point: started with the service gone, the
    // scanner brings up the drug, and once the service is back the next check
    // downloads the newer base.
    void offlineStartScansAndLaterUpdates()
    {
        window.reset();
        simulator.stop();
        const QString localVersion = DrugDatabase::dataVersion();
        window = std::make_unique<MainWindow>(nullptr);
        QTRY_COMPARE(window->statusBar()->currentMessage(), QStringLiteral("Brak połączenia z internetem"));

        DrugViewModel* model = DrugViewModel::instance();
        const int before = model->drugCount();
        QVERIFY(scan(ean));
        QTRY_COMPARE_WITH_TIMEOUT(model->drugCount(), before + 1, 10000);
        QCOMPARE(model->selectedDrug()->vid, vid);

        const QString newerVersion = QString::number(localVersion.toLongLong() + 86400);
        QVERIFY(simulator.startOfferingCurrent(newerVersion));
        QVERIFY(QMetaObject::invokeMethod(window->findChild<QTimer*>(QStringLiteral("dailyCheckTimer")), "timeout"));
        QTRY_COMPARE_WITH_TIMEOUT(DrugDatabase::dataVersion(), newerVersion, 20000);
    }

    void cleanupTestCase()
    {
        if (foreign.state() != QProcess::NotRunning) {
            foreign.kill();
            foreign.waitForFinished(5000);
        }
        window.reset();
    }

private:
    static bool xdotool(const QStringList& arguments)
    {
        QProcess process;
        process.start(QStringLiteral("xdotool"), arguments);
        return process.waitForFinished(30000) && process.exitCode() == 0;
    }
    // Types `code` as fast as a scanner does.
    static bool scan(const QString& code) { return xdotool({"type", "--delay", "20", code}); }

    QString foreignText()
    {
        // The other program writes "TEXT <text>" at every change; the last one counts.
        foreignOutput += foreign.readAllStandardOutput();
        const int start = foreignOutput.lastIndexOf("\nTEXT ");
        return start < 0 ? QString() : QString::fromUtf8(foreignOutput.mid(start + 6).split('\n').first());
    }

    int selectedCount() const
    {
        return window->findChild<QListWidget*>(QStringLiteral("selectedDrugs"))->count();
    }

    QTemporaryDir dir;
    Simulator simulator;
    std::unique_ptr<MainWindow> window;
    QProcess foreign;
    QByteArray foreignOutput;
};

// The "other program": a window with a line edit that reports what it receives.
static int runForeignWindow(int argc, char* argv[])
{
    QApplication app(argc, argv);
    QLineEdit edit;
    edit.setWindowTitle(QStringLiteral("Inny program"));
    QObject::connect(&edit, &QLineEdit::textChanged, &edit, [](const QString& text) {
        std::printf("TEXT %s\n", text.toUtf8().constData());
        std::fflush(stdout);
    });
    edit.resize(400, 40);
    edit.show();
    if (!QTest::qWaitForWindowExposed(&edit))
        return 1;
    std::printf("READY %llu\n", static_cast<unsigned long long>(edit.winId()));
    std::fflush(stdout);
    return app.exec();
}

int main(int argc, char* argv[])
{
    if (argc > 1 && qstrcmp(argv[1], "--foreign-window") == 0)
        return runForeignWindow(argc, argv);
    // Without an X server the test starts offscreen and skips itself.
    if (qEnvironmentVariableIsEmpty("DISPLAY"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    QCoreApplication::setApplicationVersion(QStringLiteral("1.6.5.0"));
    tst_ScanRoad test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_scanroad.moc"
