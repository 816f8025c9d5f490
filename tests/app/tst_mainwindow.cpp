#include "appdir.h"
#include "db/drugdatabase.h"
#include "mainwindow.h"
#include "testsupport.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QStandardPaths>
#include <QSystemTrayIcon>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <memory>

namespace {

// Answers the next message box that comes up with the button of the given text
// and remembers the box's text.
class MessageBoxAnswerer : public QObject {
public:
    explicit MessageBoxAnswerer(const QString& button)
        : button(button)
    {
        auto* timer = new QTimer(this);
        connect(timer, &QTimer::timeout, this, [this] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            if (!box)
                return;
            text = box->text();
            title = box->windowTitle();
            for (QAbstractButton* candidate : box->buttons()) {
                if (candidate->text() == this->button) {
                    candidate->click();
                    return;
                }
            }
        });
        timer->start(20);
    }

    QString button;
    QString text;
    QString title;
};

void touch(const QString& path)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("x");
}

} // namespace

class tst_MainWindow : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void menus_data();
    void menus();
    void statusBarShowsDatabaseDateAndVersion();
    void closeButtonHidesToTray();
    void quitAsksAndNoKeepsRunning();
    void removeTemporaryFiles_data();
    void removeTemporaryFiles();
    void cleanupTestCase();

private:
    QTemporaryDir dir;
    std::unique_ptr<MainWindow> window;
};

void tst_MainWindow::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
    QVERIFY(dir.isValid());
    setProgramDir(dir.path());
    QVERIFY(TestSupport::buildDatabase(dir.filePath(DrugDatabase::drugDatabaseName),
                                       QStringLiteral("CREATE TABLE cfg (key TEXT, val TEXT);\n"
                                                      "INSERT INTO cfg VALUES ('data_version', '1700000000');\n")));

    QCoreApplication::setApplicationVersion(QStringLiteral("1.6.5.0"));
    window = std::make_unique<MainWindow>(nullptr);
    QCOMPARE(MainWindow::instance(), window.get());
}

void tst_MainWindow::menus_data()
{
    QTest::addColumn<QString>("menu");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QStringList>("actions");
    QTest::addColumn<QStringList>("texts");

    QTest::newRow("Plik") << "menuQuillard" << "Plik" << QStringList { "actionZamknij" } << QStringList { "Zamknij" };
    QTest::newRow("Baza Danych") << "menuBaza_Danych" << "Baza Danych"
                                 << QStringList { "actionAktualizuj_baz_danych", "actionInfo" }
                                 << QStringList { "Aktualizuj bazę danych", "Informacje o bazie danych" };
    QTest::newRow("Ustawienia") << "menuUstawienia" << "Ustawienia"
                                << QStringList { "actionTwoje_dane", "actionUsu_pliki_tymczasowe",
                                                 "actionSkr_ty_klawiaturowe" }
                                << QStringList { "Twoje dane", "Usuń pliki tymczasowe", "Skróty klawiaturowe" };
    QTest::newRow("Program") << "menuProgram" << "Program" << QStringList { "actionAktualizuj_program" }
                             << QStringList { "Aktualizuj program" };
    QTest::newRow("Pomoc") << "menuPomoc" << "Pomoc" << QStringList { "actionKontakt" } << QStringList { "Kontakt" };
}

void tst_MainWindow::menus()
{
    QFETCH(QString, menu);
    QFETCH(QString, title);
    QFETCH(QStringList, actions);
    QFETCH(QStringList, texts);

    auto* menuWidget = window->findChild<QMenu*>(menu);
    QVERIFY(menuWidget);
    QCOMPARE(menuWidget->title(), title);
    QVERIFY(window->menuBar()->actions().contains(menuWidget->menuAction()));
    const QList<QAction*> menuActions = menuWidget->actions();
    QCOMPARE(menuActions.size(), actions.size());
    for (int i = 0; i < actions.size(); ++i) {
        QCOMPARE(menuActions.at(i)->objectName(), actions.at(i));
        QCOMPARE(menuActions.at(i)->text(), texts.at(i));
    }
}

void tst_MainWindow::statusBarShowsDatabaseDateAndVersion()
{
    auto* version = window->findChild<QLabel*>(QStringLiteral("version"));
    auto* dbVersionMessage = window->findChild<QLabel*>(QStringLiteral("dbVersionMessage"));
    QVERIFY(version);
    QVERIFY(dbVersionMessage);
    QTRY_COMPARE(version->text(), QStringLiteral("Wersja aplikacji: 1.6.5.0"));
    QCOMPARE(dbVersionMessage->text(),
             QStringLiteral("Baza danych: ")
                 + QDateTime::fromSecsSinceEpoch(1700000000).toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")));
}

void tst_MainWindow::closeButtonHidesToTray()
{
    window->show();
    QVERIFY(QTest::qWaitForWindowExposed(window.get()));
    QVERIFY(!window->close());
    QVERIFY(window->isHidden());
    QCOMPARE(MainWindow::instance(), window.get());
}

void tst_MainWindow::quitAsksAndNoKeepsRunning()
{
    window->show();
    auto* tray = window->findChild<QSystemTrayIcon*>();
    QVERIFY(tray);
    MessageBoxAnswerer answerer(QStringLiteral("Nie"));
    window->findChild<QAction*>(QStringLiteral("actionZamknij"))->trigger();
    QCOMPARE(answerer.text, QStringLiteral("Czy jesteś pewien?\n"));
    QVERIFY(tray->isVisible());
    QVERIFY(window->isVisible());
}

void tst_MainWindow::removeTemporaryFiles_data()
{
    QTest::addColumn<QString>("answer");
    QTest::addColumn<bool>("removed");
    QTest::newRow("Nie keeps the files") << "Nie" << false;
    QTest::newRow("Tak removes the files") << "Tak" << true;
}

void tst_MainWindow::removeTemporaryFiles()
{
    QFETCH(QString, answer);
    QFETCH(bool, removed);

    QDir base(dir.path());
    QVERIFY(base.mkpath(QStringLiteral("temp/pages")));
    QVERIFY(base.mkpath(QStringLiteral("cache")));
    touch(dir.filePath(QStringLiteral("temp/1234.pdf")));
    touch(dir.filePath(QStringLiteral("temp/pages/0.png")));
    touch(dir.filePath(QStringLiteral("cache/77.png")));

    MessageBoxAnswerer answerer(answer);
    window->findChild<QAction*>(QStringLiteral("actionUsu_pliki_tymczasowe"))->trigger();
    QCOMPARE(answerer.title, QStringLiteral("Corvane Quillard"));
    QCOMPARE(answerer.text, QStringLiteral("Czy na pewno chcesz usunąć pliki tymczasowe?"));

    QCOMPARE(!QFile::exists(dir.filePath(QStringLiteral("temp/1234.pdf"))), removed);
    QCOMPARE(!QFile::exists(dir.filePath(QStringLiteral("cache/77.png"))), removed);
    // Folders below temp/ and what is in them stay.
    QVERIFY(QFile::exists(dir.filePath(QStringLiteral("temp/pages/0.png"))));
    QVERIFY(QFile::exists(dir.filePath(QStringLiteral("corvane_quillard_desktop.sqlite3"))));
}

void tst_MainWindow::cleanupTestCase()
{
    window.reset();
    DrugDatabase::closeDatabase();
}

QTEST_MAIN(tst_MainWindow)
#include "tst_mainwindow.moc"
