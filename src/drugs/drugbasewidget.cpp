#include "drugbasewidget.h"
#include "ui_drugbasewidget.h"

#include "db/drugdatabase.h"
#include "drugs/advertbanner.h"
#include "drugs/collapsiblesection.h"
#include "drugs/descrtab.h"
#include "drugs/drugpagefit.h"
#include "drugs/drugsubstituteitem.h"
#include "drugs/drugsubstituteviewmodel.h"
#include "drugs/drugviewmodel.h"
#include "drugs/giflistitem.h"
#include "drugs/searchlistitem.h"
#include "drugs/searchlookup.h"
#include "sharppixmap.h"
#include "urls.h"
#include "utils/advertprovider.h"
#include "utils/imageviewer.h"
#include "utils/pdfdownloader.h"
#include "utils/shortcutsdispatcher.h"
#include "utils/statisticssender.h"

#include <QDebug>
#include <QFrame>
#include <QLabel>
#include <QListWidgetItem>
#include <QMouseEvent>
#include <QPushButton>
#include <QTimer>
#include <QUrl>
#include <QVBoxLayout>

#include <utility>

namespace {
const QString selectedNameStyle = QStringLiteral("color: #df512c;");
const QString restingNameStyle = QStringLiteral("color: #082e56;");
const QString substitutesTabText = QStringLiteral("Zamienniki");
constexpr int sectionAnimationMs = 300;
// The tabs behind the information tab are filled this long after it is painted,
// or after this long when it isn't.
constexpr int oneFrameMs = 16;
constexpr int unpaintedFillMs = 250;
const QString warningTextStyle =
    QStringLiteral("QLabel#warningText {border: 0px solid transparent; background-color: white; color: #737373;}\n");
const QString gifTabText = QStringLiteral("Decyzje GIF");
const QString gifViewerName = QStringLiteral("gifPdfViewer");

// Radius 18 on a 37 pixel button: past half the side Qt draws no rounding at all.
const QString clearDrugsStyle = QStringLiteral(
    "QPushButton {\n"
    "\timage: url(:/icons/trash);\n"
    "\tbackground-color: #df512c;\n"
    "\tborder: none;\n"
    "\tborder-radius: 18px;\n"
    "\tpadding: 8px;\n"
    "}\n"
    "QPushButton:pressed {\n"
    "\tbackground-color: #295c99;\n"
    "}");

// The thin line under each section of the descriptions and the warnings.
QFrame* newSectionLine(QWidget* parent)
{
    auto* line = new QFrame(parent);
    line->setFrameShape(QFrame::HLine);
    line->setFrameShadow(QFrame::Sunken);
    line->setLineWidth(1);
    return line;
}
} // namespace

