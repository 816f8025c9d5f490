#include "mainwindow.h"
#include "ui_mainwindow.h"

#include "appdir.h"
#include "db/drugdatabase.h"
#include "drugs/drugbasewidget.h"
#include "drugs/drugsubstituteviewmodel.h"
#include "drugs/drugviewmodel.h"
#include "drugs/gifbubble.h"
#include "utils/keyboardreader.h"

#include <QApplication>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QDebug>
#include <QDir>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QStatusBar>
#include <QTimer>

namespace {
MainWindow* mainWindowInstance = nullptr;

const QString alertStyle = QStringLiteral("background-color: #e3502a; QStatusBar::item {border: none;}");
const QString plainStyle = QStringLiteral("QStatusBar::item {border: none;}");

void removeFilesIn(const QString& path)
{
    QDir dir(path);
    const QStringList files = dir.entryList(QDir::Files);
    for (const QString& file : files)
        dir.remove(file);
}
} // namespace

MainWindow::MainWindow(QWidget* parent)
    : QMainWindow(parent)
    , ui(new Ui::MainWindow)
{
    ui->setupUi(this);
    mainWindowInstance = this;

    // The first open of the drug database; a database that can't be opened
    // ends the process.
    DrugDatabase::databaseHandle(DrugDatabase::drugDatabaseName);
    qDebug() << DrugDatabase::dataVersion();

    auto* version = new QLabel(this);
    version->setObjectName(QStringLiteral("version"));
    auto* dbVersionMessage = new QLabel(this);
    dbVersionMessage->setObjectName(QStringLiteral("dbVersionMessage"));
    ui->statusBar->addPermanentWidget(version);
    ui->statusBar->addWidget(dbVersionMessage);
    dbVersionMessage->hide();

    trayIcon = new QSystemTrayIcon(this);
    trayIcon->setIcon(QIcon(QStringLiteral(":/icons/tray")));
    trayIcon->setVisible(true);
    connect(trayIcon, &QSystemTrayIcon::activated, this, &MainWindow::display);
    connect(trayIcon, &QSystemTrayIcon::messageClicked, this, &MainWindow::onTrayIconMessageClicked);

    setWindowState(Qt::WindowMaximized);

    DrugSubstituteViewModel::instance();
    DrugSubstituteViewModel::connectToDrugViewModel();

    ui->recipes->hide();
    ui->drugBase->show();

    // The program ends through "Zamknij", a program update or the end of the
    // desktop session, never because the last of its windows closed: the main
    // window lives in the tray, viewers and dialogs come and go.
    QApplication::setQuitOnLastWindowClosed(false);
    connect(qApp, &QGuiApplication::commitDataRequest, this, &MainWindow::onSessionEnding);
    connect(qApp, &QCoreApplication::aboutToQuit, this, [] { DrugDatabase::closeDatabase(); });

    // Until the start-up checks stand, their last pass runs once the event loop
    // is up, and the scanner is wired once, here.
    QMetaObject::invokeMethod(this, &MainWindow::Init, Qt::QueuedConnection);
    connectInputs();
}

MainWindow::~MainWindow()
{
    if (mainWindowInstance == this)
        mainWindowInstance = nullptr;
    delete ui;
}

MainWindow* MainWindow::instance()
{
    return mainWindowInstance;
}

void MainWindow::Init()
{
    qDebug() << "D/MainWindow::Init";
    ui->centralWidget->setEnabled(true);

    auto* dbVersionMessage = findChild<QLabel*>(QStringLiteral("dbVersionMessage"));
    auto* version = findChild<QLabel*>(QStringLiteral("version"));
    dbVersionMessage->setText(QStringLiteral("Baza danych: ") + DrugDatabase::databaseDateText());
    version->setText(QStringLiteral("Wersja aplikacji: ") + QCoreApplication::applicationVersion());
    QTimer::singleShot(10000, dbVersionMessage, &QLabel::show);
}

void MainWindow::showStatusMessage(const QString& text, int milliseconds)
{
    ui->statusBar->showMessage(text, milliseconds);
}

void MainWindow::clearStatusMessage()
{
    ui->statusBar->clearMessage();
}

void MainWindow::setAlertStyle(bool alert)
{
    ui->statusBar->setStyleSheet(alert ? alertStyle : plainStyle);
}

