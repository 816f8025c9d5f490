#include "appdir.h"
#include "db/drugdatabase.h"
#include "mainwindow.h"
#include "messageboxanswerer.h"
#include "testsupport.h"

#include <QAction>
#include <QApplication>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QStandardPaths>
#include <QSystemTrayIcon>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <memory>

class tst_MainWindow : public QObject {
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QStandardPaths::setTestModeEnabled(true);
        QVERIFY(dir.isValid());
        setProgramDir(dir.path());
        QVERIFY(TestSupport::buildDatabase(dir.filePath(DrugDatabase::drugDatabaseName),
                                           QStringLiteral("CREATE TABLE cfg (key TEXT, val TEXT);\n"
                                                          "INSERT INTO cfg VALUES ('data_version', '1700000000');\n")));

        QCoreApplication::setApplicationVersion(QStringLiteral("1.6.5.0"));
        window = std::make_unique<MainWindow>(nullptr);
    }

    void statusBarShowsDatabaseDateAndVersion()
    {
        auto* version = window->findChild<QLabel*>(QStringLiteral("version"));
        auto* dbVersionMessage = window->findChild<QLabel*>(QStringLiteral("dbVersionMessage"));
        QTRY_COMPARE(version->text(), QStringLiteral("Wersja aplikacji: 1.6.5.0"));
        QCOMPARE(dbVersionMessage->text(),
                 QStringLiteral("Baza danych: ")
                     + QDateTime::fromSecsSinceEpoch(1700000000).toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")));
        // The date comes up ten seconds after the start.
        QVERIFY(dbVersionMessage->isHidden());
        QTRY_VERIFY_WITH_TIMEOUT(dbVersionMessage->isVisibleTo(window.get()), 12000);
    }

    void closingWindowsKeepsRunning()
    {
        // The close button hides the main window to the tray.
        window->show();
        QVERIFY(QTest::qWaitForWindowExposed(window.get()));
        QVERIFY(!window->close());
        QVERIFY(window->isHidden());

        // A viewer or dialog closed while the main window sits in the tray must not
        // end the program.
        QWidget viewer;
        viewer.show();
        QVERIFY(QTest::qWaitForWindowExposed(&viewer));
        QTimer::singleShot(0, &viewer, &QWidget::close);
        QTimer::singleShot(300, [] { QCoreApplication::exit(7); });
        QCOMPARE(QApplication::exec(), 7);
    }

    void quitAsksAndNoKeepsRunning()
    {
        window->show();
        MessageBoxAnswerer answerer(QStringLiteral("Nie"));
        window->findChild<QAction*>(QStringLiteral("actionZamknij"))->trigger();
        QTRY_COMPARE(answerer.texts.value(0), QStringLiteral("Czy jesteś pewien?\n"));
        QTRY_VERIFY(window->findChild<QSystemTrayIcon*>()->isVisible());
        QVERIFY(window->isVisible());
    }

    void removeTemporaryFiles_data()
    {
        QTest::addColumn<QString>("answer");
        QTest::addColumn<bool>("removed");
        QTest::newRow("Nie keeps the files") << "Nie" << false;
        QTest::newRow("Tak removes the files") << "Tak" << true;
    }

    void removeTemporaryFiles()
    {
        QFETCH(QString, answer);
        QFETCH(bool, removed);

        QDir base(dir.path());
        QVERIFY(base.mkpath(QStringLiteral("temp/pages")));
        QVERIFY(base.mkpath(QStringLiteral("cache")));
        for (const char* path : {"temp/1234.pdf", "temp/pages/0.png", "cache/77.png"}) {
            QFile file(dir.filePath(QString::fromLatin1(path)));
            QVERIFY(file.open(QIODevice::WriteOnly));
        }

        MessageBoxAnswerer answerer(answer);
        window->findChild<QAction*>(QStringLiteral("actionUsu_pliki_tymczasowe"))->trigger();
        QTRY_COMPARE(answerer.texts.value(0), QStringLiteral("Czy na pewno chcesz usunąć pliki tymczasowe?"));
        QTRY_VERIFY(!QApplication::activeModalWidget());

        QCOMPARE(!QFile::exists(dir.filePath(QStringLiteral("temp/1234.pdf"))), removed);
        QCOMPARE(!QFile::exists(dir.filePath(QStringLiteral("cache/77.png"))), removed);
        // Folders below temp/ and what is in them stay.
        QVERIFY(QFile::exists(dir.filePath(QStringLiteral("temp/pages/0.png"))));
        QVERIFY(QFile::exists(dir.filePath(QStringLiteral("corvane_quillard_desktop.sqlite3"))));
    }

    void sessionEndIsNotHeldUp()
    {
        // At a logout the toolkit closes every window; hiding to the tray instead
        // would cancel the logout.
        window->show();
        QVERIFY(QMetaObject::invokeMethod(window.get(), "onSessionEnding"));
        QVERIFY(window->close());
        QVERIFY(!QApplication::activeModalWidget());
    }

    void cleanupTestCase()
    {
        window.reset();
        DrugDatabase::closeDatabase();
    }

private:
    QTemporaryDir dir;
    std::unique_ptr<MainWindow> window;
};

QTEST_MAIN(tst_MainWindow)
#include "tst_mainwindow.moc"