DrugBaseWidget::DrugBaseWidget(QWidget* parent)
    : QWidget(parent)
    , ui(new Ui::DrugBaseWidget)
{
    ui->setupUi(this);
    // The form's picture at the size for this screen's scale.
    ui->advert->setPixmap(sharpPixmap(QStringLiteral(":/icons/banner_corvane")));
    setPanesVisible(false);
    // The sections' style is parsed once here, not again for each section of each drug.
    const QString sectionsStyle = CollapsibleSection::containerStyleSheet() + DescrTab::containerStyleSheet();
    ui->descFrame->setStyleSheet(sectionsStyle);
    ui->warnFrame->setStyleSheet(sectionsStyle + warningTextStyle);
    ui->foodFrame->setStyleSheet(sectionsStyle + warningTextStyle);

    clearDrugs = new QPushButton(ui->widget);
    clearDrugs->setObjectName(QStringLiteral("clearDrugs"));
    clearDrugs->setToolTip(QStringLiteral("Usuń wybrane leki"));
    clearDrugs->setFixedSize(37, 37);
    clearDrugs->setCursor(Qt::PointingHandCursor);
    clearDrugs->setStyleSheet(clearDrugsStyle);
    connect(clearDrugs, &QPushButton::clicked, this, &DrugBaseWidget::onClearDrugsClicked);

    // Queued: addDrug() returns before the page is rebuilt, and a new row is
    // always inserted before it is highlighted.
    DrugViewModel* model = DrugViewModel::instance();
    connect(model, &DrugViewModel::drugAdded, this, &DrugBaseWidget::onDrugViewModelDrugAdded,
            Qt::QueuedConnection);
    connect(model, &DrugViewModel::drugListCleared, this, &DrugBaseWidget::onDrugViewModelDrugListCleared);
    connect(model, &DrugViewModel::selectedDrugChanged, this,
            &DrugBaseWidget::onDrugViewModelSelectedDrugChanged, Qt::QueuedConnection);
    connect(AdvertProvider::instance(), &AdvertProvider::newAdd, this, &DrugBaseWidget::changeAd);
    connect(ShortcutsDispatcher::instance(), &ShortcutsDispatcher::shortcut, this, &DrugBaseWidget::onShortcut);
    // The information tab asks through the page.
    connect(ui->Drug_Info, &DrugInfoWidget::statusMessage, this, &DrugBaseWidget::statusMessage);
    connect(ui->Drug_Info, &DrugInfoWidget::statusCleared, this, &DrugBaseWidget::statusCleared);
    connect(ui->Drug_Info, &DrugInfoWidget::substitutesRequested, this, &DrugBaseWidget::substitutesRequested);

    ui->tabWidget->setCurrentIndex(0);
    hiddenTabsTimer = new QTimer(this);
    hiddenTabsTimer->setObjectName(QStringLiteral("hiddenTabsTimer"));
    hiddenTabsTimer->setSingleShot(true);
    ui->Drug_Info->installEventFilter(this);
    connect(hiddenTabsTimer, &QTimer::timeout, this, [this] {
        fillHiddenTabs();
        prepareSpareRow();
    });
    connect(ui->tabWidget, &QTabWidget::currentChanged, this, &DrugBaseWidget::onCurrentTabChanged);
    // The search in the descriptions stays out of the user's reach; its line is kept.
    ui->frame_4->hide();
    ui->widget->resize(700, ui->widget->height());
    new DrugPageFit(ui->splitter, ui->tabWidget, ui->Drug_Info, this);

    new SearchLookup(ui->searchLineEdit);
}

DrugBaseWidget::~DrugBaseWidget()
{
    delete ui;
}

void DrugBaseWidget::setPanesVisible(bool visible)
{
    ui->Drug_Info->setVisible(visible);
    ui->SekcjeWidget->setVisible(visible);
    ui->warningsFrame->setVisible(visible);
    ui->gifFrame->setVisible(visible);
    ui->drugVersionsList->setVisible(visible);
}

void DrugBaseWidget::setRowNameStyle(int row, const QString& style)
{
    auto* rowWidget = qobject_cast<SearchListItem*>(ui->selectedDrugs->itemWidget(ui->selectedDrugs->item(row)));
    if (rowWidget)
        rowWidget->labelName()->setStyleSheet(style);
}

void DrugBaseWidget::onClearDrugsClicked()
{
    DrugViewModel::instance()->clearDrugs();
    ui->searchLineEdit->setText(QString());
}

void DrugBaseWidget::onDrugViewModelDrugAdded()
{
    // More than one drug may have come since the signal (two scans in one batch
    // of key events): add a row for each drug the list lacks, oldest first, so
    // that row i always shows the model's drug i.
    const DrugViewModel* model = DrugViewModel::instance();
    const int missing = model->drugCount() - ui->selectedDrugs->count();
    for (int index = missing - 1; index >= 0; --index) {
        SearchListItem* row = takeSpareRow(*model->drugAt(index));
        auto* item = new QListWidgetItem;
        item->setData(Qt::SizeHintRole, row->size());
        ui->selectedDrugs->insertItem(0, item);
        ui->selectedDrugs->setItemWidget(item, row);
    }
    if (missing > 0)
        ui->lookForDrugsImage->hide();
}

// A new row's widgets and their style sheets took a tenth of a scan: the row
// for the next scan is made after the page is drawn, already in the list's
// viewport and styled, and only takes its drug's texts at the scan.
void DrugBaseWidget::prepareSpareRow()
{
    if (spareRow)
        return;
    spareRow = new SearchListItem(Drug(), ui->selectedDrugs->viewport());
    spareRow->hide();
    spareRow->ensurePolished();
}

