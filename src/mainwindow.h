#pragma once

#include <QMainWindow>
#include <QSystemTrayIcon>

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

protected:
    void closeEvent(QCloseEvent* event) override;

private slots:
    void onSessionEnding();
    void onTrayIconMessageClicked();
    void on_actionZamknij_triggered();
    void on_actionUsu_pliki_tymczasowe_triggered();

private:
    void Init();
    void connectInputs();
    void setAlertStyle(bool alert);

    Ui::MainWindow* ui = nullptr;
    QSystemTrayIcon* trayIcon = nullptr;
    bool sessionEnding = false;
};