void MainWindow::showAlertMessage(const QString& text, int milliseconds)
{
    setAlertStyle(true);
    ui->statusBar->showMessage(text, milliseconds);
    QTimer::singleShot(milliseconds, milliseconds >= 2000 ? Qt::CoarseTimer : Qt::PreciseTimer, this,
                       [this] { setAlertStyle(false); });
}

void MainWindow::showDrugPage()
{
    ui->recipes->hide();
    ui->drugBase->show();
}

void MainWindow::showRecipesPage()
{
    ui->drugBase->hide();
    ui->recipes->show();
}

void MainWindow::showSubstitutes()
{
    showDrugPage();
    ui->drugBase->showTab(QStringLiteral("Zamienniki"));
}

void MainWindow::connectInputs()
{
    // Queued: the key source's callback returns before a reading is handled.
    connect(KeyboardReader::instance(), &KeyboardReader::newReading, this, &MainWindow::onNewReading,
            Qt::QueuedConnection);
}

void MainWindow::onNewReading(const QString& ean)
{
    qDebug() << "New ean" << ean;
    const Drug drug = DrugDatabase::drugByEan(ean);
    if (drug.gid.isEmpty()) {
        qDebug() << ean << " not found";
        return;
    }
    DrugViewModel::instance()->addDrug(drug);
    showDrugPage();
    ui->drugBase->showTab(QStringLiteral("Informacje"));

    // One bubble per GIF decision, the newest on top; they are tied together,
    // so that a click on one closes them all, as do Escape and the next scan.
    const QList<GifDecision> decisions = DrugDatabase::gifDecisions(drug.vid);
    QList<GifBubble*> bubbles;
    for (int i = 0; i < decisions.size(); ++i) {
        const GifDecision& decision = decisions.at(i);
        auto* bubble = new GifBubble(nullptr);
        bubble->Show(decision.path, decision.path, decision.date, decision.descr, decisions.size() - i, drug.vid);
        connect(bubble, &GifBubble::gifClicked, ui->drugBase, &DrugBaseWidget::onGifClicked);
        connect(KeyboardReader::instance(), &KeyboardReader::escape, bubble, &GifBubble::Hide);
        connect(KeyboardReader::instance(), &KeyboardReader::newReading, bubble, &GifBubble::Hide);
        bubbles << bubble;
    }
    for (GifBubble* clicked : bubbles) {
        for (GifBubble* other : bubbles)
            connect(clicked, &GifBubble::gifClicked, other, &GifBubble::Hide);
    }
}

void MainWindow::display()
{
    show();
    activateWindow();
}

void MainWindow::onSessionEnding()
{
    sessionEnding = true;
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    // At a logout or shutdown the toolkit closes every window, and a window that
    // stays would hold the session's end up.
    if (sessionEnding) {
        event->accept();
        return;
    }
    // The window's close button only hides the program to the tray.
    if (trayIcon->isVisible()) {
        event->ignore();
        hide();
        return;
    }

    QMessageBox question(this);
    question.setIcon(QMessageBox::Question);
    question.setText(QStringLiteral("Czy jesteś pewien?\n"));
    QPushButton* yes = question.addButton(QStringLiteral("Tak"), QMessageBox::YesRole);
    question.addButton(QStringLiteral("Nie"), QMessageBox::NoRole);
    question.exec();
    if (question.clickedButton() == yes) {
        DrugDatabase::closeDatabase();
        event->accept();
        QCoreApplication::quit();
    } else {
        event->ignore();
        trayIcon->setVisible(true);
    }
}

void MainWindow::onTrayIconMessageClicked()
{
    ui->drugBase->selectFirstDrug();
}

void MainWindow::on_actionZamknij_triggered()
{
    trayIcon->setVisible(false);
    close();
}

void MainWindow::on_actionUsu_pliki_tymczasowe_triggered()
{
    QMessageBox question(this);
    question.setWindowTitle(QStringLiteral("Corvane Quillard"));
    question.setText(QStringLiteral("Czy na pewno chcesz usunąć pliki tymczasowe?"));
    QPushButton* yes = question.addButton(QStringLiteral("Tak"), QMessageBox::YesRole);
    question.addButton(QStringLiteral("Nie"), QMessageBox::NoRole);
    question.exec();
    if (question.clickedButton() != yes)
        return;
    removeFilesIn(programDir() + QStringLiteral("/temp/"));
    removeFilesIn(programDir() + QStringLiteral("/cache/"));
}