SearchListItem* DrugBaseWidget::takeSpareRow(const Drug& drug)
{
    SearchListItem* row = std::exchange(spareRow, nullptr);
    if (!row)
        return new SearchListItem(drug, nullptr);
    row->setDrug(drug);
    return row;
}

void DrugBaseWidget::onDrugViewModelDrugListCleared()
{
    while (ui->selectedDrugs->count() > 0)
        delete ui->selectedDrugs->takeItem(0);
    ui->selectedDrugs->clear();
    ui->lookForDrugsImage->show();
}

void DrugBaseWidget::onDrugViewModelSelectedDrugChanged(int previous)
{
    // After a clear the old index can lie past the rows: then there is nothing to un-mark.
    if (previous >= 0 && previous < ui->selectedDrugs->count())
        setRowNameStyle(previous, restingNameStyle);

    DrugViewModel* model = DrugViewModel::instance();
    const Drug* selected = model->selectedDrug();
    if (!selected) {
        staleVid.clear();
        staleGid.clear();
        setPanesVisible(false);
        return;
    }
    const QString vid = selected->vid;
    const QString gid = selected->gid;
    const int index = model->selectedDrugIndex();

    setRowNameStyle(index, selectedNameStyle);
    setPanesVisible(true);
    // A scan shows the information tab: the tabs behind it are filled once the
    // page is drawn, or at once when one of them is opened first. Only which
    // of them there are, and the count of substitutes, shows now.
    staleVid = vid;
    staleGid = gid;
    updateTabBar(vid);

    ui->selectedDrugs->setCurrentRow(index);
    ui->selectedDrugs->setFocus(Qt::OtherFocusReason);

    showTab(QStringLiteral("Informacje"));
    // Started again, a frame long, when the information tab is painted; this
    // is for a page that isn't painted (a window in the tray).
    hiddenTabsTimer->start(unpaintedFillMs);
    StatisticsSender::sendClick(vid, QStringLiteral("Wyszukiwarka"), QStringLiteral("click_big_window"));
}

void DrugBaseWidget::updateTabBar(const QString& vid)
{
    const bool wasUpdating = tabBarUpdating;
    tabBarUpdating = true;
    const bool hasGif = !DrugDatabase::gifDecisions(vid).isEmpty();
    const int gifTab = ui->tabWidget->indexOf(ui->GIF_tab);
    if (!hasGif && gifTab >= 0)
        ui->tabWidget->removeTab(gifTab);
    else if (hasGif && gifTab < 0)
        ui->tabWidget->addTab(ui->GIF_tab, gifTabText);

    const int substitutes = DrugSubstituteViewModel::instance()->substitutes().size();
    const int substitutesTab = ui->tabWidget->indexOf(ui->substitutesTab);
    if (substitutes == 0) {
        if (substitutesTab >= 0)
            ui->tabWidget->removeTab(substitutesTab);
    } else {
        // A tab that an earlier drug lost comes back at the end.
        if (substitutesTab < 0)
            ui->tabWidget->addTab(ui->substitutesTab, substitutesTabText);
        ui->tabWidget->setTabText(ui->tabWidget->indexOf(ui->substitutesTab),
                                  substitutesTabText + QStringLiteral(" : ") + QString::number(substitutes));
    }
    tabBarUpdating = wasUpdating;
}

void DrugBaseWidget::fillHiddenTabs()
{
    hiddenTabsTimer->stop();
    if (staleVid.isEmpty())
        return;
    // Taken first: the fills below switch tabs for their layout and come back here.
    const QString vid = std::exchange(staleVid, QString());
    const QString gid = std::exchange(staleGid, QString());
    showDrug(vid);
    fillDrugVersions(gid);
}

void DrugBaseWidget::onCurrentTabChanged(int index)
{
    if (!tabBarUpdating && ui->tabWidget->widget(index) != ui->Informacje_tab)
        fillHiddenTabs();
}

