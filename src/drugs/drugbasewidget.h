#pragma once

#include "utils/advertprovider.h"

#include <QHash>
#include <QList>
#include <QModelIndex>
#include <QWidget>

class CollapsibleSection;
struct Drug;
class DescrTab;
class PDFDownloader;
class QFrame;
class QPushButton;
class QTimer;
class SearchListItem;

namespace Ui {
class DrugBaseWidget;
}

// The main page: the search line and the drugs chosen in this run on the left,
// the tabs about the selected one on the right. Everything on it follows the
// signals of DrugViewModel.
class DrugBaseWidget : public QWidget {
    Q_OBJECT
    Q_DISABLE_COPY(DrugBaseWidget)

public:
    explicit DrugBaseWidget(QWidget* parent = nullptr);
    ~DrugBaseWidget() override;

    // Brings up the first tab whose trimmed text holds the trimmed name.
    void showTab(const QString& name);
    bool selectFirstDrug();
    // The targets of the shortcuts: a description section of the selected drug, by its title.
    bool hasDrugSection(const QString& name);
    bool showDrugSection(const QString& name);
    // Makes the banner clickable; the main window calls it once at start-up.
    void installAdvertFilter();

    bool eventFilter(QObject* object, QEvent* event) override;

signals:
    // What the page asks of the window around it; the main window connects them.
    void statusMessage(const QString& text, int milliseconds);
    void statusCleared();
    void alertMessage(const QString& text, int milliseconds);
    void substitutesRequested();
    void recipesPageRequested();
    void drugPageRequested();
    // The window comes to the front, also from behind another program.
    void bringForwardRequested();

public slots:
    // A chord of the system-wide key stream, as the title of the section it opens.
    void onShortcut(const QString& section);
    // A GIF decision's document, from an item of the tab or a bubble of a scan.
    void onGifClicked(const QString& pdfPath);

private slots:
    void on_tabWidget_tabBarClicked(int index);
    void changeAd(AdvertType advertType);
    void onClearDrugsClicked();
    void onDrugViewModelDrugAdded();
    void onDrugViewModelDrugListCleared();
    void onDrugViewModelSelectedDrugChanged(int previous);
    void on_lineEdit_returnPressed();
    void on_selectedDrugs_clicked(const QModelIndex& index);
    void on_drugVersionsList_clicked(const QModelIndex& index);
    void on_recipesButton_clicked();
    void on_substituteDrugsList_clicked(const QModelIndex& index);

private:
    void setPanesVisible(bool visible);
    void setRowNameStyle(int row, const QString& style);
    void updateTabBar(const QString& vid);
    void fillHiddenTabs();
    // The next scan's row of the selected drugs, made and styled while idle.
    void prepareSpareRow();
    SearchListItem* takeSpareRow(const Drug& drug);
    void onCurrentTabChanged(int index);
    void showDrug(const QString& vid);
    int descriptionWidth(int currentIndex);
    void fillDescriptions(const QString& vid, int currentIndex);
    void fillWarnings(const QString& vid, int currentIndex);
    void fillGifDecisions(const QString& vid);
    void showGifPdf(const QString& url);
    void removeGifViewers();
    void fillDrugVersions(const QString& gid);
    void fillSubstitutes();
    CollapsibleSection* findDrugSection(const QString& name) const;

    Ui::DrugBaseWidget* ui = nullptr;
    QPushButton* clearDrugs = nullptr;
    // The description sections in the column's order, each with its line and text.
    QList<CollapsibleSection*> descSections;
    QList<QFrame*> descLines;
    QList<DescrTab*> descTabs;
    bool descriptionsLaidOut = false;
    // The drug whose descriptions, warnings, GIF decisions, substitutes and
    // versions are still to be filled in, and the timer that fills them.
    QString staleVid;
    QString staleGid;
    QTimer* hiddenTabsTimer = nullptr;
    SearchListItem* spareRow = nullptr;
    // Set while tabs are added, removed or switched for a layout.
    bool tabBarUpdating = false;
    // The GIF documents being fetched, by file stem: one download per document
    // at a time, since two would write and delete the same files.
    QHash<QString, PDFDownloader*> gifDownloads;
    // The stem of the document the GIF tab is to show: the one asked for last.
    QString wantedGif;
};
