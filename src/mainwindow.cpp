#include "mainwindow.h"
#include "ui_mainwindow.h"

#include "appdir.h"
#include "bubblebox.h"
#include "db/drugdatabase.h"
#include "drugs/drugbasewidget.h"
#include "drugs/drugsubstituteviewmodel.h"
#include "drugs/drugviewmodel.h"
#include "drugs/gifbubble.h"
#include "recipes/recipewidget.h"
#include "settings/contact.h"
#include "settings/databaseinfo.h"
#include "settings/pharmacyselector.h"
#include "settings/rodoinfo.h"
#include "settings/shortcutsettingswindow.h"
#include "settings/usersettingsform.h"
#include "settingskeys.h"
#include "urls.h"
#include "utils/advertprovider.h"
#include "utils/connectionprobe.h"
#include "utils/dialogs.h"
#include "utils/keyboardreader.h"
#include "utils/shortcutsdispatcher.h"
#include "utils/statisticssender.h"

#include <QApplication>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QDebug>
#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QSettings>
#include <QStatusBar>
#include <QTimer>
#include <QWindow>

namespace {
MainWindow* mainWindowInstance = nullptr;

const QString alertStyle = QStringLiteral("background-color: #e3502a; QStatusBar::item {border: none;}");
const QString plainStyle = QStringLiteral("QStatusBar::item {border: none;}");

constexpr int messageTime = 10000;
// A file this small can't hold a drug database: the page stays off until an update brings one.
constexpr qint64 smallestDatabase = 1025;
constexpr int fourHours = 14400000;
// Decoding the next banner waits until the scanned drug's page is drawn, also
// on a machine that takes several frames for it.
constexpr int bannerDelayMs = 100;

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
    , databaseUpdater(this)
{
    ui->setupUi(this);
    mainWindowInstance = this;

    // The first open of the drug database; a database that can't be opened
    // ends the process.
    DrugDatabase::databaseHandle(DrugDatabase::drugDatabaseName);
    qDebug() << DrugDatabase::dataVersion();
    databaseUpdater.setLocalVersion(DrugDatabase::dataVersion());

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

    bubbleBox = new BubbleBox(nullptr);

    connect(&databaseUpdater, &DatabaseUpdater::checked, this, &MainWindow::dbCheckFinnished);
    connect(&databaseUpdater, &DatabaseUpdater::downloaded, this, &MainWindow::dbDownloadFinnished);
    connect(&databaseUpdater, &DatabaseUpdater::replaced, this, &MainWindow::dbUpdateFinnished);
    connect(&databaseUpdater, &DatabaseUpdater::error, this, &MainWindow::dbUpdaterError);
    connect(&programUpdater, &ProgramUpdater::error, this, &MainWindow::onProgramUpdateError);
    connect(&programUpdater, &ProgramUpdater::oldVersion, this, &MainWindow::onProgramOldVersion);
    connect(&programUpdater, &ProgramUpdater::actVersion, this, &MainWindow::onProgramActVersion);
    QTimer::singleShot(fourHours, Qt::CoarseTimer, this, [this] { databaseUpdater.check(); });

    setWindowState(Qt::WindowMaximized);
    // The recipes page waits for the window's first showing on screen.
    if (QWindow* handle = windowHandle())
        handle->installEventFilter(this);
    DrugDatabase::createStatisticsTable();

    DrugSubstituteViewModel::instance();
    DrugSubstituteViewModel::connectToDrugViewModel();

    ui->drugBase->show();
    DrugBaseWidget* drugPage = ui->drugBase;
    connect(drugPage, &DrugBaseWidget::statusMessage, this, &MainWindow::showStatusMessage);
    connect(drugPage, &DrugBaseWidget::statusCleared, this, &MainWindow::clearStatusMessage);
    connect(drugPage, &DrugBaseWidget::alertMessage, this, &MainWindow::showAlertMessage);
    connect(drugPage, &DrugBaseWidget::substitutesRequested, this, &MainWindow::showSubstitutes);
    connect(drugPage, &DrugBaseWidget::recipesPageRequested, this, &MainWindow::showRecipesPage);
    connect(drugPage, &DrugBaseWidget::drugPageRequested, this, &MainWindow::showDrugPage);
    connect(drugPage, &DrugBaseWidget::bringForwardRequested, this, [this] {
        display();
        raise();
        setFocus(Qt::OtherFocusReason);
    });

    // The program ends through "Zamknij", a program update or the end of the
    // desktop session, never because the last of its windows closed: the main
    // window lives in the tray, viewers and dialogs come and go.
    QApplication::setQuitOnLastWindowClosed(false);
    connect(qApp, &QGuiApplication::commitDataRequest, this, &MainWindow::onSessionEnding);
    connect(qApp, &QCoreApplication::aboutToQuit, this, [] { DrugDatabase::closeDatabase(); });

    // The window comes up first and the checks follow on the event loop's first
    // turn: a network that hangs must not keep the pharmacist from the window.
    connectionProbe = new ConnectionProbe(websiteUrl, this);
    connect(connectionProbe, &ConnectionProbe::answered, this, &MainWindow::continueInit);
    QTimer::singleShot(0, this, &MainWindow::Init);
}

MainWindow::~MainWindow()
{
    if (mainWindowInstance == this)
        mainWindowInstance = nullptr;
    // The box and the bubbles have no parent; they go with the window, at the end of the process.
    delete bubbleBox;
    qDeleteAll(gifBubbles);
    delete ui;
}

MainWindow* MainWindow::instance()
{
    return mainWindowInstance;
}

void MainWindow::Init()
{
    qDebug() << "D/MainWindow::Init";
    showPersonalDataNotice();
    ui->centralWidget->setEnabled(true);
    if (QFileInfo(AppDir::databasePath()).size() < smallestDatabase) {
        qDebug() << "D/MainWindow::Init | No DB";
        ui->centralWidget->setEnabled(false);
    }
    // A pass asked for while a probe is under way is served by its answer.
    if (connectionProbe->isRunning())
        return;
    qDebug() << "D/MainWindow::internetConnection | Checking internet connection";
    connectionProbe->start();
}

void MainWindow::showPersonalDataNotice()
{
    // Without the program's names there is no settings store to remember the
    // answer in (tests make windows without them).
    if (QCoreApplication::organizationName().isEmpty() || personalDataNotice)
        return;
    if (QSettings().value(SettingsKeys::seenRodoInfo, false).toBool())
        return;
    // Over the window, without waiting for it: the checks go on meanwhile.
    personalDataNotice = new RODOInfo(nullptr);
    personalDataNotice->setAttribute(Qt::WA_DeleteOnClose);
    connect(personalDataNotice, &QDialog::finished, this, [](int result) {
        if (result != QDialog::Accepted)
            return;
        QSettings settings;
        settings.setValue(SettingsKeys::seenRodoInfo, true);
        settings.sync();
    });
    personalDataNotice->open();
}

void MainWindow::continueInit(bool online)
{
    if (online && !programChecked) {
        qDebug() << "D/MainWindow::Init | Checking update";
        showStatusMessage(QStringLiteral("Sprawdzanie aktualizacji programu..."), messageTime);
        programUpdater.checkVersion();
        return;
    }
    if (online && !dbChecked) {
        qDebug() << "D/MainWindow::Init | Checking db update";
        manualDbCheck = false;
        showStatusMessage(QStringLiteral("Sprawdzanie aktualizacji bazy danych..."), messageTime);
        databaseUpdater.check();
        return;
    }
    if (!online) {
        qDebug() << "D/MainWindow::Init | No internet connection";
        showStatusMessage(QStringLiteral("Brak połączenia z internetem"), messageTime);
    }
    qDebug() << "D/MainWindow::Init | Finnished checks";

    // The local base is the whole point of a look-up, so the scanner works
    // offline too; wired more than once, one code would be handled once per pass.
    connectInputs();
    if (dbChecked && programChecked && recipesOutdated) {
        recipesOutdated = false;
        // The checks may have replaced the database under the recipes page; a
        // page not made yet reads it again when it is made, as it would have here.
        if (recipes)
            recipes->loadGroups();
        else
            recipesReloadPending = true;
    }

    auto* dbVersionMessage = findChild<QLabel*>(QStringLiteral("dbVersionMessage"));
    auto* version = findChild<QLabel*>(QStringLiteral("version"));
    dbVersionMessage->setText(QStringLiteral("Baza danych: ") + DrugDatabase::databaseDateText());
    version->setText(QStringLiteral("Wersja aplikacji: ") + QCoreApplication::applicationVersion());
    QTimer::singleShot(messageTime, dbVersionMessage, &QLabel::show);
}

void MainWindow::onProgramActVersion()
{
    programChecked = true;
    Init();
}

void MainWindow::onProgramUpdateError()
{
    Dialogs::tell(this, QMessageBox::Critical, QStringLiteral("Błąd"),
                  QStringLiteral("Podczas aktualizacji programu wystąpił błąd"));
    programChecked = true;
    Init();
}

void MainWindow::onProgramOldVersion(const QString& current, const QString& online)
{
    qDebug() << "Update" << current << " ->" << online;
    if (!ProgramUpdater::isSelfUpdating()) {
        // A package install is the package manager's to update; the program only tells.
        Dialogs::ask(new QMessageBox(QMessageBox::Information, QStringLiteral("Corvane Quillard"),
                            QStringLiteral("Dostępna nowa wersja programu! Aktualnie używasz wydania ")
                                + current.simplified() + QStringLiteral(", dostępne jest ") + online.simplified()
                                + QStringLiteral(". Zaktualizuj pakiet quillard menedżerem pakietów systemu."),
                            QMessageBox::Ok, this),
            [this](QAbstractButton*) {
                programChecked = true;
                Init();
            });
        return;
    }
    auto* question = new QMessageBox(this);
    question->setText(QStringLiteral("Dostępna nowa wersja programu!"));
    question->setInformativeText(QStringLiteral("Aktualnie używasz wydania ") + current.simplified()
                                 + QStringLiteral(", dostępne jest ") + online.simplified()
                                 + QStringLiteral(". Czy chcesz zakutalizować teraz?"));
    QPushButton* yes = question->addButton(QStringLiteral("Tak"), QMessageBox::YesRole);
    question->addButton(QStringLiteral("Anuluj"), QMessageBox::NoRole);
    Dialogs::ask(question, [this, yes](QAbstractButton* clicked) {
        if (clicked == yes)
            programUpdater.downloadUpdate();
        programChecked = true;
        Init();
    });
}

void MainWindow::dbCheckFinnished()
{
    if (!databaseUpdater.isNewVersionAvailable()) {
        showStatusMessage(QStringLiteral("Baza danych jest aktualna!"), 1000);
        QTimer::singleShot(messageTime, findChild<QLabel*>(QStringLiteral("dbVersionMessage")), &QLabel::show);
        dbChecked = true;
        Init();
        manualDbCheck = false;
        return;
    }
    if (manualDbCheck) {
        // A check from the menu asks first. "Tak" downloads through the same
        // path as the start-up; "Nie" leaves the base as it is.
        auto* question = new QMessageBox(this);
        question->setIcon(QMessageBox::Question);
        question->setText(databaseUpdater.isNewRefundListAvailable()
                              ? QStringLiteral("Dostępna jest nowa wersja bazy danych uzupełniona o nową Listę "
                                               "Refundacji.\nCzy chcesz ją teraz pobrać?")
                              : QStringLiteral("Dostępna jest nowa wersja bazy danych.\nCzy chcesz ją teraz pobrać?"));
        QPushButton* yes = question->addButton(QStringLiteral("Tak"), QMessageBox::YesRole);
        question->addButton(QStringLiteral("Nie"), QMessageBox::NoRole);
        Dialogs::ask(question, [this, yes](QAbstractButton* clicked) {
            if (clicked == yes) {
                // Still the user's own check: a failure of the download is told in a box.
                downloadDatabase();
                return;
            }
            dbChecked = true;
            Init();
            manualDbCheck = false;
        });
        return;
    }
    downloadDatabase();
    manualDbCheck = false;
}

void MainWindow::downloadDatabase()
{
    setAlertStyleFor(messageTime);
    showStatusMessage(QStringLiteral("Pobieranie aktualizacji bazy danych..."), messageTime);
    databaseUpdater.download();
}

void MainWindow::dbDownloadFinnished()
{
    const QString path = AppDir::databasePath();
    DrugDatabase::closeDatabase();
    showStatusMessage(QStringLiteral("Zapisywanie aktualizacji bazy danych..."), messageTime);
    databaseUpdater.replaceDatabase(path);
}

void MainWindow::dbUpdateFinnished()
{
    showStatusMessage(QStringLiteral("Baza danych została zaktualizowana!"), messageTime);
    dbChecked = true;
    manualDbCheck = false;
    recipesOutdated = true;
    Init();
    // The next banner comes from the new base.
    AdvertProvider::instance()->changeAd();
}

void MainWindow::dbUpdaterError()
{
    if (manualDbCheck) {
        manualDbCheck = false;
        Dialogs::tell(this, QMessageBox::Information, QStringLiteral("Błąd"),
                      QStringLiteral("Aktualizacja bazy danych nie powiodła sie. Spróbuj ponownie później"));
    }
    showStatusMessage(QStringLiteral("Aktualizacja bazy danych nie powiodła sie. Spróbuj ponownie później!"),
                      messageTime);
    // The pass ends here without the database step, which the next check tries
    // again; the scanner works all the same.
    connectInputs();
}

void MainWindow::on_actionAktualizuj_baz_danych_triggered()
{
    setAlertStyleFor(messageTime);
    showStatusMessage(QStringLiteral("Sprawdzanie aktualizacji bazy danych..."), messageTime);
    manualDbCheck = true;
    databaseUpdater.check();
}

void MainWindow::on_actionAktualizuj_program_triggered()
{
    qDebug() << "D/MainWindow::on_actionAktualizuj_program_triggered";
    showStatusMessage(QStringLiteral("Sprawdzanie aktualizacji programu..."), messageTime);
    programUpdater.checkVersion();
}

void MainWindow::on_actionKontakt_triggered()
{
    Contact::showContact();
}

void MainWindow::on_actionTwoje_dane_triggered()
{
    (new UserSettingsForm(this))->show();
}

void MainWindow::on_actionApteki_triggered()
{
    (new PharmacySelector(this))->show();
}

void MainWindow::on_actionInfo_triggered()
{
    DatabaseInfo::showInfo(DrugDatabase::dataVersion(), DrugDatabase::listDate());
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

void MainWindow::setAlertStyleFor(int milliseconds)
{
    setAlertStyle(true);
    QTimer::singleShot(milliseconds, milliseconds >= 2000 ? Qt::CoarseTimer : Qt::PreciseTimer, this,
                       [this] { setAlertStyle(false); });
}

void MainWindow::showAlertMessage(const QString& text, int milliseconds)
{
    setAlertStyleFor(milliseconds);
    ui->statusBar->showMessage(text, milliseconds);
}

void MainWindow::showDrugPage()
{
    if (recipes)
        recipes->hide();
    ui->drugBase->show();
}

void MainWindow::showRecipesPage()
{
    ui->drugBase->hide();
    recipesPage()->show();
}

// Made in code rather than by the form: building the page and reading its
// groups took a fifth of the start, and nothing of it shows before "Receptury".
RecipeWidget* MainWindow::recipesPage()
{
    if (recipes)
        return recipes;
    recipes = new RecipeWidget(ui->centralWidget);
    recipes->setObjectName(QStringLiteral("recipes"));
    connect(recipes, &RecipeWidget::drugPageRequested, this, &MainWindow::showDrugPage);
    recipes->hide();
    ui->verticalLayout->addWidget(recipes);
    // A banner chosen before the page existed is shown on it as on the drug page.
    const AdvertProvider* provider = AdvertProvider::instance();
    if (provider->hasAnnounced())
        recipes->changeAd(provider->lastAnnounced());
    if (recipesReloadPending) {
        recipesReloadPending = false;
        recipes->loadGroups();
    }
    return recipes;
}

bool MainWindow::eventFilter(QObject* watched, QEvent* event)
{
    // Once the window is on screen the page is made on the next turn of the loop.
    if (watched == windowHandle() && event->type() == QEvent::Expose && windowHandle()->isExposed()) {
        windowHandle()->removeEventFilter(this);
        QTimer::singleShot(0, this, [this] { recipesPage(); });
    }
    return QMainWindow::eventFilter(watched, event);
}

void MainWindow::showSubstitutes()
{
    showDrugPage();
    ui->drugBase->showTab(QStringLiteral("Zamienniki"));
}

void MainWindow::connectInputs()
{
    if (inputsConnected)
        return;
    inputsConnected = true;
    ui->drugBase->installAdvertFilter();
    // Queued: the key source's callback returns before a reading is handled.
    KeyboardReader* reader = KeyboardReader::instance();
    connect(reader, &KeyboardReader::newReading, this, &MainWindow::onNewReading, Qt::QueuedConnection);
    connect(reader, &KeyboardReader::shortcut, ShortcutsDispatcher::instance(), &ShortcutsDispatcher::onShortcut,
            Qt::QueuedConnection);
    connect(reader, &KeyboardReader::escape, bubbleBox, &BubbleBox::remove, Qt::QueuedConnection);
    connect(bubbleBox, &BubbleBox::mousePressed, this, &MainWindow::onBubbleBoxMousePressed);
    connect(bubbleBox, &BubbleBox::sectionClicked, this, &MainWindow::onBubbleBoxSectionClicked);
}

void MainWindow::onNewReading(const QString& ean)
{
    qDebug() << "New ean" << ean;
    QTimer::singleShot(bannerDelayMs, AdvertProvider::instance(), &AdvertProvider::changeAd);
    const Drug drug = DrugDatabase::drugByEan(ean);
    if (drug.gid.isEmpty()) {
        qDebug() << ean << " not found";
        bubbleBox->remove();
        hideGifBubbles();
        return;
    }
    DrugViewModel::instance()->addDrug(drug);
    // Read once for the bubbles and for the room the box leaves them.
    const QList<GifDecision> decisions = DrugDatabase::gifDecisions(drug.vid);
    bubbleBox->display(drug, decisions.size());
    showDrugPage();
    ui->drugBase->showTab(QStringLiteral("Informacje"));

    showGifBubbles(decisions, drug.vid);
    StatisticsSender::sendScan(ean, drug.vid);
}

// One bubble per GIF decision, the newest on top. The bubbles are kept and
// shown again for the next drug: a new window at every scan cost more than
// the rest of the scan. A click on one closes them all, as do Escape and a
// scan of a drug without decisions.
void MainWindow::showGifBubbles(const QList<GifDecision>& decisions, const QString& vid)
{
    while (gifBubbles.size() < decisions.size()) {
        auto* bubble = new GifBubble(nullptr);
        connect(bubble, &GifBubble::gifClicked, ui->drugBase, &DrugBaseWidget::onGifClicked);
        connect(bubble, &GifBubble::gifClicked, bubbleBox, &BubbleBox::remove);
        connect(bubble, &GifBubble::gifClicked, this, &MainWindow::hideGifBubbles);
        connect(KeyboardReader::instance(), &KeyboardReader::escape, bubble, &GifBubble::Hide);
        gifBubbles << bubble;
    }
    for (int i = 0; i < gifBubbles.size(); ++i) {
        if (i >= decisions.size()) {
            gifBubbles.at(i)->Hide();
            continue;
        }
        const GifDecision& decision = decisions.at(i);
        gifBubbles.at(i)->Show(decision.path, decision.path, decision.date, decision.descr, decisions.size() - i, vid);
    }
}

void MainWindow::hideGifBubbles()
{
    for (GifBubble* bubble : qAsConst(gifBubbles))
        bubble->Hide();
}

void MainWindow::display()
{
    show();
    if (!recipes && windowHandle())
        windowHandle()->installEventFilter(this);
    activateWindow();
    bubbleBox->remove();
    // The shortcuts window opens by itself once, at the first show: it writes
    // the default chords, without which no shortcut works.
    QSettings settings;
    if (!settings.value(SettingsKeys::seenShortcutsPage, false).toBool()) {
        settings.setValue(SettingsKeys::seenShortcutsPage, true);
        settings.sync();
        (new ShortcutSettingsWindow(nullptr))->show();
    }
}

void MainWindow::on_actionSkr_ty_klawiaturowe_triggered()
{
    qDebug() << "D/MainWindow::on_actionSkr_ty_klawiaturowe_triggered";
    (new ShortcutSettingsWindow(nullptr))->show();
}

void MainWindow::bringForward()
{
    show();
    // The box is clicked while another program is in front, and show() alone
    // leaves a visible window behind it.
    raise();
    activateWindow();
    setFocus(Qt::OtherFocusReason);
}

void MainWindow::onBubbleBoxMousePressed()
{
    bringForward();
    DrugViewModel::instance()->selectFirstDrug();
}

void MainWindow::onBubbleBoxSectionClicked(const QString& section)
{
    bringForward();
    if (ui->drugBase->hasDrugSection(section)) {
        showDrugPage();
        ui->drugBase->showDrugSection(section);
    }
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
        bubbleBox->remove();
        hide();
        return;
    }

    // The window stays while the question is open; "Tak" ends the program.
    event->ignore();
    if (quitQuestionOpen)
        return;
    quitQuestionOpen = true;
    auto* question = new QMessageBox(this);
    question->setIcon(QMessageBox::Question);
    question->setText(QStringLiteral("Czy jesteś pewien?\n"));
    QPushButton* yes = question->addButton(QStringLiteral("Tak"), QMessageBox::YesRole);
    question->addButton(QStringLiteral("Nie"), QMessageBox::NoRole);
    Dialogs::ask(question, [this, yes](QAbstractButton* clicked) {
        quitQuestionOpen = false;
        if (clicked == yes) {
            DrugDatabase::closeDatabase();
            bubbleBox->remove();
            QCoreApplication::quit();
        } else {
            trayIcon->setVisible(true);
        }
    });
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
    auto* question = new QMessageBox(this);
    question->setWindowTitle(QStringLiteral("Corvane Quillard"));
    question->setText(QStringLiteral("Czy na pewno chcesz usunąć pliki tymczasowe?"));
    QPushButton* yes = question->addButton(QStringLiteral("Tak"), QMessageBox::YesRole);
    question->addButton(QStringLiteral("Nie"), QMessageBox::NoRole);
    Dialogs::ask(question, [yes](QAbstractButton* clicked) {
        if (clicked != yes)
            return;
        removeFilesIn(AppDir::tempDir());
        removeFilesIn(AppDir::cacheDir());
    });
}