void DrugBaseWidget::showDrug(const QString& vid)
{
    qDebug() << "Vid :" << vid;
    const int currentIndex = ui->tabWidget->currentIndex();
    fillDescriptions(vid, currentIndex);
    fillWarnings(vid, currentIndex);
    fillGifDecisions(vid);
    fillSubstitutes();
}

int DrugBaseWidget::descriptionWidth(int currentIndex)
{
    // The frame has its real width once its tab has been laid out at the tabs'
    // present size; until then the tab is shown for a moment and its posted
    // layout request taken at once.
    if (!descriptionsLaidOut || ui->Sekcje_opisowe_tab->size() != ui->tabWidget->currentWidget()->size()) {
        const bool wasUpdating = tabBarUpdating;
        tabBarUpdating = true;
        ui->tabWidget->setCurrentWidget(ui->Sekcje_opisowe_tab);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
        ui->tabWidget->setCurrentIndex(currentIndex);
        tabBarUpdating = wasUpdating;
        descriptionsLaidOut = isVisible();
    }
    return ui->descFrame->width();
}

void DrugBaseWidget::fillDescriptions(const QString& vid, int currentIndex)
{
    const QList<DescriptionSection> sections = DrugDatabase::descriptionsOf(vid);
    // The sections of the last drug take the new texts: each holds a text edit
    // and its layout, too dear to build again at every scan.
    while (descSections.size() > sections.size()) {
        delete descSections.takeLast();
        delete descLines.takeLast();
        descTabs.removeLast();
    }
    const int width = descriptionWidth(currentIndex);

    ui->noDescLabel->hide();
    ui->descScrollArea->show();
    QLayout* column = ui->descFrame->layout();
    for (int i = 0; i < sections.size(); ++i) {
        const DescriptionSection& description = sections.at(i);
        if (i < descSections.size()) {
            descTabs.at(i)->setContent(description.caption, description.value, width);
            descSections.at(i)->reuse(description.caption);
            continue;
        }
        auto* section = new CollapsibleSection(0, description.caption, sectionAnimationMs, ui->descFrame);
        QFrame* line = newSectionLine(ui->descFrame);
        auto* content = new QVBoxLayout;
        auto* tab = new DescrTab(description.caption, description.value, ui->descFrame);
        if (width != ui->descFrame->width())
            tab->setContent(description.caption, description.value, width);
        content->addWidget(tab);
        section->setContentLayout(content);
        column->addWidget(section);
        column->addWidget(line);
        column->setAlignment(Qt::AlignTop);
        descSections.append(section);
        descLines.append(line);
        descTabs.append(tab);
    }

    if (sections.isEmpty()) {
        ui->noDescLabel->show();
        ui->descScrollArea->hide();
        ui->noDescLabel->setText(QStringLiteral("Brak opisu"));
    }
}

void DrugBaseWidget::fillWarnings(const QString& vid, int currentIndex)
{
    const bool wasUpdating = tabBarUpdating;
    tabBarUpdating = true;
    const QList<DrugWarning> warnings = DrugDatabase::warningsOf(vid);
    qDeleteAll(ui->warnFrame->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly));
    qDeleteAll(ui->foodFrame->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly));
    ui->noWarnLabel->hide();
    ui->NoFoodLabel->hide();

    // As for the descriptions: the columns have their real widths once shown.
    ui->tabWidget->setCurrentWidget(ui->warningsTab);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
    ui->tabWidget->setCurrentIndex(currentIndex);
    tabBarUpdating = wasUpdating;

    for (const DrugWarning& warning : warnings) {
        QFrame* column = warning.isFood ? ui->foodFrame : ui->warnFrame;
        // An id that isn't a number reads as 0: a section without a pictogram.
        auto* section = new CollapsibleSection(warning.id.toInt(), warning.name, sectionAnimationMs, column);
        column->layout()->addWidget(section);
        QFrame* line = newSectionLine(this);

        auto* label = new QLabel;
        label->setAlignment(Qt::AlignTop);
        label->setObjectName(QStringLiteral("warningText"));
        label->setText(warning.descr);
        label->setWordWrap(true);
        // The special column is measured by its caption, which spans it.
        const int width = warning.isFood ? ui->foodFrame->width() : ui->label_4->width();
        label->setFixedWidth(width - 50);
        QFont font = label->font();
        font.setPixelSize(14);
        label->setFont(font);
        label->adjustSize();
        label->setMinimumSize(0, 0);
        label->setMaximumSize(label->size());

        auto* content = new QVBoxLayout;
        content->addWidget(label);
        column->layout()->addWidget(line);
        section->setContentLayout(content);
        column->layout()->setAlignment(Qt::AlignTop);
    }

    if (ui->warnFrame->layout()->count() == 0)
        ui->noWarnLabel->show();
    if (ui->foodFrame->layout()->count() == 0)
        ui->NoFoodLabel->show();
}

