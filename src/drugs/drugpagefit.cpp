#include "drugpagefit.h"

#include "screenlayout.h"
#include "settingskeys.h"

#include <QBoxLayout>
#include <QEvent>
#include <QFrame>
#include <QSettings>
#include <QSplitter>
#include <QTabBar>
#include <QTabWidget>

#include <algorithm>

namespace {
// Tabs are 120 pixels wide in 14 pixel type where the window has the room.
constexpr int tabWidth = 120;
constexpr int largestTabFont = 14;
// Ten logical pixels are fifteen on the screen at 150 %, where a window this narrow comes from.
constexpr int smallestTabFont = 10;
// The tab bar's style sheet: padding 4 on either side, margin 2 on the right.
constexpr int tabPadding = 4;
constexpr int tabMargin = 2;
// Below this width the full price and the refund rows stand one below the other.
constexpr int sideBySidePrices = 900;
} // namespace

DrugPageFit::DrugPageFit(QSplitter* splitter, QTabWidget* tabs, QWidget* info, QObject* parent)
    : QObject(parent)
    , splitter(splitter)
    , tabs(tabs)
    , info(info)
{
    draggedColumn = QSettings().value(SettingsKeys::drugPageLeftColumn, 0).toInt();
    // Only the user's drag moves the splitter with this signal, never setSizes().
    connect(splitter, &QSplitter::splitterMoved, this, &DrugPageFit::keepDraggedColumn);
    splitter->installEventFilter(this);
    tabs->installEventFilter(this);
    tabBar = tabs->tabBar();
    tabBar->installEventFilter(this);
    info->installEventFilter(this);
}

bool DrugPageFit::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Resize) {
        if (watched == splitter)
            placeSplitter();
        else if (watched == tabs)
            fitTabs();
        else if (watched == info)
            stackPrices();
    } else if ((watched == tabs && event->type() == QEvent::LayoutRequest)
               || (watched == tabBar && event->type() == QEvent::Paint)) {
        // A tab came or went, or its text changed. A hidden bar takes such a
        // change without asking for a layout, so the next paint looks too.
        fitTabs();
    }
    return QObject::eventFilter(watched, event);
}

void DrugPageFit::placeSplitter()
{
    const int left = draggedColumn > 0 ? draggedColumn : ScreenLayout::leftColumnWidth(splitter->window()->width());
    splitter->setSizes({left, std::max(0, splitter->width() - splitter->handleWidth() - left)});
}

void DrugPageFit::keepDraggedColumn()
{
    draggedColumn = splitter->sizes().value(0);
    QSettings settings;
    settings.setValue(SettingsKeys::drugPageLeftColumn, draggedColumn);
}

void DrugPageFit::fitTabs()
{
    QTabBar* bar = tabs->tabBar();
    const int count = bar->count();
    const int available = tabs->width();
    QString fitted = QString::number(available);
    for (int i = 0; i < count; ++i)
        fitted += QLatin1Char('|') + bar->tabText(i);
    // Each change of the bar's font asks for a new layout; nothing to do when
    // neither the room nor the tabs changed since the last fit.
    if (count == 0 || fitted == lastFitted)
        return;
    lastFitted = fitted;

    // Tabs of one width where they all take it, else each as wide as its text;
    // in the largest type in which the bar, as the style measures it, has room for them.
    const int evenWidth = std::min(tabWidth, available / count - tabMargin);
    for (const int minimumWidth : {evenWidth, 0}) {
        if (minimumWidth != tabMinimumWidth) {
            tabMinimumWidth = minimumWidth;
            bar->setStyleSheet(QStringLiteral("QTabBar::tab { min-width: %1px; }")
                                   .arg(std::max(0, minimumWidth - 2 * tabPadding)));
        }
        QFont font = bar->font();
        for (int pixels = largestTabFont; pixels >= smallestTabFont; --pixels) {
            if (font.pixelSize() != pixels) {
                font.setPixelSize(pixels);
                bar->setFont(font);
            }
            if (bar->sizeHint().width() <= available)
                return;
        }
    }
}

void DrugPageFit::stackPrices()
{
    auto* prices = info->findChild<QBoxLayout*>(QStringLiteral("pricesLayout"));
    auto* line = info->findChild<QFrame*>(QStringLiteral("line"));
    if (!prices || !line)
        return;
    const bool sideBySide = info->width() >= sideBySidePrices;
    prices->setDirection(sideBySide ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
    line->setFrameShape(sideBySide ? QFrame::VLine : QFrame::HLine);
}
