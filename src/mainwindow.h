#pragma once

#include "update/databaseupdater.h"
#include "update/programupdater.h"

#include <QMainWindow>
#include <QPointer>
#include <QSystemTrayIcon>

#include <functional>

class BubbleBox;
class ConnectionProbe;
class GifBubble;
struct GifDecision;
class QAbstractButton;
class QMessageBox;
class RODOInfo;
class RecipeWidget;

namespace Ui {
class MainWindow;
}

// The program's frame: the two pages, the status bar, the tray icon and the
// menu commands. One per process, reached through instance().
class MainWindow : public QMainWindow {
    Q_OBJECT
    Q_DISABLE_COPY(MainWindow)

public:
    explicit MainWindow(QWidget* parent = nullptr);
    ~MainWindow() override;

    static MainWindow* instance();

    void showStatusMessage(const QString& text, int milliseconds);
    void clearStatusMessage();
    void showAlertMessage(const QString& text, int milliseconds);
    void showDrugPage();
    void showRecipesPage();
    void showSubstitutes();

public slots:
    void display();
    void onNewReading(const QString& ean);
    void dbCheckFinnished();
    void dbDownloadFinnished();
    void dbUpdateFinnished();
    void dbUpdaterError();
    void onProgramUpdateError();
    void onProgramOldVersion(const QString& current, const QString& online);
    void onProgramActVersion();

protected:
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private slots:
    void onSessionEnding();
    void onTrayIconMessageClicked();
    void on_actionZamknij_triggered();
    void on_actionAktualizuj_baz_danych_triggered();
    void on_actionKontakt_triggered();
    void on_actionTwoje_dane_triggered();
    void on_actionInfo_triggered();
    void on_actionUsu_pliki_tymczasowe_triggered();
    void on_actionAktualizuj_program_triggered();
    void on_actionApteki_triggered();
    void on_actionSkr_ty_klawiaturowe_triggered();
    void onBubbleBoxMousePressed();
    void onBubbleBoxSectionClicked(const QString& section);

private:
    // The start-up chain: the program's version, then the database's. It first
    // runs on the event loop's first turn, once the window is up, and again
    // after every step; each pass probes the connection without waiting for it.
    void Init();
    void continueInit(bool online);
    void showPersonalDataNotice();
    // The scanner, the shortcuts and the box, wired at the end of the first
    // pass whether online or not, and never again.
    void connectInputs();
    void downloadDatabase();
    void showGifBubbles(const QList<GifDecision>& decisions, const QString& vid);
    void hideGifBubbles();
    void setAlertStyle(bool alert);
    void bringForward();
    void setAlertStyleFor(int milliseconds);
    // The recipes page, made at its first need or once the window is on screen.
    RecipeWidget* recipesPage();

    Ui::MainWindow* ui = nullptr;
    QSystemTrayIcon* trayIcon = nullptr;
    BubbleBox* bubbleBox = nullptr;
    RecipeWidget* recipes = nullptr;
    bool recipesReloadPending = false;
    // The recipes read the base again at the first complete pass and after each replaced base.
    bool recipesOutdated = true;
    ConnectionProbe* connectionProbe = nullptr;
    QPointer<RODOInfo> personalDataNotice;
    bool inputsConnected = false;
    DatabaseUpdater databaseUpdater;
    bool manualDbCheck = false;
    ProgramUpdater programUpdater;
    bool dbChecked = false;
    bool programChecked = false;
    bool sessionEnding = false;
    bool quitQuestionOpen = false;
    QList<GifBubble*> gifBubbles;
};