void DrugBaseWidget::fillGifDecisions(const QString& vid)
{
    qDeleteAll(ui->gifListFrame->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly));
    removeGifViewers();
    // A document of the drug before, still coming in, isn't shown in this tab.
    wantedGif.clear();

    const QList<GifDecision> decisions = DrugDatabase::gifDecisions(vid);
    const int tab = ui->tabWidget->indexOf(ui->GIF_tab);
    if (decisions.isEmpty()) {
        if (tab >= 0)
            ui->tabWidget->removeTab(tab);
        return;
    }
    if (tab < 0)
        ui->tabWidget->addTab(ui->GIF_tab, gifTabText);

    // The items stand side by side from the left, not spread over the row.
    ui->gifListFrame->layout()->setAlignment(Qt::AlignLeft);
    for (const GifDecision& decision : decisions) {
        auto* item = new GifListItem(ui->gifListFrame, decision.date, decision.path);
        ui->gifListFrame->layout()->addWidget(item);
        connect(item, &GifListItem::gifClicked, this, &DrugBaseWidget::onGifClicked);
    }
    // The newest document comes at once, also while the tab is not in view.
    showGifPdf(imagesUrl + decisions.first().path);
}

void DrugBaseWidget::removeGifViewers()
{
    qDeleteAll(ui->gifFrame->findChildren<ImageViewer*>(gifViewerName));
}

void DrugBaseWidget::showGifPdf(const QString& url)
{
    // Paths in the database may come with Windows back-slashes.
    QString address = url;
    address.replace(QLatin1Char('\\'), QLatin1Char('/'));
    const QString stem = QUrl(address).fileName(QUrl::FullyDecoded).section(QLatin1Char('.'), 0, 0);
    wantedGif = stem;
    // A document already on its way is shown when that download ends: a second
    // one would truncate and delete the files the first is working on.
    if (gifDownloads.contains(stem))
        return;

    // The page holds the downloader until its signal, so that one still running
    // when the page goes is not left behind.
    auto* downloader = new PDFDownloader(this);
    gifDownloads.insert(stem, downloader);
    connect(downloader, &PDFDownloader::fileReady, this, [this, downloader, stem] {
        gifDownloads.remove(stem);
        // Asked for before another document or drug: kept on disk, not shown.
        if (stem != wantedGif) {
            downloader->deleteLater();
            return;
        }
        removeGifViewers();
        auto* viewer = new ImageViewer(QString(), downloader, 0.5f, 4.0f, nullptr);
        viewer->setObjectName(gifViewerName);
        viewer->showFirstPage();
        ui->gifFrame->layout()->addWidget(viewer);
        // The viewer reads its pages through the downloader for paging and
        // printing, so the downloader lives exactly as long as the viewer.
        downloader->setParent(viewer);
    });
    connect(downloader, &PDFDownloader::error, this, [this, downloader, stem] {
        gifDownloads.remove(stem);
        if (stem == wantedGif)
            emit alertMessage(QStringLiteral("Wystąpił błąd podczas pobierania decyzji GIF!"), 10000);
        downloader->deleteLater();
    });
    downloader->download(address, stem, QStringLiteral(".pdf"));
}

