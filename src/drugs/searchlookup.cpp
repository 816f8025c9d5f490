#include "searchlookup.h"

#include "db/drugdatabase.h"
#include "drugs/drugviewmodel.h"
#include "drugs/searchlookupitem.h"
#include "utils/statisticssender.h"

#include <QDebug>
#include <QEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QListWidgetItem>
#include <QTimer>

#include <algorithm>

namespace {
const QString squareBottomCorners
    = QStringLiteral("border-bottom-right-radius: 0px; border-bottom-left-radius: 0px;");
constexpr int searchDelay = 200;
constexpr int searchLimit = 20;
constexpr int visibleRows = 5;
constexpr int firstRowExtraHeight = 20;
} // namespace

SearchLookup::SearchLookup(QLineEdit* editor)
    : QObject(editor)
    , editor(editor)
{
    popup = new QListWidget(editor->parentWidget());
    popup->setObjectName(QStringLiteral("searchPopup"));
    popup->setWindowFlags(Qt::Popup);
    popup->setFocusPolicy(Qt::NoFocus);
    popup->setFocusProxy(editor);
    popup->setMouseTracking(true);
    popup->setEditTriggers(QAbstractItemView::NoEditTriggers);
    popup->setSelectionBehavior(QAbstractItemView::SelectRows);
    popup->setStyleSheet(QStringLiteral("QListWidget{border: 1px solid; border-top: 0px transparent;}")
                         + SearchLookupItem::containerStyleSheet());
    popup->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    popup->installEventFilter(this);
    popup->move(editor->pos());

    connect(popup, &QListWidget::clicked, this, &SearchLookup::doneCompletion);

    hidePopup();

    timer = new QTimer(this);
    timer->setObjectName(QStringLiteral("searchTimer"));
    timer->setSingleShot(true);
    timer->setInterval(searchDelay);
    connect(timer, &QTimer::timeout, this, &SearchLookup::autoSuggest);
    // Only the user's edits start the wait: text set by the program (a line
    // cleared after a scan) never opens the list.
    connect(editor, &QLineEdit::textEdited, timer, qOverload<>(&QTimer::start));
}

void SearchLookup::autoSuggest()
{
    const QString text = editor->text();
    if (!text.isEmpty())
        StatisticsSender::sendSearch(text, QStringLiteral(" "), QStringLiteral("drug_list"));

    list.clear();
    if (!text.isEmpty()) {
        // A doubled or trailing blank gives an empty word, which is searched like any other.
        const QStringList words = text.split(QLatin1Char(' '), Qt::KeepEmptyParts);
        const QList<Drug> found = DrugDatabase::searchDrugs(words, searchLimit);
        qDebug() << "List size" << found.size();
        list.append(found);
    }
    showCompletion();
}

void SearchLookup::showCompletion()
{
    // A running timer means a newer edit is waiting: these rows are already stale.
    if (list.isEmpty() || timer->isActive() || editor->text().isEmpty())
        return;

    popup->setUpdatesEnabled(false);
    // The rows of the last search show the new drugs; only missing rows are
    // built and surplus ones dropped, since building a row costs far more.
    while (popup->count() > list.size())
        delete popup->takeItem(popup->count() - 1);
    popup->setCurrentItem(nullptr);
    popup->scrollToTop();

    for (int i = 0; i < list.size(); ++i) {
        if (i < popup->count()) {
            static_cast<SearchLookupItem*>(popup->itemWidget(popup->item(i)))->setDrug(list.at(i));
            continue;
        }
        auto* row = new SearchLookupItem(list.at(i), nullptr);
        if (i == 0) {
            row->adjustForFirstRow();
            row->resize(row->width(), row->height() + firstRowExtraHeight);
        }
        auto* item = new QListWidgetItem;
        item->setData(Qt::SizeHintRole, row->size());
        popup->addItem(item);
        popup->setItemWidget(item, row);
    }

    int height = 0;
    const int shown = std::min(popup->count(), visibleRows);
    for (int i = 0; i < shown; ++i)
        height += popup->item(i)->sizeHint().height();

    popup->setFixedSize(editor->width() - 16, height + popup->frameWidth() * 2);
    popup->setUpdatesEnabled(true);

    // The list overlaps the lower quarter of the line; the first row's extra
    // height keeps its text clear of the line.
    popup->move(editor->mapToGlobal(QPoint(8, int(editor->height() * 0.75))));
    popup->setFocus(Qt::OtherFocusReason);
    showPopup();

    qDebug() << "Is hidden" << (popup->isHidden() ? "true" : "false");
    qDebug() << "Count" << popup->count();
}

void SearchLookup::hidePopup()
{
    popup->hide();
    QString style = editor->styleSheet();
    style.remove(squareBottomCorners);
    editor->setStyleSheet(style);
}

void SearchLookup::showPopup()
{
    popup->show();
    const QString style = editor->styleSheet();
    if (!style.contains(squareBottomCorners))
        editor->setStyleSheet(style + squareBottomCorners);
}

void SearchLookup::doneCompletion(const QModelIndex& index)
{
    timer->stop();
    hidePopup();
    editor->setFocus(Qt::OtherFocusReason);
    // A search without rows leaves the old rows open over an empty list.
    if (index.isValid() && index.row() < list.size())
        DrugViewModel::instance()->addDrug(list.at(index.row()));
}

bool SearchLookup::eventFilter(QObject* object, QEvent* event)
{
    if (object != popup)
        return false;

    if (event->type() == QEvent::MouseButtonPress) {
        // A press reaches the pop-up's own filter only when it lands outside the list.
        hidePopup();
        editor->setFocus(Qt::OtherFocusReason);
        return true;
    }

    if (event->type() != QEvent::KeyPress)
        return false;

    switch (static_cast<QKeyEvent*>(event)->key()) {
    case Qt::Key_Home:
    case Qt::Key_End:
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
        return false;
    case Qt::Key_Escape:
        editor->setFocus(Qt::OtherFocusReason);
        hidePopup();
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        // The keyboard only closes the list: a drug is chosen with the mouse.
        showCompletion();
        editor->setFocus(Qt::OtherFocusReason);
        hidePopup();
        return true;
    default:
        // Typing goes on in the line without a break, and restarts the wait.
        editor->setFocus(Qt::OtherFocusReason);
        hidePopup();
        // QWidget::event() is protected; through QObject it is the same virtual call.
        static_cast<QObject*>(editor)->event(event);
        return false;
    }
}
