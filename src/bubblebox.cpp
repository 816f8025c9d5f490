#include "bubblebox.h"
#include "ui_bubblebox.h"

#include "bubbleboxlistitem.h"
#include "db/drugdatabase.h"
#include "drugs/drugviewmodel.h"
#include "screenlayout.h"
#include "sharppixmap.h"
#include "utils/shortcutsdispatcher.h"
#include "utils/statisticssender.h"

#include <QDebug>
#include <QFontMetrics>
#include <QGuiApplication>
#include <QListWidgetItem>
#include <QScreen>
#include <QTimer>

namespace {
// The drug's name in the header: 24 px type where it fits, never below 14 px.
constexpr int largestNameSize = 24;
constexpr int smallestNameSize = 14;
constexpr int lifetimeMs = 10000;
} // namespace

BubbleBox::BubbleBox(QWidget* parent)
    : QWidget(parent)
    , ui(new Ui::BubbleBox)
{
    ui->setupUi(this);
    // The form's picture at the size for this screen's scale.
    ui->label->setPixmap(sharpPixmap(QStringLiteral(":/icons/notification_icon")));
    setWindowFlags(Qt::Window | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint);
    // The pharmacist goes on typing in whatever program has the focus.
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_TranslucentBackground);

    placeOnScreen();

    timer = new QTimer(this);
    timer->setObjectName(QStringLiteral("timer"));
    connect(timer, &QTimer::timeout, this, &BubbleBox::remove);
}

BubbleBox::~BubbleBox()
{
    delete ui;
}

void BubbleBox::display(const Drug& drug, int gifDecisions)
{
    // A box still up from the last scan takes the new drug where it stands:
    // hiding and showing a window again costs more than the rest of the scan.
    const bool shown = isVisible();
    if (!shown)
        remove();
    ui->drug_name->setText(drug.name);
    ui->Indication->setText(drug.status);

    ShortcutsDispatcher* dispatcher = ShortcutsDispatcher::instance();
    // One read of the settings store for the whole box, not one per row.
    dispatcher->reload(false);
    const QList<DescriptionSection> sections = DrugDatabase::descriptionsOf(drug.vid);
    gifBubbles = gifDecisions;
    QListWidget* list = ui->listWidget_2;
    list->clearSelection();
    list->setCurrentRow(-1);
    // The rows of the last drug take the new sections, and rows left over
    // are hidden for a later drug with more: building and styling rows anew at
    // every scan was most of the box's time.
    shownRows = sections.size();
    for (int i = shownRows; i < list->count(); ++i)
        list->setRowHidden(i, true);
    for (int i = 0; i < shownRows; ++i) {
        const QString caption = sections.at(i).caption;
        const QString chord = dispatcher->loadedSequenceFor(caption).toString(QKeySequence::PortableText);
        if (i < list->count()) {
            if (auto* row = qobject_cast<BubbleboxListItem*>(list->itemWidget(list->item(i))))
                row->setSection(caption, chord);
            list->setRowHidden(i, false);
            continue;
        }
        auto* row = new BubbleboxListItem(caption, chord, nullptr);
        auto* item = new QListWidgetItem;
        item->setData(Qt::SizeHintRole, row->size());
        list->addItem(item);
        list->setItemWidget(item, row);
    }
    if (shown)
        refresh();
    else
        display();
}

void BubbleBox::refresh()
{
    if (!QGuiApplication::primaryScreen()) {
        remove();
        return;
    }
    timer->start(lifetimeMs);
    fitToRows();
    fitDrugName();
}

// As high as its rows while they fit above the GIF bubbles; on a small
// screen the box stops there and its list scrolls.
void BubbleBox::fitToRows()
{
    const QRect area = ScreenLayout::notificationBoxGeometry(QGuiApplication::primaryScreen()->availableGeometry(),
                                                             shownRows, gifBubbles);
    const bool cut = area.height() < ScreenLayout::boxHeaderHeight + ScreenLayout::boxRowHeight * shownRows;
    ui->listWidget_2->setVerticalScrollBarPolicy(cut ? Qt::ScrollBarAsNeeded : Qt::ScrollBarAlwaysOff);
    setGeometry(area);
}

void BubbleBox::display()
{
    // With no screen (a monitor switched off, a remote session between two
    // connections) there is nowhere to show the box; the scan goes on without it.
    if (!placeOnScreen()) {
        qDebug() << "D/BubbleBox::display | no screen to show the box on";
        return;
    }
    timer->start(lifetimeMs);
    ui->listWidget_2->show();
    adjustSize();
    fitToRows();
    // Laid out unseen first, so that the box never shows half-built.
    ui->frame->setAttribute(Qt::WA_DontShowOnScreen, true);
    ui->frame->show();
    ui->frame->setAttribute(Qt::WA_DontShowOnScreen, false);
    fitDrugName();
    show();
}

// A long name takes smaller type, down to the size of the rows, rather than
// losing its end at the box's edge.
void BubbleBox::fitDrugName()
{
    QLabel* name = ui->drug_name;
    const int room = name->contentsRect().width();
    int size = largestNameSize;
    QFont font(QStringLiteral("Segoe UI"));
    for (; size > smallestNameSize; --size) {
        font.setPixelSize(size);
        if (QFontMetrics(font).horizontalAdvance(name->text()) <= room)
            break;
    }
    // A new style sheet restyles the label: most names keep the size of the last one.
    if (size == nameSize)
        return;
    nameSize = size;
    name->setStyleSheet(QStringLiteral("font: %1px \"Segoe UI\";\ncolor: #223e59;\nbackground: transparent;").arg(size));
}

bool BubbleBox::placeOnScreen()
{
    const QScreen* screen = QGuiApplication::primaryScreen();
    if (!screen)
        return false;
    move(ScreenLayout::notificationBoxGeometry(screen->availableGeometry(), 0, 0).topLeft());
    return true;
}

void BubbleBox::clear()
{
    ui->drug_name->clear();
    ui->Indication->clear();
    ui->listWidget_2->clear();
    shownRows = 0;
}

void BubbleBox::remove()
{
    qDebug() << "Remove";
    ui->listWidget_2->hide();
    timer->stop();
    hide();
}

void BubbleBox::on_listWidget_2_itemClicked(QListWidgetItem* item)
{
    auto* row = qobject_cast<BubbleboxListItem*>(ui->listWidget_2->itemWidget(item));
    if (!row)
        return;
    const QString section = row->text();
    // The drug may have been cleared from the list since the scan.
    const Drug* selected = DrugViewModel::instance()->selectedDrug();
    StatisticsSender::sendClick(selected ? selected->vid : QStringLiteral("-1"), section,
                                QStringLiteral("click_small_window"));
    emit sectionClicked(section);
    remove();
}

void BubbleBox::mousePressEvent(QMouseEvent* event)
{
    // A press on a row is taken by the list: this one stands for the drug as a whole.
    emit mousePressed();
    QWidget::mousePressEvent(event);
}

void BubbleBox::enterEvent(QEvent* event)
{
    timer->stop();
    QWidget::enterEvent(event);
}

void BubbleBox::leaveEvent(QEvent* event)
{
    // Ten seconds more once the mouse has left.
    timer->start(lifetimeMs);
    QWidget::leaveEvent(event);
}