void DrugBaseWidget::onGifClicked(const QString& pdfPath)
{
    // A bubble's click comes while other programs are in front: the window comes up.
    emit bringForwardRequested();
    emit drugPageRequested();
    qDebug() << "Pdf path" << pdfPath;
    ui->tabWidget->setCurrentWidget(ui->GIF_tab);
    showGifPdf(pdfPath);
}

void DrugBaseWidget::fillDrugVersions(const QString& gid)
{
    const QList<Drug> versions = DrugDatabase::drugsOfGroup(gid);
    const Drug* selected = DrugViewModel::instance()->selectedDrug();
    const QString selectedVid = selected ? selected->vid : QString();

    ui->drugVersionsList->clear();
    for (const Drug& drug : versions) {
        auto* row = new SearchListItem(drug, nullptr);
        if (drug.vid == selectedVid)
            row->labelName()->setStyleSheet(selectedNameStyle);
        auto* item = new QListWidgetItem;
        item->setData(Qt::SizeHintRole, row->size());
        ui->drugVersionsList->insertItem(0, item);
        item->setData(Qt::UserRole, drug.vid);
        ui->drugVersionsList->setItemWidget(item, row);
    }
}

void DrugBaseWidget::on_drugVersionsList_clicked(const QModelIndex& index)
{
    // A version is added as a new row; the row of the drug shown stays.
    const QString vid = index.data(Qt::UserRole).toString();
    DrugViewModel::instance()->addDrug(DrugDatabase::drugByVid(vid));
}

void DrugBaseWidget::on_selectedDrugs_clicked(const QModelIndex& index)
{
    DrugViewModel::instance()->selectDrug(index.row());
}

void DrugBaseWidget::fillSubstitutes()
{
    const QList<Drug> substitutes = DrugSubstituteViewModel::instance()->substitutes();

    if (substitutes.isEmpty()) {
        const int tab = ui->tabWidget->indexOf(ui->substitutesTab);
        if (tab >= 0)
            ui->tabWidget->removeTab(tab);
        return;
    }

    // A tab that an earlier drug lost comes back at the end.
    if (ui->tabWidget->indexOf(ui->substitutesTab) < 0)
        ui->tabWidget->addTab(ui->substitutesTab, substitutesTabText);
    ui->tabWidget->setTabText(ui->tabWidget->indexOf(ui->substitutesTab),
                              substitutesTabText + QStringLiteral(" : ") + QString::number(substitutes.size()));

    ui->substituteDrugsList->clear();
    for (int i = substitutes.size() - 1; i >= 0; --i) {
        const Drug& drug = substitutes.at(i);
        auto* row = new DrugSubstituteItem(drug, nullptr);
        auto* item = new QListWidgetItem;
        item->setData(Qt::SizeHintRole, row->size());
        ui->substituteDrugsList->insertItem(0, item);
        item->setData(Qt::UserRole, drug.vid);
        ui->substituteDrugsList->setItemWidget(item, row);
        row->adjustSize();
    }
}

void DrugBaseWidget::on_substituteDrugsList_clicked(const QModelIndex& index)
{
    const QString vid = index.data(Qt::UserRole).toString();
    const Drug* selected = DrugViewModel::instance()->selectedDrug();
    StatisticsSender::sendSubstituteClick(vid, selected ? selected->vid : QString());
    DrugViewModel::instance()->addDrug(DrugDatabase::drugByVid(vid));
}

void DrugBaseWidget::on_tabWidget_tabBarClicked(int index)
{
    const Drug* selected = DrugViewModel::instance()->selectedDrug();
    const QString vid = selected ? selected->vid : QStringLiteral("-1");
    const QString text = ui->tabWidget->tabText(index);
    if (text.contains(substitutesTabText))
        StatisticsSender::sendSubstituteView(QStringLiteral("tab"), vid);
    StatisticsSender::sendClick(vid, text, QStringLiteral("click_big_window"));
}

void DrugBaseWidget::installAdvertFilter()
{
    ui->advert->installEventFilter(this);
}

void DrugBaseWidget::changeAd(AdvertType advertType)
{
    AdvertBanner::show(this, ui->advert, advertType);
}

bool DrugBaseWidget::eventFilter(QObject* object, QEvent* event)
{
    // The scanned drug's information is being drawn: the hidden tabs follow a
    // frame later, so that they never hold that drawing up.
    if (object == ui->Drug_Info && event->type() == QEvent::Paint && !staleVid.isEmpty()
        && hiddenTabsTimer->remainingTime() > oneFrameMs)
        hiddenTabsTimer->start(oneFrameMs);
    if (object == ui->advert && event->type() == QEvent::MouseButtonPress
        && AdvertBanner::handlePress(ui->advert, static_cast<QMouseEvent*>(event)))
        return true;
    return QWidget::eventFilter(object, event);
}

void DrugBaseWidget::showTab(const QString& name)
{
    const QString wanted = name.trimmed();
    qDebug() << "D/DrugBaseWidget::showTab | tab count" << ui->tabWidget->count();
    for (int i = 0; i < ui->tabWidget->count(); ++i) {
        // The substitutes tab carries its count, so the text is searched, not compared.
        const QString text = ui->tabWidget->tabText(i).trimmed();
        qDebug() << text << "vs" << wanted;
        if (text.indexOf(wanted) != -1) {
            ui->tabWidget->setCurrentIndex(i);
            return;
        }
    }
}

CollapsibleSection* DrugBaseWidget::findDrugSection(const QString& name) const
{
    QLayout* column = ui->descFrame->layout();
    for (int i = 0; i < column->count(); ++i) {
        auto* section = qobject_cast<CollapsibleSection*>(column->itemAt(i)->widget());
        if (section && section->title() == name)
            return section;
    }
    return nullptr;
}

bool DrugBaseWidget::hasDrugSection(const QString& name)
{
    fillHiddenTabs();
    qDebug() << "Drug section name" << name;
    if (ui->selectedDrugs->count() == 0)
        return false;
    return findDrugSection(name) != nullptr;
}

bool DrugBaseWidget::showDrugSection(const QString& name)
{
    qDebug() << "Drug section name" << name;
    // Rebuilt first, so that the wanted section is the only one open.
    if (const Drug* selected = DrugViewModel::instance()->selectedDrug())
        showDrug(selected->vid);
    if (ui->selectedDrugs->count() == 0)
        return false;
    CollapsibleSection* section = findDrugSection(name);
    if (!section)
        return false;
    section->expand();
    if (ui->tabWidget->currentWidget() != ui->Sekcje_opisowe_tab)
        ui->tabWidget->setCurrentWidget(ui->Sekcje_opisowe_tab);
    return true;
}

void DrugBaseWidget::onShortcut(const QString& section)
{
    qDebug() << section;
    const Drug* selected = DrugViewModel::instance()->selectedDrug();
    if (!selected)
        return;
    // Counted as a use even when the drug has no such section.
    StatisticsSender::sendClick(selected->vid, section, QStringLiteral("shortcut"));
    if (!hasDrugSection(section))
        return;
    emit drugPageRequested();
    // From another program the window has to come to the front, not only show.
    emit bringForwardRequested();
    showDrugSection(section);
}

void DrugBaseWidget::on_lineEdit_returnPressed()
{
    QLayout* column = ui->descFrame->layout();
    for (int i = 0; i < column->count(); ++i) {
        auto* section = qobject_cast<CollapsibleSection*>(column->itemAt(i)->widget());
        if (!section || !section->contentArea()->layout())
            continue;
        QLayout* content = section->contentArea()->layout();
        for (int j = 0; j < content->count(); ++j) {
            if (auto* tab = qobject_cast<DescrTab*>(content->itemAt(j)->widget()))
                tab->search(ui->lineEdit->text());
        }
    }
}

bool DrugBaseWidget::selectFirstDrug()
{
    if (ui->selectedDrugs->count() == 0)
        return false;
    DrugViewModel::instance()->selectFirstDrug();
    ui->tabWidget->setCurrentIndex(0);
    return true;
}

void DrugBaseWidget::on_recipesButton_clicked()
{
    AdvertProvider::instance()->changeAd();
    emit recipesPageRequested();
}
